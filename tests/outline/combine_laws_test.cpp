// Laws of combining, and what it leaves as it is.
#include <functional>

#include "outline/combine.h"
#include "outline/rewritten.h"

namespace kurvo_test {
namespace {

TEST(RegionCombine, BitForBit) {
  Rounds(Cases(120), [](Random& random, int round) {
    const Region a =
        round % 2 ? RandomRegion(random, 1) : GlyphRegion(kGlyphs[round / 2 % kGlyphCount], {});
    const Region simple = Made(kSimplify, {a.get()});
    const auto want = Packed(*simple);
    const Inputs twice = {a.get(), a.get()};
    for (const Region& same : {Made(kSimplify, {simple.get()}), Made(KURVO_UNION, twice),
                               Made(KURVO_INTERSECTION, twice)}) {
      ExpectSame(same, simple, SizeOf({simple.get()}), "the same again");
      EXPECT_EQ(Packed(*same), want);
    }
    EXPECT_EQ(Made(KURVO_DIFFERENCE, twice)->count, 0);
    EXPECT_EQ(Made(KURVO_XOR, twice)->count, 0);
    // Powers of two change nothing but the exponents.
    Region large = a.Copied(), simple_large = simple.Copied();
    for (const Region* region : {&large, &simple_large})
      ForEachCurve(**region, [](const Curve& cv) {
        ForEachPoint(
            cv, [](double* p) { p[0] *= 1024, p[1] *= 1024; }, [](double& r) { r *= 1024; });
      });
    EXPECT_EQ(Packed(*Made(kSimplify, {large.get()})), Packed(*simple_large)) << "scaled";
  });
}

TEST(RegionCombine, CommutesAssociatesAndTurns) {
  Rounds(Cases(24), [](Random& random, int round) {
    GlyphPair pair = PairOf(random, round % 9);
    const Region third = GlyphRegion(kGlyphs[round % kGlyphCount], {.7, -200, 100});
    const Inputs ab = {pair.a.get(), pair.b.get()}, ba = {pair.b.get(), pair.a.get()};
    SCOPED_TRACE(pair.name);
    for (const int32_t operation : {KURVO_UNION, KURVO_INTERSECTION, KURVO_XOR}) {
      const Region one = Made(operation, ab);
      ExpectSame(one, Made(operation, ba), 2000, "commutes");
      const Region left = Made(operation, {one.get(), third.get()});
      const Region right = Made(operation, {ab[0], Made(operation, {ab[1], third.get()}).get()});
      ExpectSame(left, right, 2000, "associates");
      ExpectSame(left, Made(operation, {ab[0], ab[1], third.get()}), 2000, "at once");
    }
    // Quarter turns, mirrors and moves.
    using Map = std::function<void(double*)>;
    const Map maps[] = {[](double* p) { std::swap(p[0], p[1]), p[0] = -p[0]; },
                        [](double* p) { p[0] = -p[0]; }, [](double* p) { std::swap(p[0], p[1]); },
                        [](double* p) { p[0] += 4096, p[1] -= 1234.5; }};
    for (const Map& map : maps) {
      const auto mapped = [&](const KurvoRegion& region) {
        Globals g;
        Region copy;
        KurvoRegionCopy(&region, copy.get(), &g);
        ForEachCurve(*copy, [&](const Curve& cv) { ForEachPoint(cv, map, [](double&) {}); });
        return copy;
      };
      const Region a = mapped(*ab[0]), b = mapped(*ab[1]);
      for (const int32_t operation : kOperations)
        ExpectSame(Made(operation, {a.get(), b.get()}),
                   Made(kSimplify, {mapped(*Made(operation, ab)).get()}), 5000, "mapped");
    }
  });
}

// What runs together is found by its points, however it is written: nothing is left between.
TEST(RegionCombine, OtherwiseWritten) {
  Rounds(Cases(60), [](Random& random, int round) {
    Region a = round % 2 ? RandomRegion(random, 1)
                         : GlyphRegion(kGlyphs[RandomInt(random, 0, kGlyphCount - 1)],
                                       {random.Uniform(0, 6)});
    if (round % 4 == 3) a->rule = KURVO_FILL_EVENODD;
    const double size = SizeOf({a.get()});
    const Region b = Rewritten(random, *a, size), simple = Made(kSimplify, {a.get()});
    const KurvoMoments want = MomentsOf(*simple);
    for (const int32_t operation : kOperations) {
      const Combined made = Combine(operation, {a.get(), b.get()});
      ASSERT_EQ(made.code, 0);
      const bool is_all = operation == KURVO_UNION || operation == KURVO_INTERSECTION;
      EXPECT_EQ(Invalid(*made.region, 0x1p-30 * size), "") << kOperationNames[operation];
      EXPECT_EQ(made.report.capped, 0) << kOperationNames[operation];
      EXPECT_NEAR(AreaOf(*made.region), is_all ? want.area : 0, 1e-9 * size * (want.length + size));
      EXPECT_TRUE(is_all || made.region->count == 0) << kOperationNames[operation];
    }
  });
}

// Nor does it matter for what is slid or turned a little: not for the result, nor the work.
TEST(RegionCombine, OtherwiseWrittenBeside) {
  Rounds(Cases(60), [](Random& random, int round) {
    const Region a = round % 2 ? RandomRegion(random, 1)
                               : GlyphRegion(kGlyphs[RandomInt(random, 0, kGlyphCount - 1)], {});
    const double size = SizeOf({a.get()}), by = std::pow(10, random.Uniform(-9, -2));
    const double turn = round % 4 < 2 ? by : 0, slide = round % 4 < 2 ? 0 : by * size;
    Globals g;
    Region b;
    KurvoRegionCopy(a.get(), b.get(), &g);
    ForEachCurve(*b, [&](const Curve& cv) {
      const auto move = [&](double* p) {
        const double x = p[0], y = p[1];
        p[0] = std::cos(turn) * x - std::sin(turn) * y + slide;
        p[1] = std::sin(turn) * x + std::cos(turn) * y + slide / 2;
      };
      ForEachPoint(cv, move, [](double) {});
    });
    const Region written = Rewritten(random, *b, size);
    for (const int32_t operation : kOperations) {
      const Combined want = Combine(operation, {a.get(), b.get()});
      const Combined made = Combine(operation, {a.get(), written.get()});
      ASSERT_EQ(made.code, 0);
      EXPECT_EQ(want.report.capped + made.report.capped, 0) << by;
      const KurvoMoments moments = MomentsOf(*want.region);
      EXPECT_NEAR(AreaOf(*made.region), moments.area, 4e-9 * size * (moments.length + size)) << by;
    }
  });
}

// From the lowest point of a circle upwards a rounding of the height is one of 1e-8 to the side.
TEST(RegionCombine, CutArcsStayOnTheirCircles) {
  Rounds(Cases(50), [](Random& random, int) {
    const Region a = RandomRegion(random, 1), b = RandomRegion(random, 1);
    const Combined made = Combine(KURVO_UNION, {a.get(), b.get()});
    double farthest = 0;
    ForEachCurve(*made.region, [&](const Curve& cv) {
      if (cv.type != CV_ARC) return;
      const auto& arc = *static_cast<const KurvoArc*>(cv.data);
      for (const double* p : {arc.start, arc.end})
        farthest = std::max(
            farthest,
            std::fabs(std::hypot(p[0] - arc.centre[0], p[1] - arc.centre[1]) - arc.radius));
    });
    EXPECT_LE(farthest, 1e-10);
  });
}

// One sweep over n parts gives what n - 1 over two give.
TEST(RegionCombine, ManyAtOnce) {
  Rounds(Cases(4), [](Random& random, int) {
    std::vector<Region> parts;
    Inputs inputs;
    for (int i = 0; i < 12; ++i)
      parts.push_back(GlyphRegion(
          kGlyphs[RandomInt(random, 0, kGlyphCount - 1)],
          {random.Uniform(0, 6), random.Uniform(-900, 900), random.Uniform(-900, 900)}));
    for (const Region& part : parts) inputs.push_back(part.get());
    Probes probes(random, inputs, .01L, 300);
    for (const int32_t operation : kOperations) {
      const Combined once = Combine(operation, inputs);
      EXPECT_EQ(Judge(probes, operation, inputs, once, .01L), "") << kOperationNames[operation];
      Region one = Made(kSimplify, {inputs[0]});
      for (std::size_t i = 1; i < inputs.size(); ++i) one = Made(operation, {one.get(), inputs[i]});
      ExpectSame(once.region, one, 3000, kOperationNames[operation]);
    }
  });
  const Combined none = Combine(KURVO_UNION, {});
  EXPECT_EQ(none.code, 0);
  EXPECT_EQ(none.region->count, 0);
}

// ---- What nothing touches

TEST(RegionCombine, KeepsWhatNothingTouches) {
  const std::string splines =
      "(B 20 0 22 -1 24 1 26 0 | 0 0 0 1 2 2 2)(R 26 0 1 27 2 .5 26 4 1 | 0 0 0 1 1 1)(c .5 .5 (l "
      "26 4 23 5)(l 23 5 20 4))(b 20 4 19 2 20 0)";
  const std::string arcs = "(a 0 0 9 0 3)(a 0 0 9 3 3.283185307179586)";
  const std::string mixed = "(l -1 -1 1 -1)(r 1 -1 1 3 0 .7 1 1 1)(l 1 1 -1 1)(b -1 1 -2 0 -1 -1)";
  Region a({arcs, mixed, splines}, KURVO_FILL_EVENODD),
      b("(l 50 0 60 0)(l 60 0 55 5)(l 55 5 50 0)");
  int32_t mark = 0;
  for (Region* region : {&a, &b})
    ForEachCurve(**region, [&](Curve& cv) { cv.attr = ++mark, cv.attr_p2 = 99; });
  const Combined made = Combine(KURVO_UNION, {a.get(), b.get()});
  ASSERT_EQ(made.code, 0);
  EXPECT_EQ(Strays(*made.region, {a.get(), b.get()}, 1e-12), "");
  ASSERT_EQ(made.region->count, 4);
  const auto same = [](const Cvseq& got, const Cvseq& want) {
    ASSERT_EQ(got.count, want.count);
    for (int k = 0; k < got.count; ++k) {
      EXPECT_TRUE(IsCurve(got.curves[k], want.curves[k], 1e-14)) << k;  // arcs join to rounding
      EXPECT_EQ(got.curves[k].attr, want.curves[k].attr);
    }
  };
  same(made.region->loops[0], a->loops[0]);
  same(made.region->loops[3], b->loops[0]);
  // The hole is turned: it begins where it began, with its curves backwards.
  const Cvseq &got = made.region->loops[1], &want = a->loops[1];
  ASSERT_EQ(got.count, want.count);
  for (int k = 0; k < got.count; ++k) {
    const Curve &is = got.curves[k], &was = want.curves[want.count - 1 - k];
    EXPECT_EQ(is.type, was.type);
    EXPECT_EQ(is.attr, was.attr);
    for (const double t : {0., .3, 1.}) {
      const Point p = PointAt(is, t), q = PointAt(was, 1 - t);
      EXPECT_NEAR(std::hypot(p[0] - q[0], p[1] - q[1]), 0, 1e-14);
    }
  }
}

// Cuts alone make more curves: of each type as many as there were, and one for each cut.
TEST(RegionCombine, CutsKeepTypes) {
  const Region a("(a 0 0 4 0 2)(a 0 0 4 2 2)(a 0 0 4 4 2.283185307179586)");
  const Region b("(B 3 -6 2 -1 2 1 3 6 | 0 0 0 1 2 2 2)(l 3 6 9 6)(l 9 6 9 -6)(l 9 -6 3 -6)");
  const Combined made = Combine(KURVO_XOR, {a.get(), b.get()});
  ASSERT_EQ(made.code, 0);
  std::map<int32_t, int> types;
  ForEachCurve(*made.region, [&](const Curve& cv) { ++types[cv.type]; });
  EXPECT_EQ(types[CV_ARC], 3 + 2);
  EXPECT_EQ(types[CV_BSPLINE], 1 + 2);
  EXPECT_EQ(types[CV_LINE], 3);
  EXPECT_EQ(types.size(), 3U);
}

}  // namespace
}  // namespace kurvo_test
