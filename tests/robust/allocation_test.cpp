// Up to which degree a call needs no memory: the header promises it, callers in real time rely on
// it.
#include "robust/allocation.h"

#include <functional>

#include "support/curve_text.h"

namespace kurvo_test {
namespace {

// Asks for something at t, in the first span, off its middle.
using Query = std::function<void(const Curve& curve, double t, GlobalVar* g)>;

constexpr int kAny = 200;

// So large that lengths take all halvings there are.
Owned OfDegree(int32_t type, int degree) {
  Random random;
  const bool rational = IsRational(type), spline = IsSpline(type);
  Numbers points = RandomPoints(random, (spline ? 2 : 1) * (degree + 1), rational), knots;
  for (std::size_t i = 0; i < points.size(); ++i)
    if (!rational || i % 3 < 2) points[i] *= 1e8;
  for (int i = 0; spline && i < 3 * (degree + 1); ++i) knots.push_back(i);
  return MakeFreeForm(type, points, knots);
}

int64_t Requests(const Query& query, int32_t type, int degree) {
  const Owned curve = OfDegree(type, degree);
  Globals g;
  WatchMemory({}, 0);
  query(*curve, .3 + (IsSpline(type) ? degree : 0), &g);
  const MemoryUse use = UnwatchMemory();
  EXPECT_TRUE(KurvoOk(&g)) << "degree " << degree;
  return use.requests;
}

// One degree more takes memory, so that no work area on the stack is larger than need be.
TEST(Allocation, NoneUpToTheDegreesPromised) {
  Point p, q;
  double length;
  uint32_t region;
  Curve kept{};
  const auto chain = [&](const Curve& c) {
    kept = c;
    return Cvseq{1, &kept};
  };
  const struct {
    const char* name;
    Query query;
    int max_degrees[4];  // by type; 0: not asked
  } rows[] = {
      // clang-format off
      {"position", [&](auto& c, double t, auto g) { KurvocvPosition(&c, t, p, g); }, {kAny, kAny, 63, 63}},
      {"end", [&](auto& c, double, auto g) { KurvocvStartPoint(&c, p, g); }, {0, 0, 63, 0}},
      {"derivative", [&](auto& c, double t, auto g) { KurvocvDeriv(&c, t, p, g); }, {kAny, kAny, 39, 39}},
      {"curvature", [&](auto& c, double t, auto g) { KurvocvCurvature(&c, t, p, g); }, {0, kAny, 39, 0}},
      {"third derivative", [&](auto& c, double t, auto g) { KurvocvNDeriv(&c, t, p, 3, g); }, {39, 39, 0, 0}},
      {"length", [&](auto& c, double t, auto g) { KurvocvCurveLen(&c, t, t + .5, &length, g); }, {6, 4, 6, 4}},
      {"sense", [&](auto& c, double, auto g) { const Cvseq seq = chain(c); KurvocvCvseqNormal(&seq, p, q, g); }, {39, 39, 39, 39}},
      {"region", [&](auto& c, double t, auto g) {
         const Cvseq seq = chain(c);
         KurvocvPosition(&c, t, p, g);
         KurvosfPntBoundForPlane(Point{0, 0, 1}, &seq, Point{p[0] + 1e-3, p[1] + 1e-3, 0}, &region, g);
       }, {39, 39, 39, 39}},
      // clang-format on
  };
  constexpr int32_t kFreeForm[] = {CV_BEZIER, CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE};
  for (const auto& row : rows)
    for (int i = 0; i < 4; ++i) {
      const int max_degree = row.max_degrees[i];
      SCOPED_TRACE(testing::Message() << row.name << " of type " << kFreeForm[i]);
      for (int degree = 1; degree <= max_degree; ++degree)
        EXPECT_EQ(Requests(row.query, kFreeForm[i], degree), 0) << "degree " << degree;
      if (0 < max_degree && max_degree < kAny) {
        EXPECT_GT(Requests(row.query, kFreeForm[i], max_degree + 1), 0);
      }
    }
}

}  // namespace
}  // namespace kurvo_test
