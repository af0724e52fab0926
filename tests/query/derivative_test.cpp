// First and higher derivatives, and the curvature vector. Random curves on [0, 1] are left to the
// differential.
#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

constexpr double kUntouched = -77;

Point Deriv(const Curve& cv, double t, GlobalVar& g) {
  Point v = {kUntouched, kUntouched, kUntouched};
  KurvocvDeriv(&cv, t, v, &g);
  return v;
}
Point NDeriv(const Curve& cv, double t, int n, GlobalVar& g) {
  Point v = {kUntouched, kUntouched, kUntouched};
  KurvocvNDeriv(&cv, t, v, n, &g);
  return v;
}

// Closed forms; k is what stays untouched.
TEST(Deriv, Table) {
  constexpr double k = kUntouched;
  // clang-format off
  const struct {
    const char *name, *curve;
    double t, x, y;
  } rows[] = {
      {"line", "l 1 2 4 -2", .3, 3, -4},
      {"arc", "a 5 5 2 0 3", 0, 0, 6},
      {"clockwise arc", "a 5 5 2 0 -3", 0, 0, -6},
      {"arc, end", "a 5 5 2 0 3", 1, -6 * std::sin(3), 6 * std::cos(3)},
      {"full circle, whose sweep is 0", "a 5 5 2 0 6.283185307179586476925", .25, 0, 0},
      {"degree 0", "b 1 2", .5, 0, 0},
      {"degree 1", "b 1 2 4 -2", .5, 3, -4},
      {"quadratic, start", "b 1 2 4 -2 .5 7", 0, 6, -8},
      {"quadratic, end", "b 1 2 4 -2 .5 7", 1, -7, 18},
      {"cubic, start", "b 1 2 4 -2 .5 7 9 9", 0, 9, -12},
      {"cubic, end", "b 1 2 4 -2 .5 7 9 9", 1, 25.5, 6},
      {"cubic, beyond its end", "b 0 0 0 0 0 0 1 2", 2, 12, 24},
      {"rational, start: n w1 / w0 (P1 - P0)", "r 1 2 2 4 -2 3 .5 7 1", 0, 9, -12},
      {"rational, end", "r 1 2 2 4 -2 3 .5 7 1", 1, -21, 54},
      {"rational, end, far from the start", "r 1e12 1e12 2 4 -2 3 .5 7 1", 1, -21, 54},
      {"weights within epsilon of 1", "r 1 2 1.0000009 4 -2 .9999991 .5 7 1", 0, 6, -8},
      {"all weights 3", "r 1 2 3 4 -2 3 .5 7 3", 1, -7, 18},
      {"B-spline by its own parameter", "B 1 2 4 -2 | 10 10 16 16", 12, .5, -2. / 3},
      {"corner: to the right of the knot", "B 0 0 1 0 1 5 | 0 0 1 2 2", 1, 0, 5},
      {"corner: a knot after rounding", "B 0 0 1 0 1 5 | 0 0 1 2 2", 1 - 4e-7, 0, 5},
      {"corner: left of it", "B 0 0 1 0 1 5 | 0 0 1 2 2", 1 - 6e-7, 1, 0},
      {"end of the domain: the last span", "B 0 0 1 0 1 5 | 0 0 1 2 2", 2, 0, 5},
      {"before a domain that starts with too many knots", "B 9 9 0 0 1 5 | 0 0 0 2 2", -1, .5, 2.5},
      {"a knot where the weight is 0", "R 0 0 1 1 1 1 2 -1 -1 5 5 -3 | 0 0 0 .5 1 1 1", .25, 0, 16. / 3},
      {"next to it", "R 0 0 1 1 1 1 2 -1 -1 5 5 -3 | 0 0 0 .5 1 1 1", .4, -100. / 9, 700. / 27},
      {"no span", "B 1 2 4 -2 | 3 3 3 3", 3, 3, -4},
      {"order 1", "B 1 2 3 4 | 0 1 2", 1.5, 0, 0},
      {"composite: local units", "c 2 1 (b 0 0 1 2)(b 1 2 4 6)", 1, 1, 2},
      {"composite: boundary to the later piece", "c 2 1 (b 0 0 1 2)(b 1 2 4 6)", 2, 3, 4},
      {"composite: rational piece", "c 5 (r 1 2 2 4 -2 3)", 0, 4.5, -6},
      {"composite: its end", "c 2 1 (b 0 0 1 2)(b 1 2 4 6)", 3, k, k},
      {"composite: before its start", "c 2 1 (b 0 0 1 2 4 0)(b 1 2 4 6)", -2, -2, 12},
      {"composite: line", "c 1 1 (b 0 0 1 2)(l 1 2 4 6)", 1.5, k, k},
      {"composite: B-spline", "c 1 (B 1 2 4 -2 | 0 0 1 1)", .5, k, k},
      {"composite: composite", "c 1 (c 1 (b 1 2 4 -2))", .5, k, k},
      {"composite: piece without a width is passed over", "c 1 0 1 (b 0 0 1 0)(b 1 0 2 9)(b 2 9 2 8)", 1, 0, -1},
      {"composite without pieces", "c", 0, k, k},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    const Owned cv = Make(row.curve);
    const bool untouched = row.x == k;
    const Point v = Deriv(*cv, row.t, g), nth = NDeriv(*cv, row.t, 1, g);
    EXPECT_NEAR(v[0], row.x, 1e-13) << row.name;
    EXPECT_NEAR(v[1], row.y, 1e-13) << row.name;
    EXPECT_EQ(v[2], untouched ? k : 0) << row.name;
    if (std::string(row.name) != "no span") {
      EXPECT_NEAR(nth[0], untouched ? 0 : row.x, 1e-13) << row.name;
      EXPECT_NEAR(nth[1], untouched ? 0 : row.y, 1e-13) << row.name;
    } else {  // unlike KurvocvDeriv it divides by the width
      EXPECT_FALSE(std::isfinite(nth[0]));
    }
    EXPECT_EQ(nth[2], 0) << row.name;
    EXPECT_EQ(KurvoErrGet(&g), 0) << row.name;
  }
}

TEST(Curvature, Table) {
  constexpr double k = kUntouched, h = M_SQRT1_2;
  // clang-format off
  const struct {
    const char *name, *curve;
    double t, x, y;
  } rows[] = {
      {"line", "l 1 2 4 -2", .3, 0, 0},
      {"arc", "a 5 5 2 0 3.14159265358979323846", .5, 0, -.5},
      {"clockwise arc", "a 5 5 2 0 -3.14159265358979323846", .5, 0, .5},
      {"clockwise arc through the same points", "a 5 5 2 3.14159265358979323846 -3.14159265358979323846", .5, 0, -.5},
      {"arc just long enough", "a 5 5 2 0 6e-7", 0, -.5, 0},
      {"y = x^2 at 0", "b -1 1 0 -1 1 1", .5, 0, 2},
      {"y = -x^2 at 0", "b -1 -1 0 1 1 -1", .5, 0, -2},
      {"y = x^2 at 0, backwards", "b 1 1 0 -1 -1 1", .5, 0, 2},
      {"y = x^2 at 1/2: 2 / 2^(3/2) at 45 degrees", "b -1 1 0 -1 1 1", .75, -.5, .5},
      {"straight Bezier", "b 0 0 1 1 2 2 5 5", .5, 0, 0},
      {"degree 1", "b 0 0 3 4", .5, 0, 0},
      {"first points just different", "b 1 2 1.0000004 2 1.0000008 2 5 2", 0, 0, 0},
      {"quarter circle, rational", "r 3 0 1 3 3 .70710678118654752 0 3 1", .5, -h / 3, -h / 3},
      {"quarter circle, B-spline by 10 times as much", "R 3 0 1 3 3 .70710678118654752 0 3 1 | 7 7 7 17 17 17", 12, -h / 3, -h / 3},
      {"y = x^2, B-spline", "B -1 1 0 -1 1 1 | 2 2 2 5 5 5", 3.5, 0, 2},
      {"composite: boundary", "c 2 1 (b 0 0 9 9)(b -1 1 0 -1 1 1)", 2.5, 0, 2},
      {"composite: line", "c 2 1 (b 0 0 9 9)(l -1 1 1 1)", 2.5, k, k},
      {"composite: its end", "c 2 1 (b 0 0 9 9)(b -1 1 0 -1 1 1)", 3, k, k},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    Point v = {k, k, k};
    KurvocvCurvature(Make(row.curve).get(), row.t, v, &g);
    EXPECT_NEAR(v[0], row.x, 1e-13) << row.name;
    EXPECT_NEAR(v[1], row.y, 1e-13) << row.name;
    EXPECT_EQ(v[2], row.x == k ? k : 0) << row.name;
    EXPECT_EQ(KurvoErrGet(&g), 0) << row.name;
  }
}

// (1 / (1 + t), 0): derivative n is (-1)^n n! / (1 + t)^(n+1), at any order.
TEST(NDeriv, OfARationalCurveAtAnyOrder) {
  const Owned cv = Make("r 1 0 1 .5 0 2");
  Globals g;
  for (const int n : {1, 2, 7, 30, 100, 170}) {
    for (const double t : {0.0, .3, 1.0}) {
      const Wide want = std::pow(-1.0L, n) * std::tgamma(n + 1.0L) / std::pow(1 + L(t), n + 1);
      const Point v = NDeriv(*cv, t, n, g);
      EXPECT_NEAR(static_cast<double>(v[0] / want), 1, 1e-12) << n << " at " << t;
      EXPECT_EQ(v[1], 0);
    }
  }
  EXPECT_EQ(NDeriv(*Make("r 1 2 3 4 5 3"), .3, 1000, g)[0], 0) << "equal weights";
  for (const char* text : {"l 1 2 3 4", "b 1 2", "b 0 0 1 2 3 1 4 0", "c 1 (b 0 0 1 2 3 1 4 0)"})
    EXPECT_EQ(NDeriv(*Make(text), .3, 4, g), (Point{0, 0, 0})) << text << " beyond its degree";
  EXPECT_EQ(KurvoErrGet(&g), 0);
}

// x = t, y = t^2 at any degree, raised by closed form; also a little beyond the ends, where the
// Bernstein polynomials still add up to no more than e^2 or so.
TEST(Deriv, OfHighDegree) {
  for (const int degree : {2, 39, 40, 41, 100, 1000, 4000}) {
    Numbers points, ts = {0, .2, .5, .50001, .9, 1};
    const double d = degree;
    for (int i = 0; i <= degree; ++i)
      points.insert(points.end(), {i / d, i * (i - 1.0) / d / (d - 1)});
    for (int k = 1; k <= 4 && degree > k + 1; ++k)
      ts.insert(ts.end(), {-1 / (d - k), 1 + 1 / (d - k)});
    const Owned cv = MakeFreeForm(CV_BEZIER, points);
    for (const double t : ts) {
      Globals g;
      const double more = t < 0 || t > 1 ? 100 : 1;
      const Point p = At(*cv, t), v = Deriv(*cv, t, g), w = NDeriv(*cv, t, 2, g);
      EXPECT_NEAR(p[0], t, more > 1 ? 1e-11 : 1e-15 * degree) << degree;
      EXPECT_NEAR(p[1], t * t, more > 1 ? 1e-11 : 1e-15 * degree) << degree;
      EXPECT_NEAR(v[0], 1, 1e-11 * more) << degree;
      EXPECT_NEAR(v[1], 2 * t, 1e-11 * more) << degree;
      EXPECT_NEAR(w[1], 2, 1e-7 * more) << degree;
    }
  }
}

}  // namespace
}  // namespace kurvo_test
