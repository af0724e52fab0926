// Chains of loose curves: what was taken apart comes together again.
#include <kurvo_outline.h>

#include <algorithm>
#include <map>

#include "support/generator.h"
#include "support/region.h"

namespace kurvo_test {
namespace {

struct Joined {
  Region closed, open;
  KurvoReport report;
  int code;
};

Joined Join(const std::vector<Curve>& curves, double gap = 0, double tol = 0) {
  Joined joined;
  Globals g;
  KurvoOptions options = {};
  options.size = sizeof options;
  options.tol = tol;
  options.gap = gap;
  KurvoChainJoin(curves.data(), static_cast<int32_t>(curves.size()), &options, joined.closed.get(),
                 joined.open.get(), &joined.report, &g);
  joined.code = KurvoErrGet(&g);
  return joined;
}

// How many curves the chains have, "3 4" for two.
std::string Sizes(const KurvoRegion& region) {
  std::string sizes;
  for (int i = 0; i < region.count; ++i)
    sizes += (i ? " " : "") + std::to_string(region.loops[i].count);
  return sizes;
}

TEST(ChainJoin, Table) {
  struct Row {
    const char* curves;
    double gap;
    const char *closed, *open;
    int gaps, dropped;
  };
  // clang-format off
  const Row rows[] = {
      {"", 0, "", "", 0, 0},
      {"(l 0 0 1 0)(l 0 1 1 0)(l 0 1 0 0)", 0, "3", "", 0, 0},
      {"(l 0 0 1 0)(l 0 1 1 0)", 0, "", "2", 0, 0},
      {"(l 0 0 1 0)(l 1.1 0 2 0)", 0, "", "1 1", 0, 0},
      {"(l 0 0 1 0)(l 1.1 0 2 0)", .11, "", "3", 1, 0},
      {"(l 0 0 1 0)(l 1.1 0 2 0)", kInfinity, "4", "", 2, 0},
      {"(a 0 0 1 0 6.283185307179586)(l 3 3 4 4)", 1, "1", "1", 0, 0},
      {"(l 0 0 1 0)(l 0 0 1 0)(l 1 0 0 0)(l 1 0 2 0)", 0, "", "2", 0, 2},
      // at a crossroads straight on
      {"(l 0 0 1 0)(l 1 0 1 1)(l 1 0 2 0)(l 1 -1 1 0)", 0, "", "2 2", 0, 0},
      // of a figure of eight both loops at once, through the crossing
      {"(l 0 0 1 1)(l 1 1 1 -1)(l 1 -1 0 0)(l 0 0 -1 1)(l -1 1 -1 -1)(l -1 -1 0 0)", 0, "6", "", 0, 0},
      {"(b 0 0 1 1 2 0)(r 2 0 1 1 -1 2 0 0 1)(B 9 9 8 8 7 9 6 6 | 0 0 0 1 2 2 2)", 0, "2", "1", 0, 0},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(row.curves);
    const Chain chain(row.curves);
    const Joined joined = Join({chain.begin(), chain.end()}, row.gap);
    EXPECT_EQ(joined.code, KURVO_ERR_NONE);
    EXPECT_EQ(Sizes(*joined.closed), row.closed);
    EXPECT_EQ(Sizes(*joined.open), row.open);
    EXPECT_EQ(joined.report.gaps, row.gaps);
    EXPECT_EQ(joined.report.dropped, row.dropped);
  }
}

// Every curve of the chains has the number of its source, and starts where the one before it ends.
void ExpectWhole(const KurvoRegion& region, double epsilon, bool closed,
                 std::map<int, int>& chain_of) {
  Globals g;
  for (int i = 0; i < region.count; ++i) {
    const Cvseq& loop = region.loops[i];
    for (int k = 0; k < loop.count; ++k) {
      EXPECT_TRUE(chain_of.emplace(loop.curves[k].attr, closed ? i : -i - 1).second);
      if (k + 1 == loop.count && !closed) continue;
      Coord end, start;
      KurvocvEndPoint(&loop.curves[k], end, &g);
      KurvocvStartPoint(&loop.curves[(k + 1) % loop.count], start, &g);
      EXPECT_LE(KurvoclDistPoint(end, start), epsilon);
    }
  }
}

TEST(ChainJoin, PutsTogetherWhatWasTakenApart) {
  Rounds(Cases(200), [](Random& random, int) {
    std::vector<Owned> owned;
    std::vector<int> chains;
    const int count = RandomInt(random, 1, 6);
    int closed = 0;
    for (int i = 0; i < count; ++i) {
      const bool is_closed = Chance(random, .5);
      closed += is_closed;
      const XY start = RandomPlace(random);
      const int curves = RandomInt(random, 3, 6);  // of two lines one would be dropped
      XY at = start;
      for (int k = 0; k < curves; ++k) {
        const XY next = is_closed && k + 1 == curves ? start : RandomPlace(random);
        owned.push_back(RandomBetween(random, at, next));
        chains.push_back(i);
        at = next;
      }
    }
    std::vector<Curve> curves;
    Globals g;
    for (std::size_t i = 0; i < owned.size(); ++i) {
      owned[i]->attr = static_cast<int32_t>(i);
      if (Chance(random, .5)) KurvocvChgOrder(owned[i].get(), &g);
      curves.push_back(*owned[i]);
    }
    for (std::size_t i = curves.size(); i > 1; --i)
      std::swap(curves[i - 1],
                curves[static_cast<std::size_t>(RandomInt(random, 0, static_cast<int>(i) - 1))]);

    const Joined joined = Join(curves);
    ASSERT_EQ(joined.code, KURVO_ERR_NONE);
    ASSERT_EQ(joined.closed->count, closed);
    ASSERT_EQ(joined.open->count, count - closed);
    std::map<int, int> chain_of;
    ExpectWhole(*joined.closed, g.epsilon, true, chain_of);
    ExpectWhole(*joined.open, g.epsilon, false, chain_of);
    ASSERT_EQ(chain_of.size(), curves.size());
    for (std::size_t i = 0; i < chains.size(); ++i)
      for (std::size_t k = 0; k < i; ++k)
        EXPECT_EQ(chain_of[int(i)] == chain_of[int(k)], chains[i] == chains[k]);
  });
}

}  // namespace
}  // namespace kurvo_test
