// Records that once took a call minutes. None may take a second.
#include <time.h>

#include "robust/runner.h"
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

class Findings : public testing::Test {
 protected:
  // Of processor time.
  template <class Body>
  void ExpectQuick(Body&& body, int error = 0) {
    timespec from, to;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &from);
    body();
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &to);
    const double seconds = static_cast<double>(to.tv_sec - from.tv_sec) +
                           1e-9 * static_cast<double>(to.tv_nsec - from.tv_nsec);
    EXPECT_LT(seconds, kChecked * kMaxSeconds);
    EXPECT_TRUE(error < 0 || KurvoErrGet(&g) == error) << KurvoErrGet(&g);
    KurvoErrReset(&g);
  }
  static constexpr int kAnyError = -1;

  // Of `count` points, a spline over the whole numbers when it has an order.
  Owned Any(int32_t type, int count, int order = 0, double size = 1) {
    Numbers points = RandomPoints(random, count, IsRational(type)), knots;
    for (double& x : points) x *= size;
    for (int i = 0; order > 0 && i < count + order; ++i) knots.push_back(i);
    return MakeFreeForm(type, points, knots);
  }
  Random random;
  Globals g;
};

TEST_F(Findings, WindingAroundWeightsThatAreNoWeights) {
  for (const int degree : {2, 39, 4095})
    for (const double weight : {kNaN, -1.}) {
      const Owned curve = Any(CV_RBEZIER, degree + 1), line = Make("l 3 4 -2 -5");
      FreeForm(*curve).point(1)[3] = weight;
      Curve curves[] = {*curve, *line};
      const Cvseq chain = {2, curves};
      SCOPED_TRACE(testing::Message() << "degree " << degree << ", weight " << weight);
      Point centre, normal;
      ExpectQuick([&] { KurvocvCvseqNormal(&chain, centre, normal, &g); }, kAnyError);
      uint32_t result;
      const Point up{0, 0, 1}, p{.25, .5, 0};
      ExpectQuick([&] { KurvosfPntBoundForPlane(up, &chain, p, &result, &g); }, kAnyError);
    }
}

TEST_F(Findings, IntersectionOfNoise) {
  const Owned wild = Any(CV_BEZIER, 41);
  FreeForm(*wild).point(5)[1] = 1e300;
  const Owned polygon = Make("B 0 1 2 3 -7 4 5 6 2 -8 3 9 1 -3 4 4 | 0 0 1 2 3 4 5 6 7 7");
  ExpectQuick([&] { KurvocrCurveCurve(polygon.get(), wild.get(), nullptr, nullptr, 3, &g); });
}

// A degree that is refused is refused before a span is taken out.
TEST_F(Findings, IntersectionOfHighOrders) {
  const Owned high = Any(CV_RBSPLINE, 4150, 4050), bezier = Make("b 0 0 1 4 3 1");
  uint32_t result = 0;
  ExpectQuick(
      [&] { result = KurvocrCurveCurve(high.get(), bezier.get(), nullptr, nullptr, 3, &g); },
      KURVO_ERR_CURVE);
  EXPECT_EQ(result, KURVO_NOTHING);
}

// Cutting all spans out of their spline takes longer than a call may.
TEST_F(Findings, SenseOfHighOrders) {
  constexpr int kCount = 6000;
  const Owned spline = Any(CV_BSPLINE, kCount, 1000);
  for (int i = 0; i < kCount; ++i)
    KurvoclSetCoord(FreeForm(*spline).point(i), std::cos(i * 1e-3), std::sin(i * 1e-3), 0);
  Curve curve = *spline;
  const Cvseq chain = {1, &curve};
  Point centre, normal;
  ExpectQuick([&] { KurvocvCvseqNormal(&chain, centre, normal, &g); });
  EXPECT_EQ(normal, (Point{0, 0, 1}));
  uint32_t result;
  ExpectQuick([&] { KurvosfPntBoundForPlane(centre, &chain, centre, &result, &g); });
}

TEST_F(Findings, LengthOfHighDegrees) {
  const Owned high = Any(CV_BEZIER, 1024, 0, 1e6);
  double length = 0;
  ExpectQuick([&] { KurvocvCurveLen(high.get(), 0, 1, &length, &g); });
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
  // Spans of high order that never settle.
  const Owned spline = Any(CV_BSPLINE, 200, 64, 1e8);
  ExpectQuick([&] { KurvocvCurveLen(spline.get(), 63, 200, &length, &g); });
  EXPECT_GT(length, 0);
}

// A list of cuts, knots or orders on a high degree multiplies what each of them costs.
TEST_F(Findings, ManyStepsOnHighDegrees) {
  const Owned bezier = Any(CV_RBEZIER, 1025), lower = Any(CV_BEZIER, 1024);
  double widths[] = {1};
  Curve piece = *bezier;
  KurvoSegcv block = {1, 0, &piece, widths, {}};
  const Curve composite = {CV_SEGCV, &block, 0, 0, 0};
  Numbers cuts;
  for (int i = 1; i <= 5000; ++i) cuts.push_back(i / 5001.);
  const struct {
    const Curve& curve;
    int32_t count;
    int pieces;
  } rows[] = {{*bezier, 5000, 0},
              {composite, 5000, 0},
              {*lower, 256, 257},  // 256 cuts of 1024 control points, n order^2 = 2^28, are allowed
              {*lower, 257, 0}};
  for (const auto& row : rows) {
    const CvParam list = {row.count, cuts.data()};
    Chain pieces;
    ExpectQuick([&] { KurvocvNDivide(&row.curve, &list, pieces.get(), &g); },
                row.pieces > 0 ? 0 : KURVO_ERR_CURVE);
    EXPECT_EQ(pieces.count(), row.pieces);
    EXPECT_EQ(pieces->curves != nullptr, row.pieces > 0);
  }
  const Owned spline = Any(CV_RBSPLINE, 5000, 1001), huge = Any(CV_RBEZIER, 100001);
  Owned result;
  ExpectQuick([&] { KurvocvBsplRemoveKnots(spline.get(), result.get(), &g); }, KURVO_ERR_CURVE);
  EXPECT_EQ(result->data, nullptr);
  Point d;
  ExpectQuick([&] { KurvocvNDeriv(huge.get(), .5, d, 1000, &g); }, KURVO_ERR_DERIVATIVE_ORDER);
}

}  // namespace
}  // namespace kurvo_test
