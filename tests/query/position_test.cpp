#include <gtest/gtest.h>

#include <cmath>

#include "query/reference.h"

namespace kurvo_test {
namespace {

constexpr int kPowerBasisDegree = 9;  // up to it positions are sums of powers

// Clamped or not, uniform or repeated inner knots, over [start, start + length].
Numbers RandomKnots(Random& random, int order, int count) {
  const double start = random.Uniform(-3, 3), length = random.Uniform(.5, 9);
  const bool clamped = random.Uniform(0, 1) < .7, repeats = random.Uniform(0, 1) < .4;
  const int spans = count - order + 1;
  Numbers knots;
  for (int i = 0; i < order + count; ++i) {
    double place = i - order + 1;
    if (clamped) place = std::clamp(place, 0., double(spans));
    if (repeats && place > 0 && place < spans) place = 2 * std::ceil(place / 2);
    knots.push_back(start + length * std::min(place, std::max(double(spans), place)) / spans);
  }
  std::sort(knots.begin(), knots.end());
  return knots;
}

Owned RandomFreeForm(Random& random, int32_t type, int degree) {
  const bool rational = type == CV_RBEZIER || type == CV_RBSPLINE;
  if (type == CV_BEZIER || type == CV_RBEZIER)
    return MakeFreeForm(type, RandomPoints(random, degree + 1, rational));
  const int count = degree + 1 + static_cast<int>(random.Uniform(0, 9));
  return MakeFreeForm(type, RandomPoints(random, count, rational),
                      RandomKnots(random, degree + 1, count));
}

// What may be lost: powers of t lose 3^n units in the last place, interpolations a few.
double Bound(int32_t type, int degree) {
  const bool powers = (type == CV_BEZIER || type == CV_RBEZIER) && degree <= kPowerBasisDegree;
  return kSize * kUlp * (powers ? std::pow(3., degree) : 20. * (degree + 1)) * 20;
}

TEST(Position, FollowsTheTextbookRecursion) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (const int32_t type : {CV_BEZIER, CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE}) {
    for (const int degree : {1, 2, 3, 4, 5, 6, 9, 10, 13, 20, 39}) {
      const bool spline = type == CV_BSPLINE || type == CV_RBSPLINE;
      if (spline && degree > 9) continue;
      for (int round = 0; round < 60; ++round) {
        const Owned cv = RandomFreeForm(random, type, degree);
        const Reference reference(*cv);
        for (int i = 0; i < 20; ++i) {
          const double fraction = i < 2 ? i : random.Uniform(0, 1);
          const double t = reference.start() + fraction * (reference.end() - reference.start());
          Globals g;
          Point p;
          KurvocvPosition(cv.get(), t, p, &g);
          ASSERT_LE(reference.DistanceAt(t, p), Bound(type, degree))
              << "type " << type << " degree " << degree << " t " << t;
          ASSERT_EQ(KurvoErrGet(&g), 0);
        }
      }
    }
  }
}

TEST(Position, HighDegreesStayOnTheCurve) {
  Random random;
  for (const int degree :
       {40, 100, 1000}) {  // y = x^2, raised: control point i is (i/n, i(i-1)/n(n-1))
    Numbers points;
    for (int i = 0; i <= degree; ++i)
      points.insert(points.end(),
                    {double(i) / degree, double(i) * (i - 1) / (double(degree) * (degree - 1))});
    const Owned cv = MakeFreeForm(CV_BEZIER, points);
    for (const double t : {0., .1, .5, .50001, .9, 1.}) {
      Globals g;
      Point p;
      KurvocvPosition(cv.get(), t, p, &g);
      EXPECT_NEAR(p[0], t, 1e-15 * degree);
      EXPECT_NEAR(p[1], t * t, 1e-15 * degree);
    }
  }
}

TEST(Position, SinglePointOfDegreeZero) {
  Globals g;
  Point p;
  KurvocvPosition(Make("b 3 4").get(), .7, p, &g);
  EXPECT_EQ(p, (Point{3, 4, 0}));
}

TEST(Position, EndsOfTheDomainAreTheEndPoints) {
  const Owned cv = Make("B 1 2 3 4 5 9 7 8 11 13 | 2 2 2 2 3 5 5 5 5");
  struct Row {
    double t;
    Point expected;
  };
  for (const Row& row : {Row{2 + 4e-7, {1, 2, 0}}, Row{2 - 4e-7, {1, 2, 0}}, Row{5, {11, 13, 0}},
                         Row{5 - 4e-7, {11, 13, 0}}}) {
    Globals g;
    Point p;
    KurvocvPosition(cv.get(), row.t, p, &g);
    EXPECT_EQ(p, row.expected) << row.t;
  }
}

// Beyond the domain the polynomial of the end span goes on.
TEST(Position, SplinesContinueBeyondTheirDomain) {
  const Owned bezier = Make("b 0 0 1 3 4 1 5 2");
  for (const char* spline :
       {"B 0 0 1 3 4 1 5 2 | 0 0 0 0 1 1 1 1", "R 0 0 2 1 3 2 4 1 2 5 2 2 | 0 0 0 0 1 1 1 1",
        // End knots repeated into the domain: the first and the last control point do not act.
        "B 9 9 0 0 1 3 4 1 5 2 9 9 | 0 0 0 0 0 1 1 1 1 1",
        "R 9 9 1 0 0 2 1 3 2 4 1 2 5 2 2 9 9 1 | 0 0 0 0 0 1 1 1 1 1"}) {
    const Owned cv = Make(spline);
    for (const double t : {-.5, -.01, 1.02, 2.}) {
      Globals g;
      Point p, q;
      KurvocvPosition(bezier.get(), t, p, &g);
      KurvocvPosition(cv.get(), t, q, &g);
      EXPECT_NEAR(p[0], q[0], 1e-13) << spline << " at " << t;
      EXPECT_NEAR(p[1], q[1], 1e-13) << spline << " at " << t;
    }
  }
}

TEST(Position, InnerKnotBelongsToTheSpanOnItsRight) {
  // A jump at 1: order 2, the knot twice.
  const Owned cv = Make("B 0 0 1 0 5 5 6 5 | 0 0 1 1 2 2");
  struct Row {
    double t, x;
  };
  for (const Row& row : {Row{1, 5}, Row{1 - 3e-7, 5}, Row{1 - 2e-6, 1}, Row{1.5, 5.5}}) {
    Globals g;
    Point p;
    KurvocvPosition(cv.get(), row.t, p, &g);
    EXPECT_NEAR(p[0], row.x, 3e-6) << row.t;
  }
}

TEST(Position, WeightsNearOneMakeABezierCurvePlain) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int degree = 1; degree <= 12; ++degree) {
    Numbers plain, rational;
    for (int i = 0; i <= degree; ++i) {
      const double x = random.Uniform(-kSize, kSize), y = random.Uniform(-kSize, kSize);
      plain.insert(plain.end(), {x, y});
      rational.insert(rational.end(), {x, y, 1 + random.Uniform(-9e-7, 9e-7)});
    }
    const Owned a = MakeFreeForm(CV_BEZIER, plain), b = MakeFreeForm(CV_RBEZIER, rational);
    for (double f = 0; f <= 1; f += .0625) EXPECT_EQ(PointAt(*a, f), PointAt(*b, f)) << degree;
  }
}

// Inside the domain of a B-spline, and at ends that are evaluated, every weight counts, however
// wide the tolerance.
TEST(Position, WeightsNearOneCountOnSplines) {
  for (const char* description :
       {"R 0 0 1.009 90 200 .991 300 50 1.009 100 -90 3 0 0 2 | 0 0 0 1 2 3 3 3",
        "R 0 0 1 100 100 1.008 200 0 .993 0 50 1 | 0 0 0 0 1 1 1 1",
        "R 0 0 1 100 100 1.008 200 0 .993 0 50 1 | -2 -1 0 1 2 3 4"}) {
    const Owned cv = Make(description);
    const Reference reference(*cv);
    Globals g(.01);
    const auto [start, length] = Domain(*cv);
    for (const double f : {0., .05, .3, .5, .9, 1.}) {
      Point p;
      KurvocvPosition(cv.get(), start + f * length, p, &g);
      EXPECT_LE(reference.DistanceAt(start + f * length, p), 1e-12) << description << " at " << f;
    }
  }
}

TEST(Position, WeightSumOfZeroLeavesTheSums) {
  // Order 2: at 0.5 the weights 1 and -1 cancel.
  const Owned cv = Make("R 2 3 1 4 9 -1 | 0 0 1 1");
  Globals g;
  Point p;
  KurvocvPosition(cv.get(), .5, p, &g);
  EXPECT_EQ(p, (Point{.5 * 2 - .5 * 4, .5 * 3 - .5 * 9, 0}));
}

TEST(Position, ArcsRunFromStartToEndEitherWay) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 500; ++round) {
    const double angle = random.Uniform(-3.2, 3.2), r = random.Uniform(.1, 5);
    const double sweep = random.Uniform(.01, 6.2) * (round % 2 ? 1 : -1);
    const Owned arc = Arc(1, -2, r, angle, sweep);
    for (const double t : {0., .25, .5, 1.}) {
      const long double at = L(angle) + L(t) * L(sweep);
      const Point p = PointAt(*arc, t);
      EXPECT_NEAR(p[0], double(1 + L(r) * std::cos(at)), 1e-14) << sweep;
      EXPECT_NEAR(p[1], double(-2 + L(r) * std::sin(at)), 1e-14) << sweep;
    }
  }
}

TEST(Position, CompositesAreWalkedByTheirWidths) {
  const std::string line = "(l 0 0 1 0)", next = "(l 10 0 12 0)";
  struct Row {
    std::string curve;
    double t, x;
  };
  const Row rows[] = {
      {"c 1 1 " + line + next, 1, 1},
      {"c 1 1 " + line + next, 1.5, 11},
      {"c 1 1 " + line + next, 2.5, 0},
      {"c 1 1 " + line + next, -.5, -.5},
      {"c 0 1 " + line + next, 0, 0},
      {"c 0 1 " + line + next, .5, 11},
      {"c 2 (c 1 1 " + line + next + ")", 1, .5},
      {"c", .5, 0},
      // The share of the last piece rounds to just above 1.
      {"c .97280582458089349 1.0364903758709409 " + line + "(c 1 " + next + ")",
       .97280582458089349 + 1.0364903758709409, 12},
  };
  for (const Row& row : rows) {
    Globals g;
    Point p;
    KurvocvPosition(Make(row.curve).get(), row.t, p, &g);
    EXPECT_EQ(p[0], row.x) << row.curve << " at " << row.t;
    EXPECT_EQ(KurvoErrGet(&g), 0);
  }
  Globals g;
  Point p;
  const Owned nan = Make("c 1 1 " + line + next);
  nan.block<KurvoSegcv>().widths[0] = kNaN;
  KurvocvPosition(nan.get(), .5, p, &g);
  EXPECT_EQ(p, (Point{0, 0, 0}));
  KurvocvPosition(Nested(64).get(), 1, p, &g);
  EXPECT_EQ(p[0], 1);
  KurvocvPosition(Nested(65).get(), 1, p, &g);
  EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_CURVE);
}

TEST(Position, FindsSpansInLargeKnotVectors) {
  Random random;
  const int count = 100000;
  const Owned cv = RandomFreeForm(random, CV_BSPLINE, 3);
  Numbers points = RandomPoints(random, count, false), knots;
  for (int i = 0; i < count + 4; ++i) {  // widths over many orders of magnitude
    const double place = std::clamp(i - 3, 0, count - 3);
    knots.push_back(place * place * place * 1e-9);
  }
  const Owned large = MakeFreeForm(CV_BSPLINE, points, knots);
  const Reference reference(*large);
  for (int i = 0; i < 20; ++i) {
    const double t = random.Uniform(reference.start(), reference.end());
    Globals g;
    Point p;
    KurvocvPosition(large.get(), t, p, &g);
    EXPECT_LE(reference.DistanceAt(t, p), 1e-4) << t;
  }
}

}  // namespace
}  // namespace kurvo_test
