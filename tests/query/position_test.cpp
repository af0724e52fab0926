// Points at parameters. Random curves on [0, 1] are left to the differential.
#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

TEST(Position, Table) {
  const std::string two = "(l 0 0 1 0)(l 10 0 12 0)",
                    clamped = "B 1 2 3 4 5 9 7 8 11 13 | 2 2 2 2 3 5 5 5 5",
                    jump = "B 0 0 1 0 5 5 6 5 | 0 0 1 1 2 2";
  // clang-format off
  const struct {
    std::string curve;
    double t, x, y = 0, bound = 0;
  } rows[] = {
      {"b 3 4", .7, 3, 4},
      {clamped, 2 + 4e-7, 1, 2},  // the ends of the domain are the end points
      {clamped, 2 - 4e-7, 1, 2},
      {clamped, 5, 11, 13},
      {clamped, 5 - 4e-7, 11, 13},
      {jump, 1, 5, 5},  // a knot belongs to the span on its right
      {jump, 1 - 3e-7, 5, 5, 3e-6},
      {jump, 1 - 2e-6, 1, 0, 3e-6},
      {jump, 1.5, 5.5, 5, 1e-15},
      {"R 2 3 1 4 9 -1 | 0 0 1 1", .5, .5 * 2 - .5 * 4, .5 * 3 - .5 * 9},  // the weights cancel: the sums
      {"c 1 1 " + two, 1, 1},
      {"c 1 1 " + two, 1.5, 11},
      {"c 1 1 " + two, 2.5, 0},
      {"c 1 1 " + two, -.5, -.5},
      {"c 0 1 " + two, 0, 0},
      {"c 0 1 " + two, .5, 11},
      {"c 2 (c 1 1 " + two + ")", 1, .5},
      {"c", .5, 0},
      {"deep 64", 1, 1, 2},
      // the share of the last piece rounds to just above 1
      {"c .97280582458089349 1.0364903758709409 (l 0 0 1 0)(c 1 (l 10 0 12 0))", .97280582458089349 + 1.0364903758709409, 12},
  };
  // clang-format on
  for (const auto& row : rows) {
    const Point p = At(*Make(row.curve), row.t);
    EXPECT_NEAR(p[0], row.x, row.bound) << row.curve << " at " << row.t;
    EXPECT_NEAR(p[1], row.y, row.bound) << row.curve << " at " << row.t;
    EXPECT_EQ(p[2], 0);
  }
  const Owned nan = Make("c 1 1 " + two);
  nan.block<KurvoSegcv>().widths[0] = kNaN;
  EXPECT_EQ(At(*nan, .5), (Point{0, 0, 0}));
}

// Powers of t, up to degree 9, lose 3^n units in the last place, interpolations a few.
TEST(Position, FollowsTheTextbookRecursion) {
  Rounds(400, [](Random& random, int round) {
    constexpr int kDegrees[] = {1, 9, 10, 13, 20, 39};
    const int degree = kDegrees[round % 6];
    const double bound = 20 * kSize * kUlp * (degree < 10 ? std::pow(3., degree) : 20. * degree),
                 sweep = random.Uniform(.01, 6.2) * (round % 2 ? 1 : -1);
    const Owned cv = round % 12 == 0 ? Arc(1, -2, random.Uniform(.1, 5), sweep, sweep)
                     : round % 12 == 1
                         ? RandomSplineOver(random, Chance(random, .5), 1 + round % 9, -1, 4, 3)
                         : RandomBezier(random, Chance(random, .5), degree);
    const Oracle exact(*cv);
    for (int i = 0; i < 20; ++i) {
      const double share = i < 2 ? i : random.Uniform(0, 1);
      const Wide t = std::lerp(exact.start(), exact.end(), L(share));
      const Point p = At(*cv, static_cast<double>(t));
      ASSERT_LE(exact.DistanceAt(static_cast<double>(t), p), bound) << degree << " at " << share;
    }
  });
}

// Beyond the domain the polynomial of the end span goes on.
TEST(Position, SplinesContinueBeyondTheirDomain) {
  const Oracle bezier(*Make("b 0 0 1 3 4 1 5 2"));
  for (const char* spline :
       {"B 0 0 1 3 4 1 5 2 | 0 0 0 0 1 1 1 1", "R 0 0 2 1 3 2 4 1 2 5 2 2 | 0 0 0 0 1 1 1 1",
        // End knots repeated into the domain: the first and the last control point do not act.
        "B 9 9 0 0 1 3 4 1 5 2 9 9 | 0 0 0 0 0 1 1 1 1 1",
        "R 9 9 1 0 0 2 1 3 2 4 1 2 5 2 2 9 9 1 | 0 0 0 0 0 1 1 1 1 1"})
    for (const double t : {-.5, -.01, 1.02, 2.})
      EXPECT_LE(bezier.DistanceAt(t, At(*Make(spline), t)), 1e-13) << spline << " at " << t;
}

TEST(Position, WeightsNearOneMakeABezierCurvePlain) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int degree = 1; degree <= 12; ++degree) {
    Numbers plain, rational;
    for (int i = 0; i <= degree; ++i) {
      const Point p = random.Planar(kSize);
      plain.insert(plain.end(), {p[0], p[1]});
      rational.insert(rational.end(), {p[0], p[1], 1 + random.Uniform(-9e-7, 9e-7)});
    }
    const Owned a = MakeFreeForm(CV_BEZIER, plain), b = MakeFreeForm(CV_RBEZIER, rational);
    for (double f = 0; f <= 1; f += .0625) EXPECT_EQ(PointAt(*a, f), PointAt(*b, f)) << degree;
  }
}

// Inside the domain of a B-spline, and at ends that are evaluated, every weight counts, however
// wide the tolerance.
TEST(Position, WeightsNearOneCountOnSplines) {
  for (const char* text : {"R 0 0 1.009 90 200 .991 300 50 1.009 100 -90 3 0 0 2 | 0 0 0 1 2 3 3 3",
                           "R 0 0 1 100 100 1.008 200 0 .993 0 50 1 | 0 0 0 0 1 1 1 1",
                           "R 0 0 1 100 100 1.008 200 0 .993 0 50 1 | -2 -1 0 1 2 3 4"}) {
    const Owned cv = Make(text);
    const auto [start, length] = Domain(*cv);
    for (const double f : {0., .05, .3, .5, .9, 1.}) {
      Globals g(.01);
      Point p;
      KurvocvPosition(cv.get(), start + f * length, p, &g);
      EXPECT_LE(Oracle(*cv).DistanceAt(start + f * length, p), 1e-12) << text << " at " << f;
    }
  }
}

TEST(Position, FindsSpansInLargeKnotVectors) {
  Random random;
  constexpr int kCount = 100000;
  Numbers knots;
  for (int i = 0; i < kCount + 4; ++i)  // widths over many orders of magnitude
    knots.push_back(std::pow(std::clamp(i - 3, 0, kCount - 3), 3) * 1e-9);
  const Owned large = MakeFreeForm(CV_BSPLINE, RandomPoints(random, kCount, false), knots);
  const Oracle exact(*large);
  for (int i = 0; i < 20; ++i) {
    const double t = random.Uniform(0, knots.back());
    EXPECT_LE(exact.DistanceAt(t, At(*large, t)), 1e-4) << t;
  }
}

}  // namespace
}  // namespace kurvo_test
