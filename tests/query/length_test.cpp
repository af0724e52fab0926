// Length between two parameters.
#include <gtest/gtest.h>

#include <string>

#include "query/derivative_reference.h"
#include "query/reference.h"

namespace kurvo_test {
namespace {

double LengthOf(const Curve* cv, double t0, double t1, GlobalVar& g) {
  double length = -77;
  KurvocvCurveLen(cv, t0, t1, &length, &g);
  return length;
}
double LengthOf(const Curve* cv, GlobalVar& g) {
  const auto [start, length] = Domain(*cv);
  return LengthOf(cv, start, start + length, g);
}

TEST(CurveLen, Table) {
  constexpr double kHuge = 1e300;
  const struct {
    const char* name;
    const char* curve;
    double t0, t1, length;
  } rows[] = {
      {"line", "l 1 1 4 5", 0, 1, 5},
      {"line, part", "l 1 1 4 5", .2, .6, 2},
      {"line, backwards", "l 1 1 4 5", 1, 0, -5},
      {"line, beyond its ends", "l 1 1 4 5", -1, 3, 20},
      {"within epsilon", "l 0 0 1e6 0", .5, .5 + 9e-7, 0},
      {"just beyond epsilon", "l 0 0 1e6 0", .5, .5 + 1.1e-6, 1.1},
      {"within epsilon, backwards", "b 0 0 1e6 0", .5 + 9e-7, .5, 0},
      {"arc", "a 1 2 2 0 1.5", 0, 1, 3},
      {"arc of three quarters, part", "a 1 2 2 1 4.5", .25, .5, 2.25},
      {"clockwise arc, part", "a 1 2 2 0 -1.5", .25, .5, .75},
      {"clockwise arc, backwards", "a 1 2 2 0 -1.5", 1, 0, -3},
      {"full circle, whose sweep is 0", "a 1 2 2 0 6.283185307179586476925", 0, 1, 0},
      {"degree 0", "b 1 2", 0, 1, 0},
      {"straight Bezier, evenly spaced", "b 0 0 3 4 6 8 9 12", 0, 1, 15},
      {"straight Bezier, part", "b 0 0 3 4 6 8 9 12", .2, .6, 6},
      {"straight Bezier, beyond its end", "b 0 0 3 4 6 8 9 12", .5, 2, 22.5},
      {"straight Bezier, the whole to six decimals", "b 0 0 3 4 6 8 9 12", 4e-7, 1 - 4e-7, 15},
      {"straight rational Bezier", "r 0 0 2 3 4 5 6 8 2", 0, 1, 10},
      {"control point of weight 0", "r 0 0 1 5 7 0 2 0 1", 0, 1, 2},
      {"rational Bezier, half by symmetry", "r 0 0 2 3 4 5 6 8 2", .5, 1, 5},
      {"B-spline over its own domain", "B 0 0 3 4 | 20 20 50 50", 20, 50, 5},
      {"B-spline, part", "B 0 0 3 4 | 20 20 50 50", 44, 32, -2},
      {"B-spline of many spans, part", "B 0 0 1 0 2 0 3 0 4 0 | 1 1 2 3 4 5 5", 1.5, 4.25, 2.75},
      {"B-spline, within one span", "B 0 0 1 0 2 0 3 0 4 0 | 1 1 2 3 4 5 5", 2.25, 2.75, .5},
      {"B-spline, beyond both ends", "B 0 0 1 0 2 0 3 0 4 0 | 1 1 2 3 4 5 5", 0, 7, 7},
      {"B-spline with knots of full multiplicity", "B 0 0 1 0 5 0 6 0 | 0 0 1 1 2 2", 0, 2, 2},
      {"B-spline without a span", "B 0 0 1 0 | 3 3 3 3", 3, 4, 0},
      {"unclamped quadratic, straight", "B 0 0 1 0 2 0 3 0 | 0 1 2 3 4 5 6", 2, 4, 2},
      {"composite of lines", "c 2 3 (l 0 0 2 0)(l 2 0 2 6)", 0, 5, 8},
      {"composite of lines, part", "c 2 3 (l 0 0 2 0)(l 2 0 2 6)", 1, 3, 3},
      {"composite of lines, beyond its ends", "c 2 3 (l 0 0 2 0)(l 2 0 2 6)", -1, 6, 11},
      {"composite of arcs", "c 1 1 (a 0 0 1 0 2)(a 0 0 1 2 -2)", .5, 1.5, 2},
      {"composite of Beziers", "c .5 .5 (b 0 0 3 4)(b 3 4 3 8 3 12)", 0, 1, 13},
      {"closed composite, part", "c .5 .5 (b 0 0 3 0 6 0)(l 6 0 0 0)", .25, 1, 9},
      {"composite of other kinds", "c 1 1 1 (b 0 0 3 4)(B 3 4 6 8 | 0 0 1 1)(c 1 (l 6 8 9 12))", 0,
       3, 15},
      {"piece without a width", "c 1 0 1 (l 0 0 1 0)(l 1 0 1 5)(l 1 5 2 5)", 0, 2, 7},
      {"piece without a width, before the stretch", "c 1 0 1 (l 0 0 1 0)(l 1 0 1 5)(l 1 5 2 5)",
       1.5, 2, .5},
      {"composite without pieces", "c", 0, 1, 0},
      {"not finite in between", "b 0 0 1e200 1e200 0 0", 0, 1, kHuge},
  };
  for (const auto& row : rows) {
    Globals g;
    const double length = LengthOf(Make(row.curve).get(), row.t0, row.t1, g);
    if (row.length < kHuge) {
      EXPECT_NEAR(length, row.length, 2e-9 * std::fabs(row.length) + 1e-14) << row.name;
    }
    EXPECT_EQ(KurvoErrGet(&g), 0) << row.name;
  }
}

// ---- The rule, in long double and by recursion ----

struct Weighted {
  long double x, y, w;  // w x, w y, w
};
using Polygon = std::vector<Weighted>;

Polygon PolygonOf(const Curve& cv) {
  const FreeForm form(cv);
  Polygon polygon;
  for (int i = 0; i < form.order; ++i) {
    const double* p = form.points + i * form.stride;
    const long double w = form.stride == 4 ? p[3] : 1;
    polygon.push_back({w * p[0], w * p[1], w});
  }
  return polygon;
}

// The pieces of a curve after `depth` halvings.
std::vector<Polygon> Halved(const Polygon& polygon, int depth) {
  if (depth == 0) return {polygon};
  Polygon left, right = polygon;
  for (std::size_t n = polygon.size(); n > 0; --n) {
    left.push_back(right[0]);
    for (std::size_t i = 0; i + 1 < n; ++i) {
      const Weighted &a = right[i], &b = right[i + 1];
      right[i] = {(a.x + b.x) / 2, (a.y + b.y) / 2, (a.w + b.w) / 2};
    }
  }
  auto pieces = Halved(left, depth - 1);
  for (auto& piece : Halved(right, depth - 1)) pieces.push_back(std::move(piece));
  return pieces;
}

long double PolygonLength(const Polygon& polygon, int depth) {
  long double sum = 0;
  for (const Polygon& piece : Halved(polygon, depth))
    for (std::size_t i = 1; i < piece.size(); ++i) {
      const auto &a = piece[i - 1], &b = piece[i];
      sum += std::hypot(b.x / b.w - a.x / a.w, b.y / b.w - a.y / a.w);
    }
  return sum;
}

long double ByRule(const Polygon& polygon) {
  long double length = PolygonLength(polygon, 0);
  for (int pass = 1; pass <= 10; ++pass) {
    const long double before = length;
    length = PolygonLength(polygon, pass);
    if (std::fabs(length - before) <= .001L) break;
  }
  return length;
}

// Small and large curves: some settle at once, some not in ten passes.
TEST(CurveLen, FollowsItsRule) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 60; ++round) {
    const bool rational = round % 2 == 1;
    const int count = round < 4 ? 31 : static_cast<int>(random.Uniform(2, 9));
    const double scale = round < 4 ? 10 : std::pow(10, random.Uniform(-4, 5));
    const int32_t type = rational ? CV_RBEZIER : CV_BEZIER;
    Numbers points = RandomPoints(random, count, rational);
    for (std::size_t i = 0; i < points.size(); ++i)
      if (!rational || i % 3 != 2) points[i] *= scale;
    Globals g;
    const Owned alone = MakeFreeForm(type, points);
    const long double want = ByRule(PolygonOf(*alone));
    EXPECT_NEAR(static_cast<double>(LengthOf(alone.get(), 0, 1, g) / want), 1, 1e-12) << round;
    if (scale > 1e3) continue;  // ten passes on 16 parts take the recursion too long

    std::vector<Owned> pieces;
    pieces.push_back(MakeFreeForm(type, points));
    const Owned member = MakeComposite({1}, std::move(pieces));
    long double sum = 0;
    for (const Polygon& part : Halved(PolygonOf(*alone), 4)) sum += ByRule(part);
    EXPECT_NEAR(static_cast<double>(LengthOf(member.get(), 0, 1, g) / sum), 1, 1e-12) << round;

    Numbers knots(2 * static_cast<std::size_t>(count), 5);
    std::fill_n(knots.begin(), count, 3);
    const Owned span = MakeFreeForm(rational ? CV_RBSPLINE : CV_BSPLINE, points, knots);
    EXPECT_EQ(LengthOf(span.get(), 3, 5, g), LengthOf(member.get(), 0, 1, g)) << round;
  }
}

// ---- The true length ----

// From inscribed polygons of ever more sides by Romberg's extrapolation, each span by itself.
long double TrueLength(const Reference& curve, long double from, long double to) {
  constexpr int kLevels = 8;
  long double table[kLevels];
  for (int level = 0; level < kLevels; ++level) {
    const int sides = 16 << level;
    long double sum = 0;
    auto before = curve.PointAt(from);
    for (int i = 1; i <= sides; ++i) {
      const auto p = curve.PointAt(from + (to - from) * i / sides);
      sum += std::hypot(p.x - before.x, p.y - before.y);
      before = p;
    }
    long double power = 4;
    for (int k = level; k > 0; --k, power *= 4) {
      std::swap(sum, table[level - k]);
      sum = table[level - k] + (table[level - k] - sum) / (power - 1);
    }
    table[level] = sum;
  }
  return table[kLevels - 1];
}

TEST(CurveLen, OfStretchesIsTheTrueLength) {
  Random random;
  SCOPED_TRACE(random.Trace());
  constexpr double kScale = 1e4;  // the absolute tolerance is small compared with it
  for (int round = 0; round < 40; ++round) {
    const bool rational = round % 2 == 1, spline = round % 4 >= 2;
    const int order = static_cast<int>(random.Uniform(2, 6));
    const int count = spline ? order + static_cast<int>(random.Uniform(0, 6)) : order;
    Numbers points = RandomPoints(random, count, rational);
    for (std::size_t i = 0; i < points.size(); ++i)
      if (!rational || i % 3 != 2) points[i] *= kScale;
    const Numbers knots = spline ? RandomKnots(random, order, count) : Numbers();
    const Owned cv = MakeFreeForm(
        spline ? (rational ? CV_RBSPLINE : CV_BSPLINE) : (rational ? CV_RBEZIER : CV_BEZIER),
        points, knots);
    const auto [start, length] = Domain(*cv);
    const double t0 = start + random.Uniform(0, .6) * length,
                 t1 = t0 + random.Uniform(.1, .4) * length;
    long double want = 0;
    double from = t0;
    for (const double u : knots) {
      if (u > from && u < t1)
        want += TrueLength(Reference(*cv), std::nextafter(from, t1), u), from = u;
    }
    want += TrueLength(Reference(*cv), std::nextafter(from, t1), t1);
    Globals g;
    const double got = LengthOf(cv.get(), t0, t1, g);
    EXPECT_NEAR(got, static_cast<double>(want), .002 * (count - order + 1) + 1e-6 * got) << round;
    EXPECT_EQ(LengthOf(cv.get(), t1, t0, g), -got);
  }
}

TEST(CurveLen, IsThatOfTheTrimmedCurve) {
  const char* const curves[] = {
      "b 0 0 100 300 400 -200 700 50", "r 0 0 1 100 300 .4 400 -200 2 700 50 1",
      "B 0 0 100 300 400 -200 700 50 600 600 | 0 0 0 .3 .7 1 1 1",
      "R 0 0 1 100 300 2 400 -200 .5 700 50 1 | 0 0 0 .3 1 1 1",
      "c .3 .7 (b 0 0 100 300 400 -200)(r 400 -200 1 700 50 2 600 600 1)"};
  for (const char* text : curves) {
    for (const auto& [t0, t1] : {std::pair(.1, .9), std::pair(0.0, .55), std::pair(.35, 1.0)}) {
      Globals g;
      const Owned cv = Make(text);
      Owned trimmed;
      KurvocvExtendCurve(cv.get(), -t0, t1 - 1, trimmed.get(), &g);
      ASSERT_EQ(KurvoErrGet(&g), 0) << text;
      const double want = LengthOf(trimmed.get(), g);
      EXPECT_GT(want, 0);
      EXPECT_NEAR(LengthOf(cv.get(), t0, t1, g), want, 1e-9 * want) << text;
    }
  }
}

TEST(CurveLen, OfWeightsThatAreAllOneIsThatOfThePlainCurve) {
  Globals g;
  const Owned plain = Make("B 0 0 1 3 4 -2 7 5 6 6 | 1 1 1 1.1 2.3 3 3 3"),
              rational = Make("R 0 0 1 1 3 1 4 -2 1 7 5 1 6 6 1 | 1 1 1 1.1 2.3 3 3 3"),
              nearly = Make("R 0 0 1 1 3 1.0000004 4 -2 1 7 5 1 6 6 1 | 1 1 1 1.1 2.3 3 3 3");
  EXPECT_EQ(LengthOf(plain.get(), 1, 3, g), LengthOf(rational.get(), 1, 3, g));
  EXPECT_EQ(LengthOf(plain.get(), 1.2, 3, g), LengthOf(nearly.get(), 1.2, 3, g));
}

}  // namespace
}  // namespace kurvo_test
