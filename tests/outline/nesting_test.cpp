// Which loops lie in which: nests that are built with the answer, and tables.
#include <kurvo_outline.h>

#include <algorithm>
#include <numeric>

#include "support/generator.h"
#include "support/region.h"

namespace kurvo_test {
namespace {

std::vector<int32_t> ParentsOf(const KurvoRegion& region, double epsilon = 1e-6) {
  Globals g(epsilon);
  std::vector<int32_t> parents(static_cast<std::size_t>(region.count), -7);
  EXPECT_EQ(KurvoRegionNesting(&region, parents.data(), &g), 1) << KurvoErrGet(&g);
  return parents;
}

TEST(RegionNesting, Tables) {
  struct Row {
    const char* what;
    std::vector<const char*> loops;
    std::vector<int32_t> parents;
  };
  const char* const square = "(l 0 0 9 0)(l 9 0 9 9)(l 9 9 0 9)(l 0 9 0 0)";
  const char* const clockwise = "(l 0 0 0 9)(l 0 9 9 9)(l 9 9 9 0)(l 9 0 0 0)";
  const char* const circle = "(a 5 5 2 0 6.283185307179586)";
  const char* const corner = "(l 0 0 0 2)(l 0 2 3 0)(l 3 0 0 0)";  // shares two sides of the square
  const char* const eight = "(l 0 0 6 6)(l 6 6 6 0)(l 6 0 0 2)(l 0 2 0 0)";
  // clang-format off
  const Row rows[] = {
      {"none",             {},                                                    {}},
      {"apart",            {square, "(a 20 0 1 0 6.283185307179586)"},            {-1, -1}},
      {"one in the other", {circle, square},                                      {1, -1}},
      {"touches inside",   {square, "(a 2 2 2 0 6.283185307179586)"},             {-1, 0}},
      {"touches outside",  {square, "(a -2 2 2 0 6.283185307179586)"},            {-1, -1}},
      {"along two sides",  {corner, square},                                      {1, -1}},
      {"equal",            {square, square, clockwise, square},                   {-1, 0, 1, 2}},
      {"of nothing",       {square, "", "(l 1 1 1 1)", "(l 1 2 3 2)(l 3 2 1 2)"}, {-1, -1, 0, 0}},
      {"points",           {"(b 1 1 1 1 1 1 1 1)", "(b 1 1 1 1 1 1 1 1)"},        {-1, 0}},
      {"in a bay",         {"(l 0 0 9 0)(l 9 0 9 9)(l 9 9 8 9)(l 8 9 8 1)(l 8 1 0 1)(l 0 1 0 0)", circle}, {-1, -1}},
      {"crossing",         {"(a 0 5 3 0 6.283185307179586)", square},             {-1, -1}},
      {"in a lobe",        {eight, "(a 5 3 .2 0 6.283185307179586)"},          {-1, 0}},
      {"a joint",          {"(l 0 0 9 0)(l 9 4e-7 9 9)(l 9 9 0 0)", "(a 7 2 .5 0 6.283185307179586)"}, {-1, 0}},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    std::vector<Chain> chains;
    std::vector<Cvseq> loops;
    for (const char* text : row.loops) chains.emplace_back(text);
    for (const Chain& chain : chains) loops.push_back(*chain);
    const KurvoRegion region = {static_cast<int>(loops.size()), 0, loops.data(), nullptr};
    EXPECT_EQ(ParentsOf(region), row.parents);
  }
}

// A disc with discs in a ring within, and so on. Then shuffled.
struct Planted {
  Region region;
  std::vector<int32_t> parents;

  void Disc(Random& random, XY c, double r, int32_t parent, int depth) {
    const auto self = static_cast<int32_t>(parents.size());
    const double sense = Chance(random, .5) ? 1 : -1, angle = random.Uniform(-3, 3);
    const double x = c.x, y = c.y, whole = 6.283185307179586;
    if (Chance(random, .5))
      region.Add(Chain(Text("(a", {x, y, r, angle, 2 * sense}) +
                       Text(")(a", {x, y, r, angle + 2 * sense, sense * (whole - 2)}) + ')'));
    else
      region.Add(Chain(Text("(b", {x - r, y, x - r, y - r, x, y - r}) +
                       Text(")(b", {x, y - r, x + r, y - r, x + r, y}) +
                       Text(")(b", {x + r, y, x + r, y + r, x, y + r}) +
                       Text(")(b", {x, y + r, x - r, y + r, x - r, y}) + ')'));
    parents.push_back(parent);
    if (depth == 0) return;
    if (Chance(random, .3)) return Disc(random, c, r * .3, self, depth - 1);
    const int n = RandomInt(random, 1, 4);
    for (int i = 0; i < n; ++i) {
      const double at = 6.283 * i / n;
      Disc(random, {c.x + .2 * r * std::cos(at), c.y + .2 * r * std::sin(at)}, .08 * r, self,
           depth - 1);
    }
  }
  void Shuffle(Random& random) {
    std::vector<int32_t> order(parents.size()), place(parents.size()), shuffled(parents.size());
    std::iota(order.begin(), order.end(), 0);
    for (std::size_t i = order.size(); i > 1; --i)
      std::swap(order[i - 1], order[std::size_t(RandomInt(random, 0, int(i) - 1))]);
    const std::vector<Cvseq> loops(region->loops, region->loops + region->count);
    for (std::size_t i = 0; i < order.size(); ++i) place[std::size_t(order[i])] = int32_t(i);
    for (std::size_t i = 0; i < order.size(); ++i) {
      const auto from = std::size_t(order[i]);
      region->loops[i] = loops[from];
      shuffled[i] = parents[from] < 0 ? -1 : place[std::size_t(parents[from])];
    }
    parents = shuffled;
  }
};

TEST(RegionNesting, Planted) {
  Rounds(Cases(30), [](Random& random, int round) {
    Planted planted;
    for (int i = 0; i < 5; ++i) planted.Disc(random, {30. * i, 3. * i}, 8, -1, 3);
    planted.Shuffle(random);
    const double scale = round % 3 == 0 ? 1e-9 : round % 3 == 1 ? 1e8 : 1;
    for (int i = 0; i < planted.region->count; ++i)
      for (int k = 0; k < planted.region->loops[i].count; ++k)
        ForEachPoint(
            planted.region->loops[i].curves[k], [=](double* p) { p[0] *= scale, p[1] *= scale; },
            [=](double& r) { r *= scale; });
    EXPECT_EQ(ParentsOf(*planted.region, 1e-12 * scale), planted.parents);
  });
}

// Apart, in any order, and nests that fill each other: neither may be quadratic.
TEST(RegionNesting, Many) {
  Random random;
  Region apart, nest;
  constexpr int kApart = 100'000, kNest = 1000;
  std::vector<Cvseq> loops;
  Planted discs;
  for (int i = 0; i < kApart; ++i) {
    const int at = static_cast<int>((i * 7919LL) % kApart);  // 7919 is prime to it
    Chain circle(Text("(a", {2.5 * (at % 317), 2.5 * (at / 317), 1, 0, 6.283185307179586}) + ')');
    loops.push_back(circle.Release());
  }
  KurvoRegion region = {kApart, 0, loops.data(), nullptr};
  const Stopwatch watch;
  const auto parents = ParentsOf(region);
  EXPECT_EQ(std::count(parents.begin(), parents.end(), -1), kApart);
  EXPECT_LT(watch.Seconds(), 2);  // .2 s on the machine this was written on
  for (Cvseq& loop : loops) KurvocvFreeCvseq(&loop);

  std::vector<int32_t> want;
  for (int i = 0; i < kNest; ++i) {
    const int at = (i * 7) % kNest;
    nest.Add(Chain(Text("(a", {0, 0, 1. + at, 0, 6.283185307179586}) + ')'));
    want.push_back(at + 1 < kNest ? ((at + 1) * 143) % kNest : -1);  // 7 * 143 = 1001
  }
  EXPECT_EQ(ParentsOf(*nest), want);
}

}  // namespace
}  // namespace kurvo_test
