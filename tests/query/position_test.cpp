// Points at parameters, and parameters of points. Random curves on [0, 1] are left to the
// differential.
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
      {"r 1 2 1.0000009 4 -2 .9999991 .5 7 1", .25, 2.09375, .8125},  // plain
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

// Of Bezier curves beyond the degrees of the differential.
TEST(Position, FollowsTheTextbookRecursion) {
  Rounds(200, [](Random& random, int round) {
    const int degree = 13 + 13 * (round % 3);
    const Owned cv = RandomBezier(random, round % 2 == 1, degree);
    for (int i = 0; i < 20; ++i) {
      const double t = i < 2 ? i : random.Uniform(0, 1);
      ASSERT_LE(Oracle(*cv).DistanceAt(t, At(*cv, t)), 400 * kSize * kUlp * degree) << degree;
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

// ---- and back

struct Found {
  int result;
  double t;
  int error;
};

Found Parameter(const Curve& cv, const Point& p, double eps = 1e-6) {
  Globals g(eps);
  Found found{0, -77, 0};
  found.result = KurvocvParameter(&cv, p, &found.t, &g);
  found.error = KurvoErrGet(&g);
  return found;
}

TEST(Parameter, OwnPointsAreOnTheCurve) {
  Rounds(2000, [&](Random& random, int round) {
    const bool rational = round % 2 == 1;
    const int degree = 1 + round / 4 % 13;
    const double size = std::pow(10., random.Uniform(-2, 2)), far = round % 16 < 4 ? 1e4 * size : 0;
    const Owned cv = round % 4 < 2 ? RandomBezier(random, rational, degree)
                                   : RandomSplineOver(random, rational, degree + 1, -1, 3, degree);
    const auto place = [&](double* p) {
      for (int c = 0; c < 2; ++c) p[c] = far + p[c] * (size / kSize);
    };
    ForEachPoint(*cv, place, [](double) {});
    for (int i = 0; i < 10; ++i) {
      const double f = i < 2 ? i : random.Uniform(0, 1);
      const Point p = PointAt(*cv, f);
      const Found found = Parameter(*cv, p);
      ASSERT_EQ(found.result, KURVO_ON_CURVE) << round << ' ' << f;
      // Roots that agree within 1e-6 in both coordinates may be that far apart along the curve.
      ASSERT_LE(KurvoclDistPoint(p, At(*cv, found.t)), 1e-6 * std::max(1., 40 * size * degree))
          << round << ' ' << f << " -> " << found.t;
    }
  });
}

TEST(Parameter, Table) {
  const std::string two = "c 1 2 (l 0 0 1 0)(l 1 0 1 2)";
  constexpr int on = KURVO_ON_CURVE, off = KURVO_OFF_CURVE;
  // clang-format off
  const struct {
    std::string curve;
    Point p;
    int result;
    double t, reach = 1e-9;
    int error = 0;
  } rows[] = {
      {"l 0 0 4 0", {1, 0, 0}, on, .25},
      {"l 0 0 4 0", {4 + 2e-6, 0, 0}, on, 1 + .5e-6},
      {"l 0 0 4 0", {-8e-6, 0, 0}, off, -2e-6},
      {"l 0 0 4 0", {1, 2e-6, 0}, off, .25},
      {"l 1 1 1 1", {5, 5, 0}, on, 0, 0, KURVO_WARN_SHORT_VECTOR},
      {"b 0 0 1 1 2 0", {2, 0, 0}, on, 1},
      {"b 0 0 1 1 2 0", {0, 0, 0}, on, 0},
      {"b 0 0 1 1 2 0", {-1, -1, 0}, off, 0},
      {"b 1 1 1 1", {1, 1, 0}, on, 1},
      // beyond a turning point in one coordinate only the other one tells
      {"b 0 0 1 1 2 0", {1, .5 + 5e-7, 0}, on, .5},
      {"b 0 0 1 1 0 2", {.5 + 5e-7, 1, 0}, on, .5},
      {"b 0 0 1 1 2 0", {1, .5 + 2e-6, 0}, off, .5},
      {"a 0 0 1 0 1.5707963267948966", {1, 0, 0}, on, 0},
      {"a 0 0 1 0 1.5707963267948966", {0, 1, 0}, on, 1},
      {"a 0 0 1 0 -1.5707963267948966", {0, -1, 0}, on, 1},
      {"a 0 0 1 0 1.5707963267948966", {.1, -1, 0}, off, -.9365489651388929},
      {two, {1, 0, 0}, on, 1},
      {two, {1, 1, 0}, on, 2},
      {two, {1.5, 1.5, 0}, off, 2.5},
      {two, {.25, .25, 0}, off, .25},
      {"c", {0, 0, 0}, on, -77},
      {"c 3 (" + two + ")", {1, 1, 0}, on, 6},
  };
  // clang-format on
  for (const auto& row : rows) {
    const Found found = Parameter(*Make(row.curve), row.p);
    EXPECT_EQ(found.result, row.result) << row.curve << " at " << row.p[0] << ' ' << row.p[1];
    EXPECT_NEAR(found.t, row.t, row.reach) << row.curve << " at " << row.p[0] << ' ' << row.p[1];
    EXPECT_EQ(found.error, row.error) << row.curve;
  }
  // The root of the other coordinate, which is not the foot.
  EXPECT_NEAR(Parameter(*Make("b 0 0 1 1 2 0"), {1.05, .503, 0}, .01).t, .525, 1e-9);
  EXPECT_NEAR(Parameter(*Make("b 0 0 1 1 0 2"), {.503, 1.05, 0}, .01).t, .525, 1e-9);
}

}  // namespace
}  // namespace kurvo_test
