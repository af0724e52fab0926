// Union, intersection, difference and xor of regions, and one region made simple: winding numbers
// of finely flattened inputs in long double, and what a result must look like. A long run:
// KURVO_TEST_CASES=2000.
#include "outline/combine.h"

#include "outline/fonts.h"

namespace kurvo_test {
namespace {

// ---- The oracle itself

TEST(CombineOracle, NoticesWhatIsWrong) {
  const std::string square = "(l 0 0 9 0)(l 9 0 9 9)(l 9 9 0 9)(l 0 9 0 0)";
  const std::string hole = "(l 2 2 2 5)(l 2 5 5 5)(l 5 5 5 2)(l 5 2 2 2)";
  struct Row {
    const char* what;
    std::vector<std::string> result;
    const char* told;  // first
  };
  // clang-format off
  const Row rows[] = {
      {"right",            {square, hole},                                                               ""},
      {"without the hole", {square},                                                                     "at"},
      {"empty",            {},                                                                           "at"},
      {"moved by .02",     {"(l .02 0 9 0)(l 9 0 9 9)(l 9 9 .02 9)(l .02 9 .02 0)", hole},               "at"},
      {"turned hole",      {square, "(l 2 2 5 2)(l 5 2 5 5)(l 5 5 2 5)(l 2 5 2 2)"},                     "at"},
      {"both turned",      {"(l 0 0 0 9)(l 0 9 9 9)(l 9 9 9 0)(l 9 0 0 0)", "(l 2 2 5 2)(l 5 2 5 5)(l 5 5 2 5)(l 2 5 2 2)"}, "at"},
      {"hole first",       {hole, square},                                                               "hole"},
      {"open by 1e-13",    {"(l 0 0 9 0)(l 9 0 9 9)(l 9 9 0 9)(l 0 9 1e-13 0)", hole},                   "open"},
      {"through a vertex twice", {"(l 0 0 9 0)(l 9 0 9 9)(l 9 9 0 9)(l 0 9 0 0)(l 0 0 -1 1)(l -1 1 -1 -1)(l -1 -1 0 0)", hole}, "twice"},
      {"a spike",          {"(l 0 0 9 0)(l 9 0 9 9)(l 9 9 20 9)(l 20 9 9 9)(l 9 9 0 9)(l 0 9 0 0)", hole}, "twice"},
      {"crossing itself",  {square, hole, "(l 20 0 24 4)(l 24 4 24 0)(l 24 0 20 5)(l 20 5 20 0)"},       "cross"},
      {"along each other", {square, hole, "(l 9 2 12 2)(l 12 2 12 5)(l 12 5 9 5)(l 9 5 9 2)"},           "run along"},
  };
  // clang-format on
  const Region a({square}), b("(l 2 2 5 2)(l 5 2 5 5)(l 5 5 2 5)(l 2 5 2 2)");
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    Random random;
    const Inputs inputs = {a.get(), b.get()};
    Probes probes(random, inputs, .01L, 400);
    Region result;  // as it stands: adding would close it
    std::vector<Chain> chains;
    std::vector<Cvseq> loops;
    for (const std::string& text : row.result) chains.emplace_back(text);
    for (const Chain& chain : chains) loops.push_back(*chain);
    const KurvoRegion made = {static_cast<int>(loops.size()), 0, loops.data(), nullptr};
    const std::string told = probes.Wrong(KURVO_DIFFERENCE, made, .01L) + Invalid(made, 1e-8);
    EXPECT_TRUE(row.told[0] ? told.find(row.told) != std::string::npos : told.empty()) << told;
  }
}

// ---- Small cases, by hand

TEST(RegionCombine, ByHand) {
  const std::string square = "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0)";
  const std::string clockwise = "(l 0 0 0 4)(l 0 4 4 4)(l 4 4 4 0)(l 4 0 0 0)";
  const std::string beside = "(l 4 0 8 0)(l 8 0 8 4)(l 8 4 4 4)(l 4 4 4 0)";
  const std::string corner = "(l 4 4 8 4)(l 8 4 8 8)(l 8 8 4 8)(l 4 8 4 4)";
  const std::string shifted = "(l 2 1 6 1)(l 6 1 6 3)(l 6 3 2 3)(l 2 3 2 1)";
  const std::string inner = "(l 1 1 3 1)(l 3 1 3 3)(l 3 3 1 3)(l 1 3 1 1)";
  const std::string touching = "(l 0 2 2 1)(l 2 1 2 3)(l 2 3 0 2)";  // from inside, at a point
  const std::string circle = "(a 0 0 2 0 6.283185307179586)",
                    disc = "(a 2 0 2 0 6.283185307179586)";
  const std::string eight = "(l 0 0 4 4)(l 4 4 4 0)(l 4 0 0 4)(l 0 4 0 0)";
  const std::string spike = "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 9 4)(l 9 4 4 4)(l 4 4 0 4)(l 0 4 0 0)";
  constexpr double kPi = 3.14159265358979324, kLens = 8 * kPi / 3 - 2 * 1.73205080756887729 * 1;
  constexpr int kU = KURVO_UNION, kI = KURVO_INTERSECTION, kD = KURVO_DIFFERENCE, kX = KURVO_XOR;
  struct Row {
    std::vector<std::string> a, b;
    int32_t rule, operation;
    int loops, curves;
    double area;
  };
  // clang-format off
  const Row rows[] = {
      {{square},             {shifted},   0, kU, 1, 8,  20},
      {{square},             {shifted},   0, kI, 1, 4,  4},
      {{square},             {shifted},   0, kD, 1, 8,  12},
      {{square},             {shifted},   0, kX, 2, 12, 16},
      {{square},             {beside},    0, kU, 1, 6,  32},
      {{square},             {beside},    0, kI, 0, 0,  0},
      {{square},             {beside},    0, kX, 1, 6,  32},
      {{square},             {corner},    0, kU, 2, 8,  32},
      {{square},             {inner},     0, kU, 1, 4,  16},
      {{square},             {inner},     0, kI, 1, 4,  4},
      {{square},             {inner},     0, kD, 2, 8,  12},
      {{inner},              {square},    0, kD, 0, 0,  0},
      {{square},             {touching},  0, kD, 2, 7,  14},
      {{square},             {square},    0, kU, 1, 4,  16},
      {{square},             {clockwise}, 0, kI, 1, 4,  16},
      {{square},             {clockwise}, 0, kD, 0, 0,  0},
      {{square},             {square},    0, kX, 0, 0,  0},
      {{square},             {},          0, kU, 1, 4,  16},
      {{square},             {},          0, kI, 0, 0,  0},
      {{},                   {},          0, kU, 0, 0,  0},
      {{circle},             {disc},      0, kI, 1, 3,  kLens},
      {{circle},             {circle},    0, kU, 1, 4,  4 * kPi},
      {{square, inner},      {},          1, kSimplify, 2, 8, 12},
      {{square, inner},      {},          0, kSimplify, 1, 4, 16},
      {{square, clockwise},  {},          0, kSimplify, 0, 0, 0},
      {{clockwise},          {},          2, kSimplify, 0, 0, 0},
      {{clockwise},          {},          3, kSimplify, 1, 4, 16},
      {{eight},              {},          0, kSimplify, 2, 6, 8},
      {{eight},              {},          2, kSimplify, 1, 3, 4},
      {{spike},              {},          0, kSimplify, 1, 4, 16},
      {{"(l 0 0 4 0)(l 4 0 0 0)"}, {},    0, kSimplify, 0, 0, 0},
      {{"", "(l 1 1 1 1)"},  {},          0, kSimplify, 0, 0, 0},
  };
  // clang-format on
  for (const Row& row : rows) {
    const Region a(row.a, row.rule), b(row.b);
    const Inputs inputs = row.operation == kSimplify ? Inputs{a.get()} : Inputs{a.get(), b.get()};
    const Combined made = Combine(row.operation, inputs);
    SCOPED_TRACE((row.a.empty() ? "" : row.a[0]) + " and " + (row.b.empty() ? "" : row.b[0]) +
                 " by " + std::to_string(row.operation));
    Random random;
    Probes probes(random, inputs, 1e-3L, 64);
    EXPECT_EQ(Judge(probes, row.operation, inputs, made, 1e-3L), "");
    int curves = 0;
    ForEachCurve(*made.region, [&](const Curve&) { ++curves; });
    EXPECT_EQ(made.region->count, row.loops);
    EXPECT_EQ(curves, row.curves);
    EXPECT_NEAR(AreaOf(*made.region), row.area, 1e-8);
  }
}

// ---- Pairs of letters

void CheckPair(Random& random, int round, const GlyphPair& pair) {
  SCOPED_TRACE(pair.name);
  const Inputs inputs = {pair.a.get(), pair.b.get()};
  const Wide off = .01L * ScaleOf(round).scale;
  Probes probes(random, inputs, off, 250);
  Region made[4];
  for (const int32_t operation : kOperations) {
    SCOPED_TRACE(kOperationNames[operation]);
    Combined combined = Combine(operation, inputs);
    EXPECT_EQ(Judge(probes, operation, inputs, combined, off), "");
    made[operation] = std::move(combined.region);
  }
  // Areas: A + B = (A or B) + (A and B); A = (A and B) + (A less B); A xor B = A + B - 2 (A and
  // B).
  const Region a = Made(kSimplify, {inputs[0]}), b = Made(kSimplify, {inputs[1]});
  const double area_a = AreaOf(*a), area_b = AreaOf(*b), both = AreaOf(*made[1]);
  const double bound = 0x1p-28 * SizeOf(inputs) * (MomentsOf(*a).length + MomentsOf(*b).length);
  EXPECT_NEAR(area_a + area_b, AreaOf(*made[0]) + both, bound);
  EXPECT_NEAR(area_a, both + AreaOf(*made[2]), bound);
  EXPECT_NEAR(area_a + area_b - 2 * both, AreaOf(*made[3]), bound);
  // (A and B) or (A less B) = A.
  EXPECT_NEAR(
      AreaOf(*Made(KURVO_XOR, {Made(KURVO_UNION, {made[1].get(), made[2].get()}).get(), a.get()})),
      0, bound);
}

TEST(RegionCombine, Letters) {
  Rounds(Cases(36),
         [](Random& random, int round) { CheckPair(random, round, PairOf(random, round)); });
}

// Of the fonts that are there, every second pair in cubics: a thousand questions a round.
TEST(RegionCombine, LettersOfFonts) {
  const std::vector<std::string> glyphs = FontGlyphs();
  if (glyphs.empty()) GTEST_SKIP() << "no FreeType, or none of the fonts";
  Rounds(Cases(9), [&](Random& random, int round) {
    GlyphPair pair = PairOf(random, round, glyphs);
    const int scaled = round / static_cast<int>(std::size(kFamilies)) % 4;
    if (scaled == 0 && round % 2) {
      pair.a = InCubics(pair.a);
      pair.b = InCubics(pair.b);
    }
    CheckPair(random, round, pair);
  });
  RecordProperty("probes", std::to_string(Probes::asked));
}

// ---- Mixed outlines

TEST(RegionCombine, RandomOutlines) {
  Rounds(Cases(60), [](Random& random, int round) {
    constexpr double kSizes[] = {1, 1e-6, 1e7, 1, 1};
    const double scale = kSizes[round % 5], far = round % 5 == 3 ? 1e5 : 0;
    Region a = RandomRegion(random, scale, far), b = RandomRegion(random, scale, far);
    int32_t mark = 0;
    for (Region* region : {&a, &b})
      ForEachCurve(**region, [&](Curve& cv) {
        cv.attr = ++mark, cv.attr_p1 = 0xFEDCBA9876543210u + unsigned(mark), cv.attr_p2 = 7;
      });
    a->rule = round % 4;
    b->rule = round / 4 % 4;
    const Inputs inputs = {a.get(), b.get()};
    const Wide off = 1e-3L * scale;
    Probes probes(random, inputs, off, 100);
    const int32_t operation = kOperations[round % 4];
    SCOPED_TRACE(kOperationNames[operation]);
    EXPECT_EQ(Judge(probes, operation, inputs, Combine(operation, inputs), off), "");
    Probes alone(random, {inputs[0]}, off, 50);
    EXPECT_EQ(Judge(alone, kSimplify, {inputs[0]}, Combine(kSimplify, {inputs[0]}), off), "");
  });
}

}  // namespace
}  // namespace kurvo_test
