// Up to which degree a call needs no memory: the header promises it, callers in real time rely on
// it.
#include "robust/allocation.h"

#include <gtest/gtest.h>

#include <functional>

#include "support/generator.h"

namespace kurvo_test {
namespace {

using Body = std::function<void(const Curve&, GlobalVar*)>;

constexpr int kAny = 200;

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

int64_t Requests(const Body& body, int32_t type, int degree) {
  Random random;
  const Owned curve = OfDegree(random, type, degree);
  Globals g;
  WatchMemory({}, 0);
  body(*curve, &g);
  const MemoryUse use = UnwatchMemory();
  EXPECT_TRUE(KurvoOk(&g)) << "degree " << degree;
  return use.requests;
}

// One degree more takes memory, so that no work area on the stack is larger than need be.
TEST(Allocation, NoneUpToTheDegreesPromised) {
  const auto at = [](auto query) {
    return [query](const Curve& c, GlobalVar* g) {
      Point p;
      query(&c, Within(c), p, g);
    };
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
  const struct {
    const char* name;
    Body body;
    int max_degrees[4];  // by type; 0: not asked
  } queries[] = {{"position", at(KurvocvPosition), {kAny, kAny, 63, 63}},
                 {"end", end, {0, 0, 63, 0}},
                 {"derivative", at(KurvocvDeriv), {kAny, kAny, 39, 39}},
                 {"curvature", at(KurvocvCurvature), {0, kAny, 39, 0}},
                 {"third derivative", third, {39, 39, 0, 0}},
                 {"length", length, {6, 4, 6, 4}},
                 {"sense", sense, {39, 39, 39, 39}},
                 {"region", region, {39, 39, 39, 39}}};
  constexpr int32_t kFreeForm[] = {CV_BEZIER, CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE};
  for (const auto& query : queries)
    for (int i = 0; i < 4; ++i) {
      const int max_degree = query.max_degrees[i];
      SCOPED_TRACE(testing::Message() << query.name << " of type " << kFreeForm[i]);
      for (int degree = 1; degree <= max_degree; ++degree)
        EXPECT_EQ(Requests(query.body, kFreeForm[i], degree), 0) << "degree " << degree;
      if (0 < max_degree && max_degree < kAny) {
        EXPECT_GT(Requests(query.body, kFreeForm[i], max_degree + 1), 0);
      }
    }
}

}  // namespace
}  // namespace kurvo_test
