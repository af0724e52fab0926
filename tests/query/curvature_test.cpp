// The curvature vector.
#include <gtest/gtest.h>

#include "query/derivative_reference.h"

namespace kurvo_test {
namespace {

constexpr double kUntouched = -77;

Point Curvature(const Curve* cv, double t, GlobalVar& g) {
  Point v = {kUntouched, kUntouched, kUntouched};
  KurvocvCurvature(cv, t, v, &g);
  return v;
}

TEST(Curvature, Table) {
  constexpr double k = kUntouched, h = M_SQRT1_2;
  const struct {
    const char* name;
    const char* curve;
    double t;
    double x, y;
  } rows[] = {
      {"line", "l 1 2 4 -2", .3, 0, 0},
      {"arc", "a 5 5 2 0 3.14159265358979323846", .5, 0, -.5},
      {"clockwise arc", "a 5 5 2 0 -3.14159265358979323846", .5, 0, .5},
      {"clockwise arc through the same points",
       "a 5 5 2 3.14159265358979323846 -3.14159265358979323846", .5, 0, -.5},
      {"arc just long enough", "a 5 5 2 0 6e-7", 0, -.5, 0},
      {"y = x^2 at 0", "b -1 1 0 -1 1 1", .5, 0, 2},
      {"y = -x^2 at 0", "b -1 -1 0 1 1 -1", .5, 0, -2},
      {"y = x^2 at 0, backwards", "b 1 1 0 -1 -1 1", .5, 0, 2},
      {"y = x^2 at 1/2: 2 / 2^(3/2) at 45 degrees", "b -1 1 0 -1 1 1", .75, -.5, .5},
      {"straight Bezier", "b 0 0 1 1 2 2 5 5", .5, 0, 0},
      {"degree 1", "b 0 0 3 4", .5, 0, 0},
      {"first points just different", "b 1 2 1.0000004 2 1.0000008 2 5 2", 0, 0, 0},
      {"quarter circle, rational", "r 3 0 1 3 3 .70710678118654752 0 3 1", .5, -h / 3, -h / 3},
      {"quarter circle, B-spline by 10 times as much",
       "R 3 0 1 3 3 .70710678118654752 0 3 1 | 7 7 7 17 17 17", 12, -h / 3, -h / 3},
      {"y = x^2, B-spline", "B -1 1 0 -1 1 1 | 2 2 2 5 5 5", 3.5, 0, 2},
      {"composite: boundary", "c 2 1 (b 0 0 9 9)(b -1 1 0 -1 1 1)", 2.5, 0, 2},
      {"composite: line", "c 2 1 (b 0 0 9 9)(l -1 1 1 1)", 2.5, k, k},
      {"composite: its end", "c 2 1 (b 0 0 9 9)(b -1 1 0 -1 1 1)", 3, k, k},
  };
  for (const auto& row : rows) {
    Globals g;
    const Point v = Curvature(Make(row.curve).get(), row.t, g);
    EXPECT_NEAR(v[0], row.x, 1e-13) << row.name;
    EXPECT_NEAR(v[1], row.y, 1e-13) << row.name;
    EXPECT_EQ(v[2], row.x == k ? k : 0) << row.name;
    EXPECT_EQ(KurvoErrGet(&g), 0) << row.name;
  }
}

// kappa n = (C' x C'') (-C'_y, C'_x) / |C'|^4, the same for the curve run backwards.
TEST(Curvature, AgreesWithTheDerivatives) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 200; ++round) {
    const bool rational = round % 2 == 1, spline = round % 4 >= 2;
    const int order = static_cast<int>(random.Uniform(2, 8));
    const int count = spline ? order + static_cast<int>(random.Uniform(0, 6)) : order;
    const int32_t type = spline     ? (rational ? CV_RBSPLINE : CV_BSPLINE)
                         : rational ? CV_RBEZIER
                                    : CV_BEZIER;
    Owned cv = MakeFreeForm(type, RandomPoints(random, count, rational),
                            spline ? RandomKnots(random, order, count) : Numbers());
    const DerivativeReference reference(*cv);
    const auto [start, length] = Domain(*cv);
    const double fraction = random.Uniform(.01, .99), t = start + fraction * length;
    const auto d1 = reference.Derivative(t, 1), d2 = reference.Derivative(t, 2);
    const long double size = d1.Size(), factor = (d1.x * d2.y - d1.y * d2.x) / std::pow(size, 4);
    const auto bound = static_cast<double>(1e-12L * (1 + d2.Size() / size / size));
    Globals g;
    const Point v = Curvature(cv.get(), t, g);
    EXPECT_NEAR(v[0], static_cast<double>(-d1.y * factor), bound) << round;
    EXPECT_NEAR(v[1], static_cast<double>(d1.x * factor), bound) << round;
    KurvocvChgOrder(cv.get(), &g);
    const auto [from, over] = Domain(*cv);
    const Point w = Curvature(cv.get(), from + (1 - fraction) * over, g);
    EXPECT_NEAR(v[0], w[0], 100 * bound) << round;
    EXPECT_NEAR(v[1], w[1], 100 * bound) << round;
  }
}

}  // namespace
}  // namespace kurvo_test
