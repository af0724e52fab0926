// Area and moments of chains against closed forms and long double.
#include <kurvo_outline.h>

#include "outline/wide.h"
#include "support/generator.h"

namespace kurvo_test {
namespace {

KurvoMoments MomentsOf(const Chain& chain, double epsilon = 1e-6) {
  Globals g(epsilon);
  KurvoMoments moments = {};
  EXPECT_EQ(KurvoChainMoments(chain.get(), &moments, &g), 1) << KurvoErrGet(&g);
  return moments;
}

TEST(ChainMoments, ClosedForms) {
  struct Row {
    const char* chain;
    double area, x, y, xx, xy, yy;
  };
  constexpr double kPi = 3.14159265358979324;
  // clang-format off
  const Row rows[] = {
      {"",                                                     0,        0,   0,   0, 0, 0},
      {"(l 2 3 2 3)",                                          0,        2,   3,   0, 0, 0},
      {"(l 2 3 4 7)",                                          0,        3,   5,   0, 0, 0},
      {"(l 0 0 4 0)(l 4 0 4 4)(l 4 4 4 0)",                    0,        10./3, 4./3, 0, 0, 0},
      {"(b 0 0 1 0 1 0 0 0)",                                  0,        .375, 0,   0, 0, 0},
      {"(a 1 1 2 0 3.1415926535897931)(a 1 1 2 3.1415926535897931 -3.1415926535897931)",
                                                               0,        1,   1 + 4 / kPi, 0, 0, 0},
      {"(l 0 0 2 0)(l 2 0 2 1)(l 2 1 0 1)(l 0 1 0 0)",         2,        1,   .5,  2./3, 0, 1./6},
      {"(l 0 0 0 1)(l 0 1 2 1)(l 2 1 2 0)",                    -2,       1,   .5,  -2./3, 0, -1./6},
      {"(l 0 0 1 0)(l 1 0 0 1)",                               .5,       1./3, 1./3, 1./36, -1./72, 1./36},
      {"(a 1 2 3 0 3)(a 1 2 3 3 3.2831853071795865)",          9 * kPi,  1,   2,   81 * kPi / 4, 0, 81 * kPi / 4},
      {"(a 0 0 1 0 3.1415926535897931)",                       kPi / 2,  0,   4 / (3 * kPi), kPi / 8, 0, kPi / 8 - 8 / (9 * kPi)},
      {"(b -1 1 0 -1 1 1)",                                    4./3,     0,   .6,  4./15, 0, .0914285714285714286},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(row.chain);
    const KurvoMoments got = MomentsOf(Chain(row.chain));
    const double size = 1e-14 * (1 + std::fabs(row.area) * 10);
    EXPECT_NEAR(got.area, row.area, size);
    EXPECT_NEAR(got.centroid[0], row.x, 4e-15);
    EXPECT_NEAR(got.centroid[1], row.y, 4e-15);
    EXPECT_NEAR(got.xx, row.xx, size);
    EXPECT_NEAR(got.xy, row.xy, size);
    EXPECT_NEAR(got.yy, row.yy, size);
    double length = kNaN;
    Globals g;
    KurvoChainLength(Chain(row.chain).get(), &length, &g);
    EXPECT_EQ(got.length, length);
  }
}

// Every loop counts as it winds; together, not each about its own centroid.
TEST(RegionMoments, SumsOfLoops) {
  struct Row {
    std::vector<const char*> loops;
    double length, area, x, y, xx, xy, yy;
    int code = 0;
  };
  const char* const square = "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0)";
  const char* const hole = "(l 1 1 1 2)(l 1 2 2 2)(l 2 2 2 1)(l 2 1 1 1)";
  const char* const back = "(l 0 0 0 4)(l 0 4 4 4)(l 4 4 4 0)(l 4 0 0 0)";
  // Second moments of squares of side s about (x, y): s^2 (s^2 / 12 + distance^2).
  const double c = (32 - 1.5) / 15,
               xx = 16 * (16. / 12 + (2 - c) * (2 - c)) - (1. / 12 + (1.5 - c) * (1.5 - c));
  const double xy = 16 * (2 - c) * (2 - c) - (1.5 - c) * (1.5 - c);
  const Row rows[] = {
      {{square, hole}, 20, 15, c, c, xx, xy, xx},
      {{hole, "", square}, 20, 15, c, c, xx, xy, xx},
      {{square, square}, 32, 32, 2, 2, 128. / 3, 0, 128. / 3},
      {{square, back}, 32, 0, 2, 2, 0, 0, 0},
      {{}, 0, 0, 0, 0, 0, 0, 0},
      {{"(l 3 4 3 4)"}, 0, 0, 3, 4, 0, 0, 0},
      {{square, "(l 1 1 2 2)"}, 0, 0, 0, 0, 0, 0, 0, KURVO_ERR_CHAIN_ENDS},
  };
  for (const Row& row : rows) {
    std::vector<Chain> chains;
    std::vector<Cvseq> loops;
    for (const char* text : row.loops) chains.emplace_back(text);
    for (const Chain& chain : chains) loops.push_back(*chain);
    const KurvoRegion region = {static_cast<int>(loops.size()), KURVO_FILL_POSITIVE, loops.data(),
                                nullptr};
    Globals g;
    KurvoMoments got;
    EXPECT_EQ(KurvoRegionMoments(&region, &got, &g), !row.code);
    EXPECT_EQ(KurvoErrGet(&g), row.code);
    const double want[] = {row.length, row.area, row.x, row.y, row.xx, row.xy, row.yy};
    const double is[] = {got.length, got.area, got.centroid[0], got.centroid[1],
                         got.xx,     got.xy,   got.yy};
    for (int k = 0; k < 7; ++k) EXPECT_NEAR(is[k], want[k], 2e-13) << k;
  }
}

// A thin lens of two arcs: nothing cancels. The area of a segment is r^2 (s - sin s) / 2.
TEST(ChainMoments, TinySweeps) {
  for (const double sweep : {1e-3, .1, .99, 1.01, 2.}) {
    const KurvoMoments got = MomentsOf(Chain(Text("(a 0 0 1", {-sweep / 2, sweep}) + ')'));
    const Wide s = sweep, h = s / 2, area = (s - std::sin(s)) / 2;
    const Wide centroid = 2 * std::pow(std::sin(h), 3.L) / 3 / area;
    EXPECT_NEAR(static_cast<double>(got.area / area), 1, 1e-13 / sweep / sweep);
    EXPECT_NEAR(got.centroid[0], static_cast<double>(centroid), 1e-13 / sweep);
    EXPECT_NEAR(got.centroid[1], 0, 1e-13);
  }
}

// Every kind, closed by its chord, in long double about the centroid.
TEST(ChainMoments, LongDouble) {
  Rounds(Cases(150), [](Random& random, int round) {
    const int degree = round % 20 == 0 ? 63 : round % 4 == 0 ? RandomInt(random, 6, 30) : 5;
    Owned cv = RandomCurve(random, kAllTypes[RandomInt(random, 0, 5)], degree);
    const Oracle oracle(*cv);
    const LongPoint start = oracle.PointAt(oracle.start());
    LongPoint last = start;
    Wide sums[6] = {}, scale = 0;
    const auto add = [&](const auto& at, int least) {  // of a stretch over [0, 1]
      for (std::size_t k = 0; k < 6; ++k)
        sums[k] += WideIntegral(
            [&](Wide s) {
              const WideAt p = at(s);
              const Wide cross = p.x * p.dy - p.y * p.dx;
              const Wide f[] = {cross / 2,
                                cross * p.x / 3,
                                cross * p.y / 3,
                                cross * p.x * p.x / 4,
                                cross * p.x * p.y / 4,
                                cross * p.y * p.y / 4};
              return f[k];
            },
            0, 1, least, 4);
      scale += WideIntegral(
          [&](Wide s) {
            const WideAt p = at(s);
            return (std::hypot(p.x, p.y) + 1) * std::hypot(p.dx, p.dy);
          },
          0, 1, 2, 2);
    };
    const auto line = [&](LongPoint to) {
      const LongPoint from = last;
      if (1e-15L >= Gap(from, to)) return;
      add(
          [from, to](Wide s) {
            return WideAt{from.x + s * (to.x - from.x), from.y + s * (to.y - from.y), to.x - from.x,
                          to.y - from.y};
          },
          0);
    };
    for (const Oracle::Part& part : oracle.Parts()) {
      const auto at = [&](Wide s) { return AtPart(part, s, start); };
      last = {last.x - start.x, last.y - start.y};
      line({at(0).x, at(0).y});
      add(at, 2);
      last = {at(1).x + start.x, at(1).y + start.y};
    }
    last = {last.x - start.x, last.y - start.y};
    line({0, 0});
    const Wide x = sums[1] / sums[0], y = sums[2] / sums[0];
    std::vector<Owned> curves;
    curves.push_back(std::move(cv));
    const KurvoMoments got = MomentsOf(Chain(std::move(curves)), 1e9);
    const double bound = static_cast<double>(scale) * 1e-14, size = 2 * kSize;
    EXPECT_NEAR(got.area, static_cast<double>(sums[0]), bound);
    if (std::fabs(got.area) < 1e-3) return;  // nearly a line: its centroid is anywhere
    const double share = bound * size / std::fabs(got.area);
    EXPECT_NEAR(got.centroid[0], static_cast<double>(start.x + x), share);
    EXPECT_NEAR(got.centroid[1], static_cast<double>(start.y + y), share);
    EXPECT_NEAR(got.xx, static_cast<double>(sums[3] - x * x * sums[0]), share * size);
    EXPECT_NEAR(got.xy, static_cast<double>(sums[4] - x * y * sums[0]), share * size);
    EXPECT_NEAR(got.yy, static_cast<double>(sums[5] - y * y * sums[0]), share * size);
  });
}

}  // namespace
}  // namespace kurvo_test
