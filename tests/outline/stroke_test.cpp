// Strokes, against areas in closed form, distances of points, and for polylines the union of
// rectangles, wedges and caps. A long run: KURVO_TEST_CASES=2000.
#include <kurvo_outline.h>

#include <algorithm>
#include <numbers>

#include "outline/pen_model.h"
#include "outline/wide.h"
#include "support/generator.h"
#include "support/region.h"

namespace kurvo_test {
namespace {

constexpr double kPi = std::numbers::pi;

struct Stroke {
  Region region;
  KurvoReport report;
  int code;
};

KurvoOptions Options(int join, int cap, double limit = 0, double tol = 0) {
  KurvoOptions options = OptionsOf(tol);
  options.join = join;
  options.cap = cap;
  options.miter_limit = limit;
  return options;
}

Stroke StrokeOf(const Chain& chain, double left, double right, const KurvoOptions& options) {
  Stroke stroke;
  Globals g;
  KurvoChainStroke(chain.get(), 1, left, right, &options, stroke.region.get(), &stroke.report, &g);
  stroke.code = KurvoErrGet(&g);
  return stroke;
}

TEST(ChainStroke, AreasInClosedForm) {
  struct Row {
    const char* chain;
    double left, right;
    int join, cap;
    std::vector<double> dashes;
    double phase;
    int loops;
    double area;
  };
  constexpr int kRound = KURVO_JOIN_ROUND, kMiter = KURVO_JOIN_MITER, kBevel = KURVO_JOIN_BEVEL;
  constexpr int kButt = KURVO_CAP_BUTT, kDisc = KURVO_CAP_ROUND, kBox = KURVO_CAP_SQUARE;
  const char *line = "(l 0 0 10 0)", *corner = "(l 0 0 4 0)(l 4 0 4 4)", *point = "(l 1 1 1 1)";
  const char* square = "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0)";
  const char *hairpin = "(l 0 0 4 0)(l 4 0 0 0)", *circle = "(a 0 0 2 0 6.283185307179586)";
  // clang-format off
  const Row rows[] = {
      {line, 1, 1, kRound, kButt, {}, 0, 1, 20},
      {line, 1, 1, kRound, kDisc, {}, 0, 1, 20 + kPi},
      {"(b 3 1 3 1 9 9)", 1, 1, kRound, kButt, {}, 0, 1, 20},  // stands still at its start
      {line, 1, 1, kRound, kBox, {}, 0, 1, 24},
      {line, 0, 1, kRound, kButt, {}, 0, 1, 10},
      {line, 2, 0, kRound, kDisc, {}, 0, 1, 20 + kPi},
      {line, 2, 1, kRound, kBox, {}, 0, 1, 30 + 9},
      {line, 0, 0, kRound, kBox, {}, 0, 0, 0},
      {corner, 1, 1, kRound, kButt, {}, 0, 1, 16 - 1 + kPi / 4},
      {corner, 1, 1, kMiter, kButt, {}, 0, 1, 16},
      {corner, 1, 1, kBevel, kButt, {}, 0, 1, 16 - .5},
      {corner, 0, 2, kMiter, kButt, {}, 0, 1, 20},
      {corner, 2, 0, kMiter, kButt, {}, 0, 1, 12},
      {square, 1, 1, kMiter, kButt, {}, 0, 2, 36 - 4},
      {square, 1, 1, kRound, kBox, {}, 0, 2, 32 + kPi - 4},
      {square, 3, 0, kRound, kBox, {}, 0, 1, 16},
      {square, 0, 1, kBevel, kBox, {}, 0, 2, 34 - 16},
      {hairpin, 1, 1, kRound, kButt, {}, 0, 1, 8 + kPi / 2 * 2},
      {hairpin, 1, 1, kBevel, kButt, {}, 0, 1, 8},
      {circle, 1, 1, kRound, kButt, {}, 0, 2, 8 * kPi},
      {circle, 3, 1, kRound, kButt, {}, 0, 1, 9 * kPi},
      {point, 1, 1, kRound, kButt, {}, 0, 0, 0},
      {point, 1, 1, kRound, kDisc, {}, 0, 1, kPi},
      {point, 1, 3, kRound, kBox, {}, 0, 1, 16},
      {line, 1, 1, kRound, kButt, {2, 1}, 0, 4, 14},
      {line, 1, 1, kRound, kButt, {2, 1}, 1, 4, 2 * (1 + 2 + 2 + 2)},
      {line, 1, 1, kRound, kButt, {2, 1}, -1, 3, 2 * 6},
      {line, 1, 1, kRound, kButt, {1}, 0, 5, 10},
      {line, .1, .1, kRound, kDisc, {0, 4}, 2, 3, 3 * kPi / 100},  // one at the end
      {line, .1, .1, kRound, kBox, {0, 4}, 0, 3, 3 * .04},
      {corner, 1, 1, kMiter, kButt, {6, 9}, 1, 1, 10},
      {square, .5, .5, kMiter, kButt, {8, 8}, 4, 1, 8 - .25},  // begun anew at the corner
  };
  // clang-format on
  for (const Row& row : rows) {
    KurvoOptions options = Options(row.join, row.cap);
    options.dash_count = static_cast<int32_t>(row.dashes.size());
    options.dashes = row.dashes.data();
    options.phase = row.phase;
    const Stroke stroke = StrokeOf(Chain(row.chain), row.left, row.right, options);
    SCOPED_TRACE(&row - rows);
    EXPECT_EQ(stroke.code, 0);
    EXPECT_EQ(stroke.report.capped, 0);
    EXPECT_EQ(stroke.region->count, row.loops);
    EXPECT_NEAR(AreaOfLoops(*stroke.region), row.area, 1e-7);
  }
}

// ---- Polylines ----

// Few points anywhere, or a zigzag from left to right, whose strips are put together by runs.
Polygon RandomPolyline(Random& random, bool is_rough) {
  Polygon p;
  const int n = is_rough ? RandomInt(random, 400, 450) : RandomInt(random, 3, 7);
  for (int i = 0; i < n; ++i) {
    const XY place =
        is_rough ? XY{8. * i / n - 4, random.Uniform(-.5, .5)} : RandomPlace(random, 5);
    p.push_back({place.x, place.y});
  }
  return p;
}

// Of y = x^2 from 0 to 1, with r = (1 + 4 x^2)^(3/2) / 2: normals to its left end at r.
TEST(ChainStroke, NormalsEndAtCentresOfCurvature) {
  for (const char* half : {"(b 0 0 .5 0 1 1)", "(b 0 0 .1 0 .2 .04)(b .2 .04 .6 .2 1 1)",
                           "(b 0 0 .25 0 .5 .16666666666666667 .75 .5 1 1)"})
    for (const double d : {.4, .8, 2., 5., 9.})
      for (const double right : {0., .3, d}) {
        const auto strip = [=](Wide x) {
          const Wide speed = std::sqrt(1 + 4 * x * x), r = speed * speed * speed / 2;
          const Wide s = std::min(L(d), r);
          return speed * (s - s * s / (2 * r) + right + right * right / (2 * r));
        };
        const Wide tight = d > .5 ? std::min(std::sqrt(std::cbrt(4 * L(d) * d) - 1) / 2, 1.0L) : 0;
        const Wide want = WideIntegral(strip, 0, tight) + WideIntegral(strip, tight, 1);
        const Stroke got =
            StrokeOf(Chain(half), d, right, Options(KURVO_JOIN_ROUND, KURVO_CAP_BUTT, 0, 1e-8));
        ASSERT_EQ(got.code, 0);
        EXPECT_NEAR(AreaOfLoops(*got.region), static_cast<double>(want), 1e-6)
            << half << d << ' ' << right;
      }
}

TEST(ChainStroke, PolylinesAreUnionsOfTheirParts) {
  constexpr double kTol = 1e-5;
  Random random;
  for (int round = 0; round < Cases(100); ++round) {
    SCOPED_TRACE(round);
    const bool is_rough = round % 10 == 9;
    const Polygon p = RandomPolyline(random, is_rough);
    const bool closed = Chance(random, .5);
    std::vector<Owned> curves;
    for (std::size_t i = 0; i + (closed ? 0 : 1) < p.size(); ++i) {
      const LongPoint a = p[i], b = p[(i + 1) % p.size()];
      curves.push_back(Line(double(a.x), double(a.y), double(b.x), double(b.y)));
      if (is_rough && Chance(random, .2))
        curves.push_back(Line(double(b.x), double(b.y), double(b.x), double(b.y)));
    }
    if (is_rough && Chance(random, .3)) {
      const Numbers widths(curves.size(), 1. / static_cast<double>(curves.size()));
      Owned composite = MakeComposite(widths, std::move(curves));
      curves.clear();
      curves.push_back(std::move(composite));
    }
    const double least = is_rough ? 1 : .01;
    const double left = Chance(random, .2) ? 0 : random.Uniform(least, 3);
    const double right = Chance(random, .2) && left > 0 ? 0 : random.Uniform(least, 3);
    const KurvoOptions options =
        Options(RandomInt(random, 0, 2), RandomInt(random, 0, 2), random.Uniform(1, 9), kTol);
    const Stroke stroke = StrokeOf(Chain(std::move(curves)), left, right, options);
    ASSERT_EQ(stroke.code, 0);
    const PenModel model(p, closed, left, right, options);
    for (int k = 0; k < 100; ++k) {
      const XY q = k % 2 ? PlaceBeside(random, *stroke.region, 3 * kTol) : RandomPlace(random, 9);
      const int want = model.Holds({q.x, q.y}, 3 * kTol);
      if (want < 0) continue;
      EXPECT_EQ(Where(*stroke.region, {q.x, q.y, 0}) == KURVO_REGION_INSIDE, want == 1)
          << q.x << " " << q.y << " join " << options.join << " cap " << options.cap;
    }
  }
}

TEST(ChainStroke, RoundStrokesHoldWhatIsNear) {
  constexpr double kTol = 1e-4;
  Random random;
  for (int round = 0; round < Cases(60); ++round) {
    SCOPED_TRACE(round);
    std::vector<Owned> curves;
    XY at = RandomPlace(random, 5);
    const XY start = at;
    const bool closed = Chance(random, .3);
    for (int n = RandomInt(random, 2, 4); n > 0; --n) {
      const XY next = closed && n == 1 ? start : RandomPlace(random, 5);
      curves.push_back(RandomBetween(random, at, next));
      at = next;
    }
    const Chain chain(std::move(curves));
    const double width = random.Uniform(.01, 4);
    KurvoOptions options = Options(KURVO_JOIN_ROUND, KURVO_CAP_ROUND, 0, kTol);
    options.gap = kInfinity;  // within composites curves meet but for rounding
    const Stroke stroke = StrokeOf(chain, width, width, options);
    ASSERT_EQ(stroke.code, 0);
    EXPECT_EQ(stroke.report.capped, 0);
    Globals g;
    for (int k = 0; k < 60; ++k) {
      const Point on =
          PointAt(chain[RandomInt(random, 0, chain.count() - 1)], random.Uniform(0, 1));
      const double angle = random.Uniform(0, 2 * kPi);
      const double away =
          Chance(random, .5) ? width + random.Uniform(-9, 9) * kTol : random.Uniform(0, 6);
      const Point q = {on[0] + away * std::cos(angle), on[1] + away * std::sin(angle), 0};
      KurvoPlace place;
      double distance;
      ASSERT_TRUE(KurvoChainNearest(chain.get(), q.data(), 1, &place, &distance, &g));
      if (3 * kTol >= std::fabs(distance - width)) continue;
      EXPECT_EQ(Where(*stroke.region, q) == KURVO_REGION_INSIDE, distance < width)
          << q[0] << " " << q[1] << " width " << width << " distance " << distance;
    }
  }
}

TEST(ChainStroke, OriginsNameChains) {
  Chain chain("(l 0 0 4 0)(l 4.5 0 4.5 4)");
  chain[0].attr = 1;
  chain[1].attr = 2;
  KurvoOptions options = Options(KURVO_JOIN_MITER, KURVO_CAP_SQUARE);
  EXPECT_EQ(StrokeOf(chain, 1, 1, options).code, KURVO_ERR_CHAIN_ENDS);
  options.gap = .5;
  const Stroke stroke = StrokeOf(chain, 1, 1, options);
  ASSERT_EQ(stroke.code, 0);
  EXPECT_EQ(stroke.report.gaps, 1);
  ASSERT_EQ(stroke.region->count, 1);
  int counts[5] = {};
  for (int k = 0; k < stroke.region->loops[0].count; ++k) {
    const KurvoOrigin& origin = stroke.region->origins[k];
    ++counts[origin.kind];
    const bool is_offset = origin.kind == KURVO_ORIGIN_OFFSET;
    EXPECT_EQ(stroke.region->loops[0].curves[k].attr, is_offset ? origin.curve + 1 : 0) << k;
  }
  EXPECT_EQ(counts[KURVO_ORIGIN_OFFSET], 4);
  EXPECT_GE(counts[KURVO_ORIGIN_CAP], 2);
  EXPECT_GE(counts[KURVO_ORIGIN_BRIDGE], 1);
}

TEST(ChainStroke, Refusals) {
  struct Row {
    double left, right;
    void (*set)(KurvoOptions&);
    int code;
  };
  static const double kBad[] = {1, -1}, kNone[] = {0, 0}, kEndless[] = {1, kInfinity},
                      kShort[] = {1e-9, 1e-9};
  // clang-format off
  const Row rows[] = {
      {-1, 1, [](KurvoOptions&) {}, KURVO_ERR_RANGE},
      {1, kInfinity, [](KurvoOptions&) {}, KURVO_ERR_NOT_FINITE},
      {1, NAN, [](KurvoOptions&) {}, KURVO_ERR_NOT_FINITE},
      {1, 1, [](KurvoOptions& o) { o.cap = 3; }, KURVO_ERR_OPTION},
      {1, 1, [](KurvoOptions& o) { o.join = 3; }, KURVO_ERR_OPTION},
      {1, 1, [](KurvoOptions& o) { o.miter_limit = .9; }, KURVO_ERR_RANGE},
      {1, 1, [](KurvoOptions& o) { o.dash_count = 1; }, KURVO_ERR_OPTION},
      {1, 1, [](KurvoOptions& o) { o.dash_count = -1; }, KURVO_ERR_OPTION},
      {1, 1, [](KurvoOptions& o) { o.dash_count = 2, o.dashes = kBad; }, KURVO_ERR_RANGE},
      {1, 1, [](KurvoOptions& o) { o.dash_count = 2, o.dashes = kNone; }, KURVO_ERR_RANGE},
      {1, 1, [](KurvoOptions& o) { o.dash_count = 2, o.dashes = kEndless; }, KURVO_ERR_NOT_FINITE},
      {1, 1, [](KurvoOptions& o) { o.dash_count = 2, o.dashes = kShort; }, KURVO_ERR_TOO_LARGE},
      {1, 1, [](KurvoOptions& o) { o.phase = kInfinity; }, KURVO_ERR_NOT_FINITE},
      {1, 1, [](KurvoOptions& o) { o.proceed = [](double, void*) { return 0; }; }, KURVO_ERR_STOPPED},
  };
  // clang-format on
  for (const Row& row : rows) {
    KurvoOptions options = Options(KURVO_JOIN_ROUND, KURVO_CAP_ROUND);
    row.set(options);
    const Stroke stroke = StrokeOf(Chain("(l 0 0 9 0)"), row.left, row.right, options);
    EXPECT_EQ(stroke.code, row.code) << &row - rows;
    EXPECT_EQ(stroke.region->count, 0);
  }
}

}  // namespace
}  // namespace kurvo_test
