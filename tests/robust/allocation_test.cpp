// Up to which degree a call needs no memory: the header promises it, callers in real time rely on
// it.
#include "robust/allocation.h"

#include <gtest/gtest.h>

#include <functional>

#include "build/curves.h"

namespace kurvo_test {
namespace {

using Body = std::function<void(const Curve&, GlobalVar*)>;

// One degree more takes memory, so that no work area on the stack is larger than need be.
struct Row {
  const char* name;
  int32_t type;
  int max_degree;
  Body body;
};

// So large that lengths take all halvings there are.
Owned OfDegree(Random& random, int32_t type, int degree) {
  const bool rational = type == CV_RBEZIER || type == CV_RBSPLINE;
  const bool spline = type == CV_BSPLINE || type == CV_RBSPLINE;
  Numbers points = RandomPoints(random, (spline ? 2 : 1) * (degree + 1), rational), knots;
  for (std::size_t i = 0; i < points.size(); ++i)
    if (!rational || i % 3 < 2) points[i] *= 1e8;
  for (int i = 0; spline && i < 3 * (degree + 1); ++i) knots.push_back(i);
  return MakeFreeForm(type, points, knots);
}

// In the first span, off its middle.
double Within(const Curve& curve) {
  const bool bezier = curve.type == CV_BEZIER || curve.type == CV_RBEZIER;
  return bezier ? .3 : FreeForm(curve).order - 1 + .3;
}

int64_t Requests(const Row& row, int degree) {
  Random random;
  const Owned curve = OfDegree(random, row.type, degree);
  Globals g;
  WatchMemory({}, 0);
  row.body(*curve, &g);
  const MemoryUse use = UnwatchMemory();
  EXPECT_TRUE(KurvoOk(&g)) << row.name << " of degree " << degree;
  return use.requests;
}

TEST(Allocation, NoneUpToTheDegreesPromised) {
  const Body position = [](const Curve& c, GlobalVar* g) {
    Point p;
    KurvocvPosition(&c, Within(c), p, g);
  };
  const Body first = [](const Curve& c, GlobalVar* g) {
    Point p;
    KurvocvDeriv(&c, Within(c), p, g);
  };
  const Body curvature = [](const Curve& c, GlobalVar* g) {
    Point p;
    KurvocvCurvature(&c, Within(c), p, g);
  };
  const Body third = [](const Curve& c, GlobalVar* g) {
    Point p;
    KurvocvNDeriv(&c, .3, p, 3, g);
  };
  const Body length = [](const Curve& c, GlobalVar* g) {
    double whole;
    KurvocvCurveLen(&c, Within(c), Within(c) + .5, &whole, g);
  };
  const Body end = [](const Curve& c, GlobalVar* g) {
    Point p;
    KurvocvStartPoint(&c, p, g);
  };
  const Body sense = [](const Curve& c, GlobalVar* g) {
    Curve curve = c;
    const Cvseq chain = {1, &curve};
    Point centre, normal;
    KurvocvCvseqNormal(&chain, centre, normal, g);
  };
  const Body region = [](const Curve& c, GlobalVar* g) {
    Curve curve = c;
    const Cvseq chain = {1, &curve};
    Point p;
    KurvocvPosition(&c, Within(c), p, g);
    uint32_t result;
    KurvosfPntBoundForPlane(Point{0, 0, 1}, &chain, Point{p[0] + 1e-3, p[1] + 1e-3, 0}, &result, g);
  };
  constexpr int kAny = 200;
  const Row rows[] = {{"position", CV_BEZIER, kAny, position},
                      {"position", CV_RBEZIER, kAny, position},
                      {"position", CV_BSPLINE, 63, position},
                      {"position", CV_RBSPLINE, 63, position},
                      {"end", CV_BSPLINE, 63, end},
                      {"derivative", CV_BEZIER, kAny, first},
                      {"derivative", CV_RBEZIER, kAny, first},
                      {"derivative", CV_BSPLINE, 39, first},
                      {"derivative", CV_RBSPLINE, 39, first},
                      {"curvature", CV_RBEZIER, kAny, curvature},
                      {"curvature", CV_BSPLINE, 39, curvature},
                      {"third derivative", CV_BEZIER, 39, third},
                      {"third derivative", CV_RBEZIER, 39, third},
                      {"length", CV_BEZIER, 6, length},
                      {"length", CV_RBEZIER, 4, length},
                      {"length", CV_BSPLINE, 6, length},
                      {"length", CV_RBSPLINE, 4, length},
                      {"sense", CV_BEZIER, 39, sense},
                      {"sense", CV_RBEZIER, 39, sense},
                      {"sense", CV_BSPLINE, 39, sense},
                      {"sense", CV_RBSPLINE, 39, sense},
                      {"region", CV_BEZIER, 39, region},
                      {"region", CV_RBEZIER, 39, region},
                      {"region", CV_BSPLINE, 39, region},
                      {"region", CV_RBSPLINE, 39, region}};
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << row.name << " of type " << row.type);
    for (int degree = 1; degree <= row.max_degree; ++degree)
      EXPECT_EQ(Requests(row, degree), 0) << "degree " << degree;
    if (row.max_degree < kAny) {
      EXPECT_GT(Requests(row, row.max_degree + 1), 0) << "degree " << row.max_degree + 1;
    }
  }
}

}  // namespace
}  // namespace kurvo_test
