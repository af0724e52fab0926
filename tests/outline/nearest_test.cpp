// The nearest place of a chain, against many samples in long double, refined. A long run of it:
// KURVO_TEST_CASES=20000 asks a million questions.
#include <kurvo_outline.h>

#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

// All of a chain, sampled.
class Samples {
 public:
  explicit Samples(const Chain& chain) {
    for (const Curve& curve : chain)
      for (const Oracle::Part& part : Oracle(curve).Parts()) {
        parts_.push_back(part);
        for (int i = 0; i <= kCount; ++i) points_.push_back(At(part, Wide(i) / kCount));
      }
  }

  // No more than the distance of some point of the chain, and near to the least of all.
  Wide Least(LongPoint q) const {
    Wide least = kInfinity;
    for (std::size_t k = 0; k < parts_.size(); ++k) {
      const LongPoint* at = &points_[k * (kCount + 1)];
      for (int i = 0; i <= kCount; ++i) {
        const Wide here = Gap(at[i], q);
        least = std::min(least, here);
        const Wide step = Gap(at[std::max(i - 1, 0)], at[std::min(i + 1, kCount)]);
        if (here > least + step || (i > 0 && Gap(at[i - 1], q) < here) ||
            (i < kCount && Gap(at[i + 1], q) < here))
          continue;
        least = std::min(least, Refined(parts_[k], q, Wide(std::max(i - 1, 0)) / kCount,
                                        Wide(std::min(i + 1, kCount)) / kCount));
      }
    }
    return least;
  }

 private:
  static constexpr int kCount = 96;

  static LongPoint At(const Oracle::Part& part, Wide s) {
    if (part.points.empty()) {
      const Wide angle = part.angle + s * part.sweep;
      return {part.cx + part.r * std::cos(angle), part.cy + part.r * std::sin(angle)};
    }
    std::vector<WidePoint> d = part.points;
    for (std::size_t n = d.size() - 1; n > 0; --n)
      for (std::size_t i = 0; i < n; ++i) d[i] = Between(d[i], d[i + 1], s);
    return {d[0].x / d[0].w, d[0].y / d[0].w};
  }

  // Thirds.
  static Wide Refined(const Oracle::Part& part, LongPoint q, Wide low, Wide high) {
    for (int i = 0; i < 50; ++i) {
      const Wide a = (2 * low + high) / 3, b = (low + 2 * high) / 3;
      const bool is_low = Gap(At(part, a), q) < Gap(At(part, b), q);
      (is_low ? high : low) = is_low ? b : a;
    }
    return Gap(At(part, low), q);
  }

  std::vector<Oracle::Part> parts_;
  std::vector<LongPoint> points_;
};

// Moves, and scales first.
void Put(const Chain& chain, double scale, double dx, double dy) {
  for (const Curve& curve : chain)
    ForEachPoint(
        curve,
        [=](double* p) {
          p[0] = scale * p[0] + dx;
          p[1] = scale * p[1] + dy;
        },
        [=](double& radius) { radius *= scale; });
}

// A place is what it says, and no sample is nearer. `size` is that of the chain, `slack` what its
// coordinates are rounded by.
void Check(const Chain& chain, const Samples& samples, const double* q, const KurvoPlace& place,
           double distance, double size, double slack) {
  ASSERT_TRUE(place.index >= 0 && place.index < chain.count());
  EXPECT_EQ(place.reserved, 0);
  const Oracle oracle(chain[place.index]);
  const LongPoint point = {place.point[0], place.point[1]}, to = {q[0], q[1]};
  EXPECT_LE(Distance(oracle.PointAt(place.t, Side::kBehind), point), 1e-12 * size + slack);
  EXPECT_LE(std::fabs(Gap(point, to) - distance), 1e-14L * distance + 1e-15L * size + slack);
  EXPECT_LE(distance - samples.Least(to), 1e-13L * distance + 1e-14L * size + slack)
      << Text("q", {q[0], q[1], place.t, distance});
  const bool is_point = Distance(oracle.PointAt(oracle.start()), oracle.PointAt(oracle.end())) <=
                        1e-15 * size + slack;
  const double length = std::hypot(place.tangent[0], place.tangent[1]);
  EXPECT_TRUE(1e-12 >= std::fabs(length - 1) || (is_point && length == 0)) << length;
}

TEST(ChainNearest, NoSampleIsNearer) {
  constexpr int kQuestions = 50;
  Rounds(Cases(60), [](Random& random, int round) {
    std::vector<Owned> curves;
    XY at = RandomPlace(random);
    for (int left = RandomInt(random, 1, 4); left > 0; --left) {
      const XY next = Chance(random, .1) ? at : RandomPlace(random);
      curves.push_back(RandomBetween(random, at, next));
      at = next;
    }
    const Chain chain(std::move(curves));
    constexpr double kScales[] = {1, 1, 1e-9, 1e-3, 1e8};
    const double scale = kScales[round % 5], far = round % 7 == 0 ? 1e6 * scale : 0;
    Put(chain, scale, far, -far);
    const Samples samples(chain);

    Globals g;
    std::vector<Point> points;
    for (int i = 0; i < kQuestions; ++i) {
      constexpr double kReach[] = {.1, 1, 3, 1e4};
      Point q = PointAt(chain[RandomInt(random, 0, chain.count() - 1)], random.Uniform(0, 1));
      const double reach = i % 10 == 9 ? 0 : kReach[i % 4] * kSize * scale;
      for (std::size_t c = 0; c < 2; ++c) q[c] += random.Uniform(-reach, reach);
      points.push_back(q);
    }
    KurvoPlace places[kQuestions], alone;
    double distances[kQuestions], distance;
    ASSERT_EQ(KurvoChainNearest(chain.get(), points[0], kQuestions, places, distances, &g), 1);
    const double size = 2 * kSize * scale, slack = 4 * kUlp * far;
    for (std::size_t i = 0; i < kQuestions && !testing::Test::HasFailure(); ++i) {
      Check(chain, samples, points[i], places[i], distances[i], size, slack);
      if (i % 8) continue;
      ASSERT_EQ(KurvoChainNearest(chain.get(), points[i], 1, &alone, &distance, &g), 1);
      EXPECT_NEAR(distance, distances[i], 1e-15 * (size + distance) + slack);
      EXPECT_EQ(alone.index, places[i].index);
      EXPECT_NEAR(alone.t, places[i].t, 1e-7);
    }
  });
}

// Cusps, folds, handles of no length, points for curves, weights of both signs, circles.
TEST(ChainNearest, OddCurves) {
  // clang-format off
  const char* const chains[] = {
      "(b 0 0 1 1 0 1 1 0)",                              // a cusp
      "(b 0 0 3 0 -2 0 1 0)",                             // folded line
      "(b 0 0 0 0 0 0 1 2)", "(b 0 0 0 0 2 1 2 1)",
      "(b 0 0 1 2 2 0 0 0)",                              // a loop
      "(b 0 0 4 4 4 -4 0 0 -4 4 -4 -4 0 0)",
      "(b 1 1)", "(b 0 0 0 0 0 0)(l 0 0 0 0)(l 0 0 1 0)",
      "(r 0 0 1 1 2 -.3 2 0 1)", "(r 0 0 -1 1 2 -2 2 0 -1)", "(r 0 0 2 1 1 .1 0 2 5 3 0 1)",
      "(r 0 0 1 1 1 0 2 0 1)",
      "(r 1 0 1 1 1 .7071067811865476 0 1 1)(r 0 1 1 -1 1 .7071067811865476 -1 0 1)",
      "(a 0 0 1 1 6.283)", "(a 0 0 1 1 -3)(l -.4161468365471424 -.9092974268256817 0 0)",
      "(c .25 .75 (c .5 .5 (a 0 0 1 0 1)(l .5403023058681398 .8414709848078965 0 1)) (b 0 1 1 3 2 0))",
      "(B 0 0 1 3 2 -3 3 0 4 5 | -3 -1 0 2 3 3.5 5 8 9)", // ends within the polygon
      "(b 0 0 1 0 2 0 3 0 4 0 5 0 6 0 7 0 8 0 9 1e-7 10 0 11 0 12 0 13 0 14 0 15 0 16 0)",
  };
  // clang-format on
  Random random;
  for (const char* text : chains) {
    SCOPED_TRACE(text);
    const Chain chain(text);
    const Samples samples(chain);
    Globals g;
    for (int i = 0; i < Cases(60) && !testing::Test::HasFailure(); ++i) {
      Point q = random.Planar(i % 3 ? 2 : 20);
      if (i % 5 == 0) q = {std::round(q[0]), std::round(q[1]), 0};
      if (i % 7 == 0) q = PointAt(chain[0], random.Uniform(0, 1));
      KurvoPlace place;
      double distance;
      ASSERT_EQ(KurvoChainNearest(chain.get(), q, 1, &place, &distance, &g), 1);
      Check(chain, samples, q, place, distance, i % 3 ? 4 : 40, 0);
    }
  }
}

TEST(ChainNearest, FirstOfTiesAndLaterAtJoints) {
  struct Row {
    const char* chain;
    double x, y;
    int index;
    double t, tangent_x;
  };
  // clang-format off
  const Row rows[] = {
      {"(l 0 0 2 0)(l 2 0 2 2)(l 2 2 0 2)(l 0 2 0 0)",                     1,   1,   0, .5,  1},
      {"(l 0 0 2 0)(l 2 0 2 2)(l 2 2 0 2)(l 0 2 0 0)",                     3,   3,   2, 0,  -1},
      {"(l 0 0 2 0)(l 2 0 2 2)(l 2 2 0 2)(l 0 2 0 0)",                    -3,  -3,   0, 0,   1},
      {"(l 0 0 2 0)(l 2 0 0 0)",                                           1,   5,   0, .5,  1},
      {"(l 0 0 2 0)(l 2 0 0 0)",                                           4,   0,   1, 0,  -1},
      {"(l 0 0 2 0)(l 2 0 2 0)(b 2 0)(l 2 0 0 0)",                         4,   0,   3, 0,  -1},
      {"(l 0 0 2 0)(l 2 0 4 2)(l 4 2 4 -2)(l 4 -2 2 0)",                   2,   0,   1, 0,  .7071067811865476},
      {"(a 0 0 1 0 3.141592653589793)(a 0 0 1 3.141592653589793 3.141592653589793)", 0, 0, 0, 0, 0},
      {"(r 1 0 1 1 1 .7071067811865476 0 1 1)",                            0,   0,   0, 0,   0},
      {"(b -1 0 -1 2 1 2 1 0)",                                            0,   0,   0, 0,   0},
      {"(b -1 1 -1 -1 1 -1 1 1)",                                          0,   9,   0, 0,   0},
      {"(B 0 0 1 0 2 0 2 1 2 2 | 2 2 2 3 3 5 5 5)",                        3,  -1,   0, 3,   0},
      {"(c .5 1.5 (l 0 0 1 0)(l 1 0 1 1))(l 1 1 2 1)",                     2,  -1,   0, .5,  0},
      {"(c .5 1.5 (l 0 0 1 0)(l 1 0 1 1))(l 1 1 2 1)",                     .5,  2,   1, 0,   1},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(row.chain);
    Globals g;
    const Chain chain(row.chain);
    const double points[] = {row.x, row.y, 7, row.x, row.y, 0};
    KurvoPlace places[3];
    ASSERT_EQ(KurvoChainNearest(chain.get(), points, 2, places, nullptr, &g), 1);
    ASSERT_EQ(KurvoChainNearest(chain.get(), points, 1, places + 2, nullptr, &g), 1);
    for (const KurvoPlace& place : places) {
      EXPECT_EQ(place.index, row.index);
      EXPECT_NEAR(place.t, row.t, 1e-9);
      EXPECT_NEAR(place.tangent[0], row.tangent_x, 1e-9);
      EXPECT_EQ(place.point[2], 0);
    }
  }
}

// From so far away that squares overflow, of sizes at the ends of all doubles, and of nothing.
TEST(ChainNearest, ExtremesAndRefusals) {
  struct Row {
    const char* chain;
    double x;
    int n, code;
    double distance;
  };
  // clang-format off
  const Row rows[] = {
      {"(l 0 0 1 0)(l 1 0 1 1)",             1e200,  1,  KURVO_ERR_NONE,       1e200},
      {"(l 0 0 1e-300 0)(b 1e-300 0 1e-300 1e-300 2e-300 0)", 1, 1, KURVO_ERR_NONE, 1},
      {"(l 0 0 1e-300 0)",                   3e-300, 1,  KURVO_ERR_NONE,       2e-300},
      {"(l 0 0 1e300 0)(b 1e300 0 2e300 0)", 5e300,  1,  KURVO_ERR_NONE,       3e300},
      {"(b 2 0)",                            5,      1,  KURVO_ERR_NONE,       3},
      {"",                                   5,      1,  KURVO_ERR_NONE,       0},
      {"(c)",                                5,      1,  KURVO_ERR_NONE,       0},
      {"(l 0 0 1 0)",                        5,      0,  KURVO_ERR_NONE,       -1},
      {"(l 0 0 1 0)",                        5,      -1, KURVO_ERR_OPTION,     -1},
      {"(l 0 0 1 0)",                        kNaN,   1,  KURVO_ERR_NOT_FINITE, -1},
      {"(b 0 0 1 1e308 0 0)",                 1,      1,  KURVO_ERR_NOT_FINITE, -1},
      {"(b 0 0 1 0)(b 1 2e-6 0 0)",          1,      1,  KURVO_ERR_CHAIN_ENDS, -1},
      {"(b 0 0 1 0)(b 1 9e-7 0 0)",          2,      1,  KURVO_ERR_NONE,       1},
      {"(r 0 0 1 1 1 -3 2 0 1)",             1,      1,  KURVO_ERR_WEIGHT,     -1},
      {"(l 0 0 1 0)(e)",                     1,      1,  KURVO_ERR_CURVE,      -1},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(row.chain);
    const Chain chain(row.chain);
    for (const int n : {row.n, 2 * row.n}) {
      Globals g;
      const double points[] = {row.x, 0, 0, row.x, 0, 0};
      double distances[] = {-1, -1};
      EXPECT_EQ(KurvoChainNearest(chain.get(), points, n, nullptr, distances, &g), !row.code);
      EXPECT_EQ(KurvoErrGet(&g), row.code);
      EXPECT_NEAR(distances[0], row.distance, 1e-14 * std::fabs(row.distance));
    }
  }
  const Chain chain("(b 0 0 1 0)(b 1 0 2 2 3 0)");
  static_cast<KurvoBezier*>(chain[1].data)->points[1][0] = kNaN;
  for (const int n : {1, 2}) {
    Globals g;
    const double points[6] = {};
    EXPECT_EQ(KurvoChainNearest(chain.get(), points, n, nullptr, nullptr, &g), 0);
    EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_NOT_FINITE);
  }
}

}  // namespace
}  // namespace kurvo_test
