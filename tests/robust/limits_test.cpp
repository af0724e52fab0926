// What a call may cost: no memory up to the degrees that the header promises, which callers in real
// time rely on, and less than a second for records that once took minutes.
#include "robust/table.h"
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

// With the checks of a sanitizer, barely optimised, the same work takes five times as long: these
// calls, of 0.3 s at most, are near the limit there, on one side or the other as machines go.
#if defined(__SANITIZE_ADDRESS__)
constexpr double kChecked = 2;
#else
constexpr double kChecked = 1;
#endif
constexpr int kAnyError = -1;

// In processor time.
void ExpectQuick(const std::function<void(GlobalVar*)>& call, int error = 0) {
  Globals g;
  const Stopwatch watch;
  call(&g);
  EXPECT_LT(watch.Seconds(), kChecked * kMaxSeconds);
  EXPECT_TRUE(error == kAnyError || KurvoErrGet(&g) == error) << KurvoErrGet(&g);
}

// Of `count` points, a spline over the whole numbers when it has an order.
Owned Any(int32_t type, int count, int order = 0, double size = 1) {
  Random random;
  Numbers points = RandomPoints(random, count, IsRational(type)), knots;
  for (std::size_t i = 0; i < points.size(); ++i)
    if (!IsRational(type) || i % 3 < 2) points[i] *= size;
  for (int i = 0; order > 0 && i < count + order; ++i) knots.push_back(i);
  return MakeFreeForm(type, points, knots);
}

// ---- memory

// Asks for something at t, in the first span, off its middle.
using Query = std::function<void(const Curve& curve, double t, GlobalVar* g)>;

constexpr int kAny = 200;

int64_t Requests(const Query& query, int32_t type, int degree) {
  const bool spline = IsSpline(type);  // so large that lengths take all halvings there are
  const Owned curve = Any(type, (spline ? 2 : 1) * (degree + 1), spline ? degree + 1 : 0, 1e8);
  Globals g;
  WatchMemory({}, 0);
  query(*curve, .3 + (spline ? degree : 0), &g);
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

// ---- time

TEST(Findings, WindingAroundWeightsThatAreNoWeights) {
  for (const int degree : {2, 39, 4095})
    for (const double weight : {kNaN, -1.}) {
      Owned curve = Any(CV_RBEZIER, degree + 1), line = Make("l 3 4 -2 -5");
      FreeForm(*curve).point(1)[3] = weight;
      Curve curves[] = {*curve, *line};
      const Cvseq chain = {2, curves};
      SCOPED_TRACE(testing::Message() << "degree " << degree << ", weight " << weight);
      Point p{.25, .5, 0}, centre, normal;
      uint32_t region;
      ExpectQuick([&](auto g) { KurvocvCvseqNormal(&chain, centre, normal, g); }, kAnyError);
      ExpectQuick(
          [&](auto g) {
            KurvosfPntBoundForPlane(Point{0, 0, 1}, &chain, p, &region, g);
          },
          kAnyError);
    }
}

// Cutting all spans out of their spline takes longer than a call may.
TEST(Findings, SenseOfHighOrders) {
  constexpr int kCount = 6000;
  const Owned spline = Any(CV_BSPLINE, kCount, 1000);
  for (int i = 0; i < kCount; ++i)
    KurvoclSetCoord(FreeForm(*spline).point(i), std::cos(i * 1e-3), std::sin(i * 1e-3), 0);
  Curve curve = *spline;
  const Cvseq chain = {1, &curve};
  Point centre, normal;
  ExpectQuick([&](auto g) { KurvocvCvseqNormal(&chain, centre, normal, g); });
  EXPECT_EQ(normal, (Point{0, 0, 1}));
  uint32_t region;
  ExpectQuick([&](auto g) { KurvosfPntBoundForPlane(centre, &chain, centre, &region, g); });
}

TEST(Findings, LengthOfHighDegrees) {
  const Owned high = Any(CV_BEZIER, 1024, 0, 1e6);
  double length = 0;
  ExpectQuick([&](auto g) { KurvocvCurveLen(high.get(), 0, 1, &length, g); });
  // Chords are shorter, and close to it where the curve wriggles most, next to its ends.
  double sum = 0;
  Point last = PointAt(*high, 0);
  for (int i = 1; i <= 400; ++i) {
    const double u = i / 400.;
    const Point p = PointAt(*high, u * u * (3 - 2 * u));
    sum += KurvoclDistPoint(last, p);
    last = p;
  }
  EXPECT_GE(length, sum);
  EXPECT_NEAR(length, sum, .01 * sum);
}

// A list of cuts, knots or orders on a high degree multiplies what each of them costs; a degree
// that is refused is refused before a span is taken out.
TEST(Findings, HighDegrees) {
  const Owned bezier = Any(CV_RBEZIER, 1025), lower = Any(CV_BEZIER, 1024),
              wild = Any(CV_BEZIER, 41);
  const Owned high = Any(CV_RBSPLINE, 4150, 4050), spline = Any(CV_RBSPLINE, 5000, 1001);
  const Owned huge = Any(CV_RBEZIER, 100001), restless = Any(CV_BSPLINE, 200, 64, 1e8);
  const Owned polygon = Make("B 0 1 2 3 -7 4 5 6 2 -8 3 9 1 -3 4 4 | 0 0 1 2 3 4 5 6 7 7");
  const Owned cubic = Make("b 0 0 1 4 3 1");
  FreeForm(*wild).point(5)[1] = 1e300;
  double width = 1, length = 0;
  Curve piece = *bezier;
  KurvoSegcv block = {1, 0, &piece, &width, {}};
  const Curve composite = {CV_SEGCV, &block, 0, 0, 0};
  Numbers cuts;
  for (int i = 1; i <= 5000; ++i) cuts.push_back(i / 5001.);
  const auto divide = [&](const Curve& cv, int32_t count, int pieces, GlobalVar* g) {
    const CvParam list = {count, cuts.data()};
    Chain all;
    KurvocvNDivide(&cv, &list, all.get(), g);
    EXPECT_EQ(all.count(), pieces);
    EXPECT_EQ(all->curves != nullptr, pieces > 0);
  };
  Owned result;
  Point d;
  const struct {
    std::function<void(GlobalVar*)> call;
    int error;
  } rows[] = {
      // clang-format off
      {[&](auto g) { divide(*bezier, 5000, 0, g); }, KURVO_ERR_CURVE},
      {[&](auto g) { divide(composite, 5000, 0, g); }, KURVO_ERR_CURVE},
      {[&](auto g) { divide(*lower, 256, 257, g); }, 0},  // 256 cuts of 1024 control points, n order^2 = 2^28, are allowed
      {[&](auto g) { divide(*lower, 257, 0, g); }, KURVO_ERR_CURVE},
      {[&](auto g) { KurvocvBsplRemoveKnots(spline.get(), result.get(), g); EXPECT_EQ(result->data, nullptr); }, KURVO_ERR_CURVE},
      {[&](auto g) { KurvocvNDeriv(huge.get(), .5, d, 1000, g); }, KURVO_ERR_DERIVATIVE_ORDER},
      {[&](auto g) { KurvocrCurveCurve(polygon.get(), wild.get(), nullptr, nullptr, 3, g); }, 0},
      {[&](auto g) { EXPECT_EQ(KurvocrCurveCurve(high.get(), cubic.get(), nullptr, nullptr, 3, g), uint32_t{KURVO_NOTHING}); }, KURVO_ERR_CURVE},
      {[&](auto g) { KurvocvCurveLen(restless.get(), 63, 200, &length, g); EXPECT_GT(length, 0); }, 0},  // spans that never settle
      // clang-format on
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    ExpectQuick(row.call, row.error);
  }
}

}  // namespace
}  // namespace kurvo_test
