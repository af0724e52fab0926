// Records that once took a call minutes. None may take a second.
#include <gtest/gtest.h>
#include <time.h>

#include <cmath>

#include "robust/runner.h"
#include "support/generator.h"

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
  void ExpectQuick(Body&& body) {
    timespec from, to;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &from);
    body();
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &to);
    const double seconds = static_cast<double>(to.tv_sec - from.tv_sec) +
                           1e-9 * static_cast<double>(to.tv_nsec - from.tv_nsec);
    EXPECT_LT(seconds, kChecked * kMaxSeconds);
  }
  // A rational Bezier curve with one weight that is wrong.
  Owned Weighted(int degree, double weight) {
    Numbers points = RandomPoints(random, degree + 1, true);
    points[5] = weight;
    return MakeFreeForm(CV_RBEZIER, points);
  }
  Random random;
  Globals g;
};

TEST_F(Findings, WindingAroundWeightsThatAreNoWeights) {
  for (const int degree : {2, 39, 4095})
    for (const double weight : {kNaN, -1.}) {
      const Owned curve = Weighted(degree, weight), line = Make("l 3 4 -2 -5");
      Curve curves[] = {*curve, *line};
      const Cvseq chain = {2, curves};
      SCOPED_TRACE(testing::Message() << "degree " << degree << ", weight " << weight);
      ExpectQuick([&] {
        Point centre, normal;
        KurvocvCvseqNormal(&chain, centre, normal, &g);
      });
      ExpectQuick([&] {
        uint32_t result;
        KurvosfPntBoundForPlane(Point{0, 0, 1}, &chain, Point{.25, .5, 0}, &result, &g);
      });
    }
}

TEST_F(Findings, IntersectionOfNoise) {
  Numbers points = RandomPoints(random, 41, false);
  points[11] = 1e300;
  const Owned wild = MakeFreeForm(CV_BEZIER, points);
  const Owned polygon = Make("B 0 1 2 3 -7 4 5 6 2 -8 3 9 1 -3 4 4 | 0 0 1 2 3 4 5 6 7 7");
  ExpectQuick([&] { KurvocrCurveCurve(polygon.get(), wild.get(), nullptr, nullptr, 3, &g); });
}

// A degree that is refused is refused before a span is taken out.
TEST_F(Findings, IntersectionOfHighOrders) {
  Numbers knots;
  for (int i = 0; i < 8200; ++i) knots.push_back(i);
  const Owned high = MakeFreeForm(CV_RBSPLINE, RandomPoints(random, 4150, true), knots);
  const Owned bezier = Make("b 0 0 1 4 3 1");
  ExpectQuick([&] {
    EXPECT_EQ(KurvocrCurveCurve(high.get(), bezier.get(), nullptr, nullptr, 3, &g), KURVO_NOTHING);
  });
  EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_CURVE);
}

// Cutting all spans out of their spline takes longer than a call may.
TEST_F(Findings, SenseOfHighOrders) {
  constexpr int kCount = 6000, kOrder = 1000;
  Numbers points, knots;
  for (int i = 0; i < kCount; ++i)
    points.insert(points.end(), {std::cos(i * 1e-3), std::sin(i * 1e-3)});
  for (int i = 0; i < kCount + kOrder; ++i) knots.push_back(i);
  const Owned spline = MakeFreeForm(CV_BSPLINE, points, knots);
  Curve curve = *spline;
  const Cvseq chain = {1, &curve};
  Point centre, normal;
  ExpectQuick([&] { KurvocvCvseqNormal(&chain, centre, normal, &g); });
  EXPECT_EQ(normal, (Point{0, 0, 1}));
  uint32_t result;
  ExpectQuick([&] { KurvosfPntBoundForPlane(centre, &chain, centre, &result, &g); });
}

TEST_F(Findings, LengthOfHighDegrees) {
  Numbers points = RandomPoints(random, 1024, false);
  for (double& x : points) x *= 1e6;
  const Owned high = MakeFreeForm(CV_BEZIER, points);
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
}

// A list of cuts, knots or orders on a high degree multiplies what each of them costs.
TEST_F(Findings, ManyStepsOnHighDegrees) {
  const auto refused = [&](int32_t error, const Curve& result) {
    EXPECT_EQ(KurvoErrGet(&g), error);
    EXPECT_EQ(result.data, nullptr);
    KurvoErrReset(&g);
  };
  const Owned bezier = MakeFreeForm(CV_RBEZIER, RandomPoints(random, 1025, true));
  double widths[] = {1};
  Curve piece = *bezier;
  KurvoSegcv block = {1, 0, &piece, widths, {}};
  const Curve composite = {CV_SEGCV, &block, 0, 0, 0};
  Numbers cuts;
  for (int i = 1; i <= 5000; ++i) cuts.push_back(i / 5001.);
  const CvParam list = {static_cast<int32_t>(cuts.size()), cuts.data()};
  for (const Curve& curve : {*bezier, composite}) {
    Cvseq pieces;
    ExpectQuick([&] { KurvocvNDivide(&curve, &list, &pieces, &g); });
    refused(KURVO_ERR_CURVE, {});
    EXPECT_EQ(pieces.curves, nullptr);
  }

  // 256 cuts of 1024 control points, n order^2 = 2^28, are allowed.
  const Owned lower = MakeFreeForm(CV_BEZIER, RandomPoints(random, 1024, false));
  for (const int32_t count : {256, 257}) {
    const CvParam some = {count, cuts.data()};
    Cvseq pieces;
    ExpectQuick([&] { KurvocvNDivide(lower.get(), &some, &pieces, &g); });
    EXPECT_EQ(pieces.count, count == 256 ? 257 : 0);
    KurvocvFreeCvseq(&pieces);
  }
  refused(KURVO_ERR_CURVE, {});

  Numbers knots;
  for (int i = 0; i < 5000 + 1001; ++i) knots.push_back(i);
  const Owned spline = MakeFreeForm(CV_RBSPLINE, RandomPoints(random, 5000, true), knots);
  Curve result;
  ExpectQuick([&] { KurvocvBsplRemoveKnots(spline.get(), &result, &g); });
  refused(KURVO_ERR_CURVE, result);

  const Owned huge = MakeFreeForm(CV_RBEZIER, RandomPoints(random, 100001, true));
  Point d;
  ExpectQuick([&] { KurvocvNDeriv(huge.get(), .5, d, 1000, &g); });
  refused(KURVO_ERR_DERIVATIVE_ORDER, {});
}

// Spans of high order that never settle.
TEST_F(Findings, LengthOfManySpansOfHighOrder) {
  Numbers points = RandomPoints(random, 200, false), knots;
  for (double& x : points) x *= 1e8;
  for (int i = 0; i < 200 + 64; ++i) knots.push_back(i);
  const Owned spline = MakeFreeForm(CV_BSPLINE, points, knots);
  double length = 0;
  ExpectQuick([&] { KurvocvCurveLen(spline.get(), 63, 200, &length, &g); });
  EXPECT_GT(length, 0);
}

}  // namespace
}  // namespace kurvo_test
