// The distance between curves, against closed forms and dense sampling in long double.
#include "relate/brute_force.h"
#include "support/generator.h"

namespace kurvo_test {
namespace {

struct Found {
  double dist, ta = -77, tb = -77;
  int error;
};

Found DistanceOf(const Owned& a, const Owned& b, double eps = 1e-6) {
  Globals g(eps);
  Found found{};
  found.ta = found.tb = -77;
  found.dist = KurvocvDistCurve(a.get(), b.get(), &found.ta, &found.tb, &g);
  found.error = KurvoErrGet(&g);
  return found;
}

// The points are as far apart as is said, and no other ones are nearer. It is 0 where the
// intersection finds common points, at the first of them.
void ExpectRight(const Owned& a, const Owned& b) {
  const WideCurve wide_a = Pieces(*a), wide_b = Pieces(*b);
  const Found found = DistanceOf(a, b);
  ASSERT_EQ(found.error, 0);
  EXPECT_NEAR(static_cast<double>(GapAt(wide_a, wide_b, found.ta, found.tb)), found.dist,
              found.dist == 0 ? 1e-6 : 1e-12);
  EXPECT_LE(found.dist, static_cast<double>(LeastDistance(wide_a, wide_b)) + 1e-6);
  EXPECT_NEAR(found.dist, DistanceOf(b, a).dist, 1e-6);
  if (a->type == CV_SEGCV || b->type == CV_SEGCV) return;  // their lines and arcs meet nothing
  Globals g;
  const Answer met = Intersect(*a, *b, 3, g);
  EXPECT_EQ(found.dist == 0, met.result == KURVO_FOUND);
  const auto first = std::min_element(met.hits.begin(), met.hits.end(),
                                      [](const Hit& p, const Hit& q) { return p.a < q.a; });
  EXPECT_TRUE(met.hits.empty() || 1e-6 >= std::fabs(found.ta - first->a)) << found.ta;
}

TEST(DistCurve, IsThatOfDenseSampling) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (const int32_t type_a : kAllTypes)
    for (const int32_t type_b : kAllTypes)
      for (const double apart : {0., 0., .8, 2.5, 6.}) {
        const Owned a = RandomCurve(random, type_a, 6, 2, 1),
                    b = RandomCurve(random, type_b, 6, 2, 1);
        Apply({0, 0, 0, .2}, *a);
        Apply({0, apart, random.Uniform(-2, 2), .2}, *b);
        SCOPED_TRACE(testing::Message() << type_a << " to " << type_b << " at " << apart);
        ExpectRight(a, b);
      }
  for (int i = 0; i < 8; ++i) {  // more pieces than stay in one list
    std::vector<Owned> pieces;
    for (int j = 0; j < 9; ++j) pieces.push_back(RandomCurve(random, kAllTypes[j % 6], 4, 1, 1));
    const Owned a = MakeComposite(Numbers(9, .5), std::move(pieces));
    const Owned b = RandomCurve(random, kAllTypes[i % 7], 6, 2, 1);
    Apply({0, 0, 0, .2}, *a);
    Apply({0, random.Uniform(1, 6), random.Uniform(-4, 4), .1}, *b);
    ExpectRight(a, b);
  }
  constexpr const char* kPairs[][2] = {
      // clang-format off
      {"b 0 0 0 4 2 -4 2 4 4 -4 4 0", "l -9 9 9 9"},
      {"B 0 1 2 -3 4 5 6 -1 | 0 0 0 0 1 1 1 1", "b 0 0 2 0 6 0"},
      {"b 7.549 -.052 3.292 -.072 -8.159 .123", "b -9 .177 -2.553 .134 -.257 -.037"},  // narrow ones that cross
      {"b -.086 9 .107 4.326 .121 -5.324", "b .022 -8.196 -.01 1.298 .024 6.292"},
      {"b .178 -.013 -9 -.027 5.258 .102", "b -5.239 .289 2.365 .578 3.83 -.077"},
      {"b .002 5.532 .21 5.779 -.027 3.989", "b .073 5.294 .223 3.751 .083 9"},
      {"b -6.618576118346013 7.4319315568867488 -3.6079568266493665 4.1104773068992699 .1549991630000247 3.8358628794647442 3.0132556741969707 -6.7370905375518291", "b -6.0558646908070308 8.5772199619281722 6.8813432146630955 -8.764278505004409 3.38497180355537 -4.9042254154438689 8.2208843154597133 6.6634048912231281"},
      // clang-format on
  };
  for (const auto& [a, b] : kPairs) ExpectRight(Make(a), Make(b));
}

TEST(DistCurve, OfLinesAndArcsIsExact) {
  const double r2 = std::sqrt(2.0), right = 1.57079632679489661923, oblique = std::atan2(4, 3);
  const struct {
    const char* name;
    Owned a, b;
    double dist, ta, tb;
  } rows[] = {
      // clang-format off
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
      {"line through an arc", Make("l -3 0 3 0"), Arc(0, 0, 2, 0 - right, 2 * right), 0, 5. / 6, .5},
      {"line below an arc", Make("l -4 -3 4 -3"), Arc(0, 0, 2, 0, 2 * right), 3, .25, 1},
      // off the middle of the arc, where its quarters join
      {"oblique line", Make("l 5.8 -.6 -2.2 5.4"), Arc(0, 0, 2, oblique - .6 * right, 2 * right), 1, .5, .3},
      {"oblique line, backwards", Make("l -2.2 5.4 5.8 -.6"), Arc(0, 0, 2, oblique - .6 * right, 2 * right), 1, .5, .3},
      {"line touching", Make("l -4 2 4 2"), Arc(0, 0, 2, 0, 2 * right), 0, .5, .5},
      {"arcs apart", Arc(0, 0, 1, -right, 2 * right), Arc(5, 0, 2, right, 2 * right), 2, .5, .5},
      {"arcs turned away", Arc(0, 0, 1, right, 2 * right), Arc(5, 0, 2, -right, 2 * right), std::sqrt(26.0), 0, 1},
      {"arcs inside", Arc(0, 0, 4, -right, 2 * right), Arc(1, 0, 2, -right, 2 * right), 1, .5, .5},
      {"concentric", Arc(0, 0, 4, 0, 2 * right), Arc(0, 0, 3, right, 2 * right), 1, .5, 0},
      {"concentric apart", Arc(0, 0, 4, 0, right), Arc(0, 0, 3, 2 * right, right), 5, 0, 1},
      {"same circle", Arc(0, 0, 4, 0, 2 * right), Arc(0, 0, 4, right, 2 * right), 0, .5, 0},
      {"crossing arcs", Arc(0, 0, r2, 0, 2 * right), Arc(2, 0, r2, right, right), 0, .25, .5},
      {"crossing, of two radii", Arc(0, 0, 2, 0, 2 * right), Arc(2.5, 0, 1.5, right, 2 * right), 0, std::atan2(3, 4) / (2 * right), std::atan2(3, 4) / (2 * right)},
      {"touching arcs", Arc(0, 0, 1, -right, 2 * right), Arc(3, 0, 2, right, 2 * right), 0, .5, .5},
      {"clockwise", Arc(0, 0, 1, right, -2 * right), Arc(5, 0, 2, right, 2 * right), 2, .5, .5},
      {"at the centre", Make("l 0 0 0 0"), Arc(0, 0, 2, 1, 2), 2, 0, 0},
      // clang-format on
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Found found = DistanceOf(row.a, row.b);
    EXPECT_NEAR(found.dist, row.dist, 1e-14);
    EXPECT_NEAR(found.ta, row.ta, 1e-9);
    EXPECT_NEAR(found.tb, row.tb, 1e-9);
    EXPECT_NEAR(DistanceOf(row.b, row.a).dist, row.dist, 1e-14);
    EXPECT_EQ(found.error, 0);
  }
}

TEST(DistCurve, TiesGoToTheSmallestParameters) {
  const struct {
    const char *name, *a, *b;
    double dist, ta, tb;
  } rows[] = {
      // clang-format off
      {"a wave along a line", "B 0 0 1 2 2 0 3 2 4 0 | 0 0 0 1 2 3 3 3", "l 0 3 4 3", 5. / 3, 2. / 3, 5. / 18},
      {"the same line", "b 0 0 1 1 2 2", "b 0 0 1 1 2 2", 0, 0, 0},
      {"the same curve", "b 0 0 1 3 2 -2 4 0", "b 0 0 1 3 2 -2 4 0", 0, 0, 0},
      {"reversed", "b 0 0 1 3 2 -2 4 0", "b 4 0 2 -2 1 3 0 0", 0, 0, 1},
      {"moved aside", "b 0 0 2 0 4 0", "b 0 2 1 2 4 2", 2, 0, 0},
      {"parallel from the middle on", "b 0 0 1 0 2 0 3 0", "l 1 1 9 1", 1, 1. / 3, 0},
      {"two crossings", "b 0 0 2 4 4 0", "l 4 1 0 1", 0, .146446609406726, .853553390593274},
      {"a corner beside a line", "l 3 0 0 -2", "B 2 2 1 1 2 2 | 0 0 1 2 2", 7 / std::sqrt(13.0), 4. / 13, 1},
      {"composite meets at its joints", "c 1 1 (l 0 1 2 0)(l 2 0 4 1)", "c 1 1 (l 2 -1 3 -1)(l 3 -1 2 -1)", 1, 1, 0},
      {"circle and its centre", "r 1 0 1 1 1 .7071067811865476 0 1 1", "b 0 0 0 0", 1, 0, 0},
      // clang-format on
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Found found = DistanceOf(Make(row.a), Make(row.b));
    EXPECT_EQ(found.error, 0);
    EXPECT_NEAR(found.dist, row.dist, 1e-12);
    EXPECT_NEAR(found.ta, row.ta, 1e-7);
    EXPECT_NEAR(found.tb, row.tb, 1e-7);
  }
}

// Curves for which no bound tells one place from another.
TEST(DistCurve, EndsInBoundedTime) {
  const auto wave = [](double shift) {
    Numbers points, knots(4, 0.0);
    for (int i = 0; i < 2000; ++i)
      points.insert(points.end(), {static_cast<double>(i), shift + std::sin(.7 * i)});
    for (int i = 1; i <= 1996; ++i) knots.push_back(i);
    knots.insert(knots.end(), 4, 1997);
    return Text(Text("B", points) + " |", knots);
  };
  std::string high = "b";
  for (int i = 0; i <= 63; ++i) high += Text("", {1.0 * i, i % 2 == 0 ? 1.0 : -1.0});
  const std::string waves = wave(0);
  const struct {
    const char* name;
    std::string a, b;
    double dist, bound = 0;
  } rows[] = {
      // clang-format off
      {"one spline", waves, waves, 0},
      {"within the tolerance", waves, wave(1e-7), 0},
      {"alongside", waves, wave(1e-3), 1e-3 * std::cos(std::atan(.7)), 2e-4},
      {"high degree twice", high, high, 0},
      {"concentric", "r 1 0 1 1 1 .7071067811865476 0 1 1", "r 2 0 1 2 2 .7071067811865476 0 2 1", 1, 1e-12},
      // clang-format on
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Owned a = Make(row.a), b = Make(row.b);
    const Stopwatch watch;
    const Found found = DistanceOf(a, b);
    EXPECT_LT(watch.Seconds(), 10);  // sanitizers included
    EXPECT_EQ(found.error, 0);
    EXPECT_NEAR(found.dist, row.dist, row.bound);
  }
}

}  // namespace
}  // namespace kurvo_test
