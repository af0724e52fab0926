// First and higher derivatives.
#include <gtest/gtest.h>

#include <string>

#include "query/derivative_reference.h"

namespace kurvo_test {
namespace {

constexpr double kUntouched = -77;

Point Deriv(const Curve* cv, double t, GlobalVar& g) {
  Point v = {kUntouched, kUntouched, kUntouched};
  KurvocvDeriv(cv, t, v, &g);
  return v;
}
Point NDeriv(const Curve* cv, double t, int n, GlobalVar& g) {
  Point v = {kUntouched, kUntouched, kUntouched};
  KurvocvNDeriv(cv, t, v, n, &g);
  return v;
}

// Rows of first derivatives known in closed form.
TEST(Deriv, Table) {
  constexpr double k = kUntouched;
  const struct {
    const char* name;
    const char* curve;
    double t;
    double x, y;
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
      {"a knot where the weight is 0", "R 0 0 1 1 1 1 2 -1 -1 5 5 -3 | 0 0 0 .5 1 1 1", .25, 0,
       16. / 3},
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
      {"composite: piece without a width is passed over",
       "c 1 0 1 (b 0 0 1 0)(b 1 0 2 9)(b 2 9 2 8)", 1, 0, -1},
      {"composite without pieces", "c", 0, k, k},
  };
  for (const auto& row : rows) {
    Globals g;
    const Owned cv = Make(row.curve);
    const bool untouched = row.x == k;
    const Point v = Deriv(cv.get(), row.t, g), nth = NDeriv(cv.get(), row.t, 1, g);
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

void ExpectNear(const Point& got, const DerivativeReference::Vector& want, long double bound,
                const std::string& name) {
  EXPECT_LE(std::hypot(got[0] - want.x, got[1] - want.y), bound) << name;
}

// All free-form kinds, orders and degrees, by their own parameter.
TEST(Deriv, AgreesWithCauchysIntegral) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 100; ++round) {
    const bool rational = round % 2 == 1, spline = round % 4 >= 2;
    const int order = round < 8 ? 12 : static_cast<int>(random.Uniform(2, 7));
    const int count = spline ? order + static_cast<int>(random.Uniform(0, 6)) : order;
    const int32_t type = spline     ? (rational ? CV_RBSPLINE : CV_BSPLINE)
                         : rational ? CV_RBEZIER
                                    : CV_BEZIER;
    const Owned cv = MakeFreeForm(type, RandomPoints(random, count, rational),
                                  spline ? RandomKnots(random, order, count) : Numbers());
    const DerivativeReference reference(*cv);
    const auto [start, length] = Domain(*cv);
    for (int n = 1; n <= (spline ? 2 : 6); ++n) {
      const double ts[] = {start, start + .37 * length, start + .81 * length, start + length};
      long double size = 1;
      for (const double t : ts) size = std::max(size, reference.Derivative(t, n).Size());
      for (const double t : ts) {
        Globals g;
        const std::string name = "round " + std::to_string(round) + ", type " +
                                 std::to_string(type) + ", order " + std::to_string(n);
        const auto want = reference.Derivative(t, n);
        ExpectNear(NDeriv(cv.get(), t, n, g), want, 1e-11L * size, name);
        if (n == 1) ExpectNear(Deriv(cv.get(), t, g), want, 1e-11L * size, name);
        EXPECT_EQ(KurvoErrGet(&g), 0) << name;
      }
    }
  }
}

// Derivative n of r (cos, sin)(a + s t) is r s^n (cos, sin)(a + s t + n pi / 2).
TEST(NDeriv, OfArcs) {
  for (const double sweep : {.5, 3.0, 6.2, -.5, -3.0, -6.2}) {
    const Owned arc = Arc(1, 2, 3, -2, sweep);
    for (int n = 1; n <= 9; ++n) {
      for (const double t : {0.0, .3, 1.0, 1.2}) {
        Globals g;
        const Point v = NDeriv(arc.get(), t, n, g);
        const long double angle = -2 + L(sweep) * t + n * kPiL / 2;
        const long double size = 3 * std::pow(L(sweep), n);
        const auto bound = static_cast<double>(1e-13L * std::fabs(size));
        EXPECT_NEAR(v[0], static_cast<double>(size * std::cos(angle)), bound) << n;
        EXPECT_NEAR(v[1], static_cast<double>(size * std::sin(angle)), bound) << n;
      }
    }
  }
}

// (1 / (1 + t), 0): derivative n is (-1)^n n! / (1 + t)^(n+1), at any order.
TEST(NDeriv, OfARationalCurveAtAnyOrder) {
  const Owned cv = Make("r 1 0 1 .5 0 2");
  for (const int n : {1, 2, 7, 30, 100, 170}) {
    for (const double t : {0.0, .3, 1.0}) {
      Globals g;
      const long double want =
          std::pow(-1.0L, n) * std::tgamma(n + 1.0L) / std::pow(1 + L(t), n + 1);
      const Point v = NDeriv(cv.get(), t, n, g);
      EXPECT_NEAR(static_cast<double>(v[0] / want), 1, 1e-12) << n << " at " << t;
      EXPECT_EQ(v[1], 0);
    }
  }
  Globals g;
  EXPECT_EQ(NDeriv(Make("r 1 2 3 4 5 3").get(), .3, 1000, g)[0], 0) << "equal weights";
}

TEST(NDeriv, BeyondTheDegreeIsZero) {
  for (const char* text : {"l 1 2 3 4", "b 1 2", "b 0 0 1 2 3 1 4 0", "c 1 (b 0 0 1 2 3 1 4 0)"}) {
    Globals g;
    const Point v = NDeriv(Make(text).get(), .3, 4, g);
    EXPECT_EQ(v, (Point{0, 0, 0})) << text;
    EXPECT_EQ(KurvoErrGet(&g), 0);
  }
}

// x = t, y = t^2 at any degree, raised by closed form.
TEST(Deriv, OfHighDegree) {
  for (const int degree : {2, 39, 40, 41, 500, 4000}) {
    Numbers points;
    const double d = degree;
    for (int i = 0; i <= degree; ++i)
      points.insert(points.end(), {i / d, i * (i - 1.0) / d / (d - 1)});
    const Owned cv = MakeFreeForm(CV_BEZIER, points);
    for (const double t : {0.0, .2, .5, .9, 1.0}) {
      Globals g;
      const Point v = Deriv(cv.get(), t, g), w = NDeriv(cv.get(), t, 2, g);
      EXPECT_NEAR(v[0], 1, 1e-11) << degree;
      EXPECT_NEAR(v[1], 2 * t, 1e-11) << degree;
      EXPECT_NEAR(w[1], 2, 1e-7) << degree;
    }
    // A little beyond the ends the Bernstein polynomials still add up to no more than e^2 or so.
    for (int k = 1; k <= 4 && degree > k + 1; ++k) {
      for (const double t : {-1 / (d - k), 1 + 1 / (d - k)}) {
        Globals g;
        Point p;
        KurvocvPosition(cv.get(), t, p, &g);
        const Point v = Deriv(cv.get(), t, g), w = NDeriv(cv.get(), t, 2, g);
        EXPECT_NEAR(p[0], t, 1e-11) << degree;
        EXPECT_NEAR(p[1], t * t, 1e-11) << degree;
        EXPECT_NEAR(v[1], 2 * t, 1e-9) << degree;
        EXPECT_NEAR(w[1], 2, 1e-6) << degree;
      }
    }
  }
}

// Moving a curve by an amount that rounds nothing changes nothing, however far it is.
TEST(Deriv, DoesNotDependOnTheOrigin) {
  const char* const curves[] = {"b 0 0 1 3 4 2", "b 0 0 1 3 4 2 6 1", "b 0 0 1 3 4 2 6 1 5 5",
                                "r 0 0 1 1 3 .3 4 2 2", "r 0 0 1 1 3 .3 4 2 2 5 5 7 6 6 1"};
  for (const char* text : curves) {
    const Owned near = Make(text);
    Owned far = Make(text);
    const FreeForm form(*far);
    for (int i = 0; i < form.order; ++i) form.points[i * form.stride] += 0x1p40;
    for (const double t : {0.0, .3, .9}) {
      Globals g;
      EXPECT_EQ(Deriv(near.get(), t, g), Deriv(far.get(), t, g)) << text;
      EXPECT_EQ(NDeriv(near.get(), t, 2, g), NDeriv(far.get(), t, 2, g)) << text;
    }
  }
}

}  // namespace
}  // namespace kurvo_test
