// The distance between curves, against closed forms and dense sampling in long double.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "relate/curve_distance_oracle.h"

namespace kurvo_test {
namespace {

struct Found {
  double dist, ta = -77, tb = -77;
  int error;
};

Found DistanceOf(const Curve& a, const Curve& b, double eps = 1e-6) {
  Globals g(eps);
  Found found{};
  found.ta = found.tb = -77;
  found.dist = KurvocvDistCurve(&a, &b, &found.ta, &found.tb, &g);
  found.error = KurvoErrGet(&g);
  return found;
}

std::string Text(const Numbers& numbers) {
  std::string text;
  for (const double x : numbers) text += ' ' + std::to_string(x);
  return text;
}

// A curve of type number 0 to 6 about (x, y).
Owned RandomCurve(Random& random, int type, double x, double y) {
  const auto points = [&](int count, bool weights) {
    Numbers numbers;
    for (int i = 0; i < count; ++i) {
      numbers.push_back(x + random.Uniform(-2, 2));
      numbers.push_back(y + random.Uniform(-2, 2));
      if (weights) numbers.push_back(random.Uniform(.3, 3));
    }
    return Text(numbers);
  };
  switch (type) {
    case 0:
      return Make("l" + points(2, false));
    case 1:
      return Make("a" + Text({x, y, random.Uniform(.3, 2), random.Uniform(0, 6),
                              random.Uniform(.2, 6) * (random.Uniform(-1, 1) < 0 ? -1 : 1)}));
    case 2:
      return Make("b" + points(2 + static_cast<int>(random.Uniform(0, 5)), false));
    case 3:
      return Make("r" + points(3 + static_cast<int>(random.Uniform(0, 3)), true));
    case 4:
      return Make("B" + points(7, false) + " | 2 2 2 2 2.5 3 3.7 5 5 5 5");
    case 5:
      return Make("R" + points(6, true) + " | 0 0 0 .2 .5 .5 1 1 1");
    default:
      return Make("c .5 1.5 1 (l" + points(2, false) + ")(c .4 .6 (b" + points(4, false) + ")(a" +
                  Text({x, y, 1, 0, 2}) + "))(B" + points(4, false) + " | 0 0 0 .4 1 1 1)");
  }
}

void ExpectRight(const Curve& a, const Curve& b, const std::string& name) {
  SCOPED_TRACE(name);
  const Oracle oracle_a(a), oracle_b(b);
  const Found found = DistanceOf(a, b), swapped = DistanceOf(b, a);
  ASSERT_EQ(found.error, 0);
  long double gap = HUGE_VALL;
  for (const LongPoint& p : oracle_a.At(found.ta))
    for (const LongPoint& q : oracle_b.At(found.tb)) gap = std::min(gap, Oracle::Gap(p, q));
  // The points are as far apart as is said, and no other ones are nearer.
  EXPECT_NEAR(static_cast<double>(gap), found.dist, found.dist == 0 ? 1e-6 : 1e-12);
  const auto least = static_cast<double>(Oracle::Distance(oracle_a, oracle_b));
  EXPECT_LE(found.dist, least + 1e-6);
  EXPECT_NEAR(found.dist, swapped.dist, 1e-6);
}

TEST(DistCurve, IsThatOfDenseSampling) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int type_a = 0; type_a < 7; ++type_a)
    for (int type_b = 0; type_b < 7; ++type_b)
      for (const double apart : {0., 2.5, 6.}) {
        const Owned a = RandomCurve(random, type_a, 0, 0);
        const Owned b = RandomCurve(random, type_b, apart, random.Uniform(-2, 2));
        ExpectRight(*a, *b,
                    std::to_string(type_a) + " to " + std::to_string(type_b) + " at " +
                        std::to_string(apart));
      }
}

TEST(DistCurve, OfLinesAndArcsIsExact) {
  const double r2 = std::sqrt(2.0), right = 1.57079632679489661923;
  const struct {
    const char* name;
    Owned a, b;
    double dist, ta, tb;
  } rows[] = {
      {"parallel lines", Make("l 0 0 4 0"), Make("l 1 3 9 3"), 3, .25, 0},
      {"parallel lines, opposite", Make("l 0 0 4 0"), Make("l 9 3 1 3"), 3, .25, 1},
      {"lines end to end", Make("l 0 0 4 0"), Make("l 7 4 9 9"), 5, 1, 0},
      {"line beside", Make("l 0 0 4 0"), Make("l 1 1 1 5"), 1, .25, 0},
      {"crossing lines", Make("l 0 0 4 4"), Make("l 0 2 2 0"), 0, .25, .5},
      {"overlapping lines", Make("l 0 0 4 0"), Make("l 3 0 1 0"), 0, .25, 1},
      {"one line twice", Make("l 0 0 4 0"), Make("l 0 0 4 0"), 0, 0, 0},
      {"points", Make("l 1 1 1 1"), Make("l 4 5 4 5"), 5, 0, 0},
      {"line above an arc", Make("l -4 3 4 3"), Arc(0, 0, 2, 0, 2 * right), 1, .5, .5},
      {"line inside an arc", Make("l -1 0 1 0"), Arc(0, 0, 2, -right, right), 1, 1, 1},
      {"line through an arc", Make("l -3 0 3 0"), Arc(0, 0, 2, 0 - right, 2 * right), 0, 5. / 6,
       .5},
      {"line below an arc", Make("l -4 -3 4 -3"), Arc(0, 0, 2, 0, 2 * right), 3, .25, 1},
      {"line touching", Make("l -4 2 4 2"), Arc(0, 0, 2, 0, 2 * right), 0, .5, .5},
      {"arcs apart", Arc(0, 0, 1, -right, 2 * right), Arc(5, 0, 2, right, 2 * right), 2, .5, .5},
      {"arcs turned away", Arc(0, 0, 1, right, 2 * right), Arc(5, 0, 2, -right, 2 * right),
       std::sqrt(26.0), 0, 1},
      {"arcs inside", Arc(0, 0, 4, -right, 2 * right), Arc(1, 0, 2, -right, 2 * right), 1, .5, .5},
      {"concentric", Arc(0, 0, 4, 0, 2 * right), Arc(0, 0, 3, right, 2 * right), 1, .5, 0},
      {"concentric apart", Arc(0, 0, 4, 0, right), Arc(0, 0, 3, 2 * right, right), 5, 0, 1},
      {"same circle", Arc(0, 0, 4, 0, 2 * right), Arc(0, 0, 4, right, 2 * right), 0, .5, 0},
      {"crossing arcs", Arc(0, 0, r2, 0, 2 * right), Arc(2, 0, r2, right, right), 0, .25, .5},
      {"touching arcs", Arc(0, 0, 1, -right, 2 * right), Arc(3, 0, 2, right, 2 * right), 0, .5, .5},
      {"clockwise", Arc(0, 0, 1, right, -2 * right), Arc(5, 0, 2, right, 2 * right), 2, .5, .5},
      {"at the centre", Make("l 0 0 0 0"), Arc(0, 0, 2, 1, 2), 2, 0, 0}};
  for (const auto& row : rows) {
    const Found found = DistanceOf(*row.a, *row.b), swapped = DistanceOf(*row.b, *row.a);
    EXPECT_NEAR(found.dist, row.dist, 1e-14) << row.name;
    EXPECT_NEAR(found.ta, row.ta, 1e-9) << row.name;
    EXPECT_NEAR(found.tb, row.tb, 1e-9) << row.name;
    EXPECT_NEAR(swapped.dist, row.dist, 1e-14) << row.name;
    EXPECT_EQ(found.error, 0) << row.name;
  }
}

TEST(DistCurve, TiesGoToTheSmallestParameters) {
  const struct {
    const char* name;
    const char *a, *b;
    double dist, ta, tb;
  } rows[] = {
      {"two humps", "b 0 0 0 4 2 -4 2 4 4 -4 4 0", "l -9 9 9 9", -1, -1, -1},
      {"a wave along a line", "B 0 0 1 2 2 0 3 2 4 0 | 0 0 0 1 2 3 3 3", "l 0 3 4 3", 5. / 3,
       2. / 3, 5. / 18},
      {"the same line", "b 0 0 1 1 2 2", "b 0 0 1 1 2 2", 0, 0, 0},
      {"the same curve", "b 0 0 1 3 2 -2 4 0", "b 0 0 1 3 2 -2 4 0", 0, 0, 0},
      {"reversed", "b 0 0 1 3 2 -2 4 0", "b 4 0 2 -2 1 3 0 0", 0, 0, 1},
      {"moved aside", "b 0 0 2 0 4 0", "b 0 2 1 2 4 2", 2, 0, 0},
      {"parallel from the middle on", "b 0 0 1 0 2 0 3 0", "l 1 1 9 1", 1, 1. / 3, 0},
      {"two crossings", "b 0 0 2 4 4 0", "l 4 1 0 1", 0, .146446609406726, .853553390593274},
      {"crossings of splines", "B 0 1 2 -3 4 5 6 -1 | 0 0 0 0 1 1 1 1", "b 0 0 2 0 6 0", 0, -1, -1},
      {"crossings far from the middles",
       "b -6.618576118346013 7.4319315568867488 -3.6079568266493665 4.1104773068992699 "
       ".1549991630000247 3.8358628794647442 3.0132556741969707 -6.7370905375518291",
       "b -6.0558646908070308 8.5772199619281722 6.8813432146630955 -8.764278505004409 "
       "3.38497180355537 -4.9042254154438689 8.2208843154597133 6.6634048912231281",
       0, -1, -1},
      {"a corner beside a line", "l 3 0 0 -2", "B 2 2 1 1 2 2 | 0 0 1 2 2", 7 / std::sqrt(13.0),
       4. / 13, 1},
      {"composite meets at its joints", "c 1 1 (l 0 1 2 0)(l 2 0 4 1)",
       "c 1 1 (l 2 -1 3 -1)(l 3 -1 2 -1)", 1, 1, 0},
      {"circle and its centre", "r 1 0 1 1 1 .7071067811865476 0 1 1", "b 0 0 0 0", 1, 0, 0}};
  for (const auto& row : rows) {
    const Owned a = Make(row.a), b = Make(row.b);
    const Found found = DistanceOf(*a, *b);
    EXPECT_EQ(found.error, 0) << row.name;
    if (row.dist >= 0) {
      EXPECT_NEAR(found.dist, row.dist, 1e-12) << row.name;
    }
    if (row.ta >= 0) {
      EXPECT_NEAR(found.ta, row.ta, 1e-7) << row.name;
      EXPECT_NEAR(found.tb, row.tb, 1e-7) << row.name;
    } else if (found.dist == 0) {  // that of the first crossing
      Globals g;
      CvParam pa{}, pb{};
      ASSERT_EQ(KurvocrCurveCurve(a.get(), b.get(), &pa, &pb, 3, &g), UINT32_C(1)) << row.name;
      EXPECT_NEAR(found.ta, pa.values[0], 1e-9) << row.name;
      EXPECT_NEAR(found.tb, pb.values[0], 1e-9) << row.name;
      KurvocrFreeCvParam(&pa);
      KurvocrFreeCvParam(&pb);
    }
  }
}

// Wherever the intersection finds common points the distance is 0, at the first of them.
TEST(DistCurve, OfCrossingCurvesIsZeroAtTheFirstCrossing) {
  Random random;
  SCOPED_TRACE(random.Trace());
  int crossing = 0;
  for (int round = 0; round < 300; ++round) {
    const Owned a = RandomCurve(random, static_cast<int>(random.Uniform(0, 6)), 0, 0);
    const Owned b = RandomCurve(random, static_cast<int>(random.Uniform(0, 6)), 1, 0);
    Globals g;
    CvParam pa{}, pb{};
    const bool meet = KurvocrCurveCurve(a.get(), b.get(), &pa, &pb, 3, &g) == KURVO_FOUND;
    const Found found = DistanceOf(*a, *b);
    EXPECT_EQ(found.dist == 0, meet) << round;
    if (meet) {
      ++crossing;
      const double first = *std::min_element(pa.values, pa.values + pa.count);
      EXPECT_NEAR(found.ta, first, 1e-6) << round << ' ' << a->type << ' ' << b->type;
    }
    KurvocrFreeCvParam(&pa);
    KurvocrFreeCvParam(&pb);
  }
  EXPECT_GT(crossing, 100);
}

Owned WaveSpline(int count, double shift, double height) {
  Numbers points, knots(4, 0.0);
  for (int i = 0; i < count; ++i)
    points.insert(points.end(), {static_cast<double>(i), shift + height * std::sin(.7 * i)});
  for (int i = 1; i <= count - 4; ++i) knots.push_back(i);
  knots.insert(knots.end(), 4, count - 3);
  return MakeFreeForm(CV_BSPLINE, points, knots);
}

// Curves for which no bound tells one place from another, and numbers at the ends of their range.
TEST(DistCurve, EndsInBoundedTime) {
  const auto seconds = [](const Curve& a, const Curve& b, const char* name) {
    const Stopwatch watch;
    const Found found = DistanceOf(a, b);
    EXPECT_EQ(found.error, 0) << name;
    EXPECT_GE(found.dist, 0) << name;
    EXPECT_LT(watch.Seconds(), 10) << name;  // sanitizers included
    return found;
  };
  const Owned wave = WaveSpline(2000, 0, 1), near = WaveSpline(2000, 1e-3, 1),
              touching = WaveSpline(2000, 1e-7, 1);
  EXPECT_EQ(seconds(*wave, *wave, "one spline").dist, 0);
  EXPECT_EQ(seconds(*wave, *touching, "within the tolerance").dist, 0);
  EXPECT_NEAR(seconds(*wave, *near, "alongside").dist, 1e-3 * std::cos(std::atan(.7)), 2e-4);
  std::string text = "b";
  for (int i = 0; i <= 63; ++i) text += Text({1.0 * i, i % 2 == 0 ? 1.0 : -1.0});
  const Owned high = Make(text);
  seconds(*high, *wave, "high degree");
  EXPECT_EQ(seconds(*high, *high, "high degree twice").dist, 0);
  const Owned ring = Make("r 1 0 1 1 1 .7071067811865476 0 1 1"),
              wider = Make("r 2 0 1 2 2 .7071067811865476 0 2 1");
  const Found rings = seconds(*ring, *wider, "concentric");
  EXPECT_NEAR(rings.dist, 1, 1e-12);
  EXPECT_NEAR(rings.ta, 0, 1e-9);
  const Owned negative = Make("r 0 0 1 1 5 -2 3 -4 3 4 0 1"), zero = Make("r 0 9 1 1 9 0 3 9 1");
  seconds(*negative, *wave, "negative weight");
  seconds(*negative, *zero, "zero weight");
  const Owned cusp = Make("b 0 0 4 4 0 4 4 0"), other = Make("b 0 6 4 3 0 3 4 6");
  seconds(*cusp, *other, "cusps");
}

TEST(DistCurve, ScalesWithItsCurves) {
  const auto text = [](double s) {
    return std::vector<std::string>{"b " + Text({0, 0, s, 3 * s, 2 * s, -2 * s, 4 * s, 0}),
                                    "l " + Text({0, 4 * s, 4 * s, 5 * s})};
  };
  const auto unit = text(1);
  const Found expected = DistanceOf(*Make(unit[0]), *Make(unit[1]));
  for (const int exponent : {-500, 200, 300, 511, 1000}) {
    Owned a = Make(unit[0]), b = Make(unit[1]);
    const double s = std::ldexp(1.0, exponent);
    for (Coord* p : {a.block<KurvoBezier>().points, a.block<KurvoBezier>().points + 1,
                     a.block<KurvoBezier>().points + 2, a.block<KurvoBezier>().points + 3,
                     &b.block<KurvoLine>().start, &b.block<KurvoLine>().end})
      KurvoclSclVector(s, *p, *p);
    const Found found = DistanceOf(*a, *b, std::min(1e-6 * s, 1e-6));
    EXPECT_NEAR(found.dist / s, expected.dist, 1e-12) << exponent;
    EXPECT_NEAR(found.ta, expected.ta, 1e-7) << exponent;
  }
}

}  // namespace
}  // namespace kurvo_test
