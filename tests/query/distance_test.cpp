// The distance of a point from a curve, and its projection onto the carrier.
#include <optional>

#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

constexpr double kUnwritten = -77, kHalfTurn = M_PI;

struct Found {
  double dist, t;
  int error;
};

Found DistanceOf(const Curve& cv, const Point& p) {
  Globals g;
  Found found{0, kUnwritten, 0};
  found.dist = KurvocvDistPoint(&cv, p, &found.t, &g);
  found.error = KurvoErrGet(&g);
  return found;
}

// Free-form curves are projected onto that point, and it is the parameter of points off the curve.
void ExpectAllAgree(const Owned& cv, const Point& p, const Found& found) {
  if (cv->type == CV_ARC) return;
  Globals g;
  Point foot = p;
  double t = 0;
  KurvofcPOntoCurve(cv.get(), foot, &g);
  EXPECT_NEAR(KurvoclDistPoint(p, foot), found.dist, 1e-12);
  if (KurvocvParameter(cv.get(), p, &t, &g) == KURVO_OFF_CURVE) {
    EXPECT_NEAR(t, found.t, 1e-9);
  }
  EXPECT_EQ(KurvoErrGet(&g), 0);
}

TEST(DistPoint, Table) {
  const char* const kLine = "l 1 1 4 1";
  const char* const kQuarter = "a 0 0 2 0 1.5707963267948966";     // from (2, 0) to (0, 2)
  const char* const kClockwise = "a 0 0 2 0 -1.5707963267948966";  // from (2, 0) to (0, -2)
  const char* const kUpper = "a 0 0 1 0 3.14159265358979323846";   // from (1, 0) to (-1, 0)
  const char* const kArch = "b 0 0 0 4 4 4 4 0";
  const char* const kCorner = "B 0 0 3 3 6 0 | 0 0 .5 1 1";  // a polyline
  const char* const kTwo = "c 2 3 (l 0 0 4 0)(l 4 0 4 4)";
  // clang-format off
  const struct {
    const char *name, *curve;
    Point p;
    double dist, t;
    int error = 0;
  } rows[] = {
      {"line, inside", kLine, {2, 3}, 2, 1. / 3},
      {"line, at its start", kLine, {1, 0}, 1, 0},
      {"line, before", kLine, {-2, 5}, 5, 0},
      {"line, beyond", kLine, {7, -3}, 5, 1},
      {"line, height does not count", kLine, {2, 3, 9}, 2, 1. / 3},
      {"line without length", "l 1 1 1 1", {4, 5}, 5, 0, KURVO_WARN_SHORT_VECTOR},
      {"arc, outside its circle", kQuarter, {3, 3}, 3 * M_SQRT2 - 2, .5},
      {"arc, inside its circle", kQuarter, {.5, .5}, 2 - M_SQRT1_2, .5},
      {"arc, centre", kQuarter, {0, 0}, 2, 0},
      {"arc, within epsilon of its centre", kQuarter, {-9e-7, -9e-7}, 2, 0},
      {"arc, far side", kQuarter, {2, -4}, 4, 0},
      {"arc, far side, nearer the end", kQuarter, {-3, -2}, 5, 1},
      {"arc, tie of both ends", kQuarter, {-3, -3}, std::sqrt(34), 1},
      {"arc, tie, clockwise", kClockwise, {-3, 3}, std::sqrt(34), 1},
      {"arc, clockwise", kClockwise, {4 * std::cos(.3), -4 * std::sin(.3)}, 2, .6 / kHalfTurn},
      {"arc, just before the start", kUpper, {2, -1e-6}, 1, -5e-7 / kHalfTurn},
      {"arc, below its diameter", kUpper, {0, -1}, M_SQRT2, 1},
      {"Bezier, on its axis", kArch, {2, 9}, 6, .5},
      {"Bezier, before", "b 0 0 1 0 2 0 3 0", {-3, 4}, 5, 0},
      {"Bezier, beyond", "b 0 0 1 0 2 0 3 0", {6, -4}, 5, 1},
      // y = x^2 over [-2, 2] with feet at x = -1, -0.5 and 1.5, where p lies on the curve itself.
      {"Bezier, first foot, not the nearest", "b -2 4 0 -4 2 4", {1.5, 2.25}, std::sqrt(7.8125), .25},
      {"Bezier, a point", "b 3 4", {0, 0}, 5, 1},
      {"Bezier, a point of degree 2", "b 3 4 3 4 3 4", {0, 0}, 5, 1},
      {"rational, unit circle", "r 1 0 1 1 1 .70710678118654752 0 1 1", {3, 3}, 3 * M_SQRT2 - 1, .5},
      {"spline, corner", kCorner, {3, 7}, 4, .5},
      {"spline, start", kCorner, {-3, -4}, 5, 0},
      {"spline, end", kCorner, {9, -4}, 5, 1},
      {"spline, tie of two spans", kCorner, {3, 0}, 1.5 * M_SQRT2, .25},
      {"spline on another domain", "B 0 0 3 3 6 0 | 2 2 4 7 7", {6, 3}, 1.5 * M_SQRT2, 5.5},
      {"spline, unclamped", "B 0 0 1 0 2 0 3 0 | 0 1 2 3 4 5 6", {-2.5, 4}, 5, 2},
      // of a closed spline the start comes before the end, and both after a foot
      {"spline, closed, at the joint", "B 0 0 4 0 4 4 0 0 | 0 0 1 2 3 3", {-1, -1}, M_SQRT2, 0},
      {"spline, a foot as near as the start", "B 0 0 2 -1 2 2 -2 2 | 0 0 1 2 3 3", {0, 1}, 1, 2.5},
      {"composite, first piece", kTwo, {1, -2}, 2, .5},
      {"composite, second piece", kTwo, {7, 1}, 3, 2.75},
      {"composite, tie goes to the earlier", kTwo, {3, 1}, 1, 1.5},
      {"composite, joint", kTwo, {8, -3}, 5, 2},
      {"composite of composites", "c 1 4 (c 1 1 (l 0 9 1 9)(e))(c 2 2 (l 0 0 4 0)(l 4 0 8 0))", {6, 2}, 0, kUnwritten, KURVO_ERR_CURVE},
      {"composite in a composite", "c 1 4 (l 0 9 1 9)(c 1 1 (l 0 0 4 0)(l 4 0 8 0))", {6, 2}, 2, 7},
      {"composite without pieces", "c", {1, 1}, 0, kUnwritten},
      {"composite, a piece without pieces", "c 1 1 (c)(l 0 0 4 0)", {1, 1}, 1, 1.25},
      {"empty", "e", {1, 1}, 0, kUnwritten, KURVO_ERR_CURVE},
  };
  // clang-format on
  for (const auto& row : rows) {
    const Found found = DistanceOf(*Make(row.curve), row.p);
    EXPECT_NEAR(found.dist, row.dist, 1e-12) << row.name;
    EXPECT_NEAR(found.t, row.t, 1e-9) << row.name;
    EXPECT_EQ(found.error, row.error) << row.name;
    const Owned cv = Make(row.curve);
    if (cv->type != CV_LINE && cv->type != CV_SEGCV) ExpectAllAgree(cv, row.p, found);
  }
}

TEST(POntoCurve, Table) {
  const char* const kTwo = "c 1 1 (b -1 1 1 1)(b -1 -1 1 -1)";
  const char* const kQuarter = "a 0 0 2 0 1.5707963267948966";
  // clang-format off
  const struct {
    const char *name, *curve;
    Point p, want;
    int error = 0;
  } rows[] = {
      {"line, inside", "l 1 1 5 1", {2, 3, 7}, {2, 1}},
      {"line, beyond its end", "l 1 1 5 1", {9, 3}, {9, 1}},
      {"line, before its start", "l 0 0 1 1", {-3, -1}, {-2, -2}},
      {"line without length", "l 1 2 1 2", {9, 3}, {1, 2}, KURVO_WARN_SHORT_VECTOR},
      {"arc", kQuarter, {3, 3, 5}, {M_SQRT2, M_SQRT2}},
      {"arc, far side of its circle", kQuarter, {-3, -3}, {-M_SQRT2, -M_SQRT2}},
      {"arc, clockwise", "a 1 0 2 0 -1", {1, .5}, {1, 2}},
      {"arc, its centre", "a 1 3 2 0 1", {1, 3, 1}, {1, 3}, KURVO_WARN_SHORT_VECTOR},
      {"rational spline", "R 0 0 1 3 3 2 6 0 1 | 0 0 .5 1 1", {6, 3}, {4.5, 1.5}},
      // parameters of all spans agree to six decimals
      {"spline on a tiny domain", "B 0 0 3 3 6 0 | 0 0 1e-8 2e-8 2e-8", {0, 3}, {1.5, 1.5}},
      {"spline, before a jump", "B 0 0 2 0 4 9 6 9 | 0 0 1 1 2 2", {3, 0}, {2, 0}},
      {"composite, nearer piece", kTwo, {.5, -9}, {.5, -1}},
      {"composite, tie goes to the earlier", kTwo, {.5, 0}, {.5, 1}},
      {"composite, other types pass", "c 1 1 1 (l 0 0 4 0)(B 0 0 4 0 | 0 0 1 1)(r 0 9 1 4 9 1)", {2, 0}, {2, 9}},
      {"composite, nested ones pass", "c 1 1 (c 1 (b 0 0 4 0))(b 0 9 4 9)", {2, 0}, {2, 9}},
      {"composite, nothing to take part", "c 1 (l 0 0 4 0)", {2, 3, 4}, {2, 3, 4}},
      {"composite without pieces", "c", {2, 3, 4}, {2, 3, 4}},
      {"empty", "e", {2, 3, 4}, {2, 3, 4}, KURVO_ERR_CURVE},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    const Owned cv = Make(row.curve);
    Point p = row.p;
    KurvofcPOntoCurve(cv.get(), p, &g);
    EXPECT_NEAR(std::hypot(p[0] - row.want[0], p[1] - row.want[1]), 0, 1e-9) << row.name;
    EXPECT_EQ(p[2], row.want[2]) << row.name;
    EXPECT_EQ(KurvoErrGet(&g), row.error) << row.name;
  }
}

TEST(POntoCurve, GivesPlanarPointsUpToTheHighestDegree) {
  Globals g;
  Point p = {2, 3, 4};
  KurvofcPOntoCurve(MakeFreeForm(CV_BEZIER, Numbers(42, 1.0)).get(), p, &g);
  EXPECT_EQ(p, (Point{1, 1, 0}));
  const Owned ends = Make("b 0 0 1 0");
  ends.block<KurvoBezier>().points[0][2] = 5;
  p = {-1, 1, 4};
  KurvofcPOntoCurve(ends.get(), p, &g);
  EXPECT_EQ(p, (Point{0, 0, 0})) << "z is not that of the end";
}

// Splines and arcs: the reported point lies at the reported distance, and no sample is nearer.
TEST(DistPoint, IsTheLeastOfAllSamples) {
  constexpr int kSamples = 600;
  Rounds(900, [&](Random& random, int n) {
    const int order = RandomInt(random, 2, 5);
    const double turn = random.Uniform(.001, 6.28) * (n % 2 ? 1 : -1);
    const Owned cv = n % 3 == 0 ? Arc(1, -2, random.Uniform(.1, 9), random.Uniform(-3, 3), turn)
                                : RandomSplineOver(random, n % 3 == 1, order, -1, 7, order);
    const Point p = random.Planar(12);
    const Oracle exact(*cv);
    const Found found = DistanceOf(*cv, p);
    ExpectAllAgree(cv, p, found);
    const auto off = [&](double t) { return std::fabs(exact.DistanceAt(t, p) - found.dist); };
    EXPECT_LE(std::min(off(found.t), off(found.t + 1e-13)), 1e-9);  // a curve may jump there
    for (int i = 0; i <= kSamples; ++i) {
      const Wide t = std::lerp(exact.start(), exact.end(), L(i) / kSamples);
      ASSERT_LE(found.dist, exact.DistanceAt(t, p) + 1e-9) << static_cast<double>(t);
    }
  });
}

// Where the derivative of the squared distance first changes sign, found in `steps` equal parts of
// [0, 1] and refined by bisection; none when it never does.
std::optional<double> FirstFoot(const Oracle& curve, const Point& p, int steps) {
  const auto approaches = [&](Wide t) {
    constexpr Wide kStep = 1e-7L;
    return curve.DistanceAt(t - kStep, p) > curve.DistanceAt(t + kStep, p);
  };
  for (int i = -1; i < steps; ++i) {
    Wide low = L(i) / steps, high = L(i + 1) / steps;
    const bool at_first = approaches(low);
    if (at_first == approaches(high)) continue;
    for (int n = 0; n < 50; ++n) {
      const Wide middle = (low + high) / 2;
      (approaches(middle) == at_first ? low : high) = middle;
    }
    if (i < 0) break;
    return static_cast<double>(low);
  }
  return std::nullopt;
}

// Both Bezier kinds answer with their first foot point, whether it is the nearest or not, and with
// the nearer end where there is none, or the first lies up to a thousandth before the start.
TEST(DistPoint, OfABezierIsThatOfItsFirstFoot) {
  int several = 0, without = 0;
  Rounds(400, [&](Random& random, int n) {
    const Owned cv = RandomBezier(random, n % 2 == 1, RandomInt(random, 1, 5));
    const Point p = random.Planar(12);
    const Found found = DistanceOf(*cv, p);
    ExpectAllAgree(cv, p, found);
    const Oracle exact(*cv);
    const auto dist_at = [&](double t) { return static_cast<double>(exact.DistanceAt(t, p)); };
    const auto first = FirstFoot(exact, p, 1000);
    const double end = dist_at(1) > dist_at(0) ? 0 : 1, t = first.value_or(end);
    EXPECT_NEAR(found.t, t, first ? 1e-7 : 0);
    EXPECT_NEAR(found.dist, dist_at(t), first ? 1e-9 : 1e-12);
    if (!first) ++without;
    for (int i = 0; i <= 100 && first; ++i) {
      if (dist_at(i / 100.0) > found.dist - .01) continue;
      ++several;  // another point is nearer, and does not win
      break;
    }
  });
  EXPECT_GT(several, 20);
  EXPECT_GT(without, 20);
}

TEST(DistPoint, OfNaNInfinityAndHugeCoordinates) {
  for (const char* text : {"l 0 0 1 0", "a 0 0 1 0 1", "b 0 0 1 2 3 1", "r 0 0 1 1 2 2 3 1 1",
                           "B 0 0 1 2 3 1 5 5 | 0 0 0 .5 1 1 1", "c 1 (b 0 0 1 2 3 1)"}) {
    const Owned cv = Make(text);
    for (const double x : {kNaN, kInfinity, -1e150, 1e15}) {
      const Found found = DistanceOf(*cv, {x, 0});
      if (x == 1e15) {
        EXPECT_NEAR(found.dist / x, 1, 1e-14) << text;
      }
      EXPECT_EQ(std::isfinite(found.dist), std::isfinite(x)) << text << ' ' << x;
    }
  }
}

}  // namespace
}  // namespace kurvo_test
