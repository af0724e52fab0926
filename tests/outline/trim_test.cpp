// Parts of chains: they lie on them, add up to them, and keep their types.
#include <kurvo_outline.h>

#include <algorithm>

#include "outline/random_chain.h"

namespace kurvo_test {
namespace {

double LengthOf(const Cvseq* chain) {
  Globals g;
  double length = kNaN;
  EXPECT_EQ(KurvoChainLength(chain, &length, &g), 1) << KurvoErrGet(&g);
  return length;
}

KurvoPlace PlaceAt(const Cvseq* chain, double length) {
  Globals g;
  KurvoPlace place = {};
  EXPECT_EQ(KurvoChainPlaces(chain, &length, 1, &place, &g), 1) << KurvoErrGet(&g);
  return place;
}

bool Same(const Coord& a, const Coord& b) { return a[0] == b[0] && a[1] == b[1]; }

// `part` is the stretch of `chain` that begins at a length.
void ExpectStretch(const Chain& chain, const Chain& part, double from, double whole, bool closed) {
  const double length = LengthOf(part.get());
  for (int i = 0; i <= 8; ++i) {
    // Off the ends, behind which a closed chain goes on.
    const double at = length * std::clamp(i / 8., 1e-9, 1 - 1e-9);
    const KurvoPlace got = PlaceAt(part.get(), at);
    const KurvoPlace want = PlaceAt(chain.get(), closed ? std::fmod(from + at, whole) : from + at);
    EXPECT_NEAR(got.point[0], want.point[0], 1e-11 * kSize);
    EXPECT_NEAR(got.point[1], want.point[1], 1e-11 * kSize);
    EXPECT_EQ(part[got.index].type, chain[want.index].type);
    EXPECT_EQ(part[got.index].attr, chain[want.index].attr);
  }
}

TEST(ChainTrim, PartsAddUp) {
  Rounds(Cases(150), [](Random& random, int round) {
    const bool closed = round % 2 == 0;
    const Chain chain = RandomChain(random, closed);
    for (int i = 0; i < chain.count(); ++i) chain[i].attr = i + 1;
    const double whole = LengthOf(chain.get());
    Numbers cuts = {0, 1};
    for (int i = 0; i < 4; ++i) cuts.push_back(random.Uniform(0, 1));
    if (Chance(random, .5)) cuts.push_back(cuts.back() + 1e-8);  // a part of next to nothing
    std::sort(cuts.begin(), cuts.end());
    Globals g;
    double sum = 0;
    Chain before;
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
      const KurvoPlace from = PlaceAt(chain.get(), cuts[i] * whole);
      KurvoPlace to = PlaceAt(chain.get(), cuts[i + 1] * whole);
      if (closed && i + 2 == cuts.size()) to = {chain.count() - 1, 0, 7, {}, {}};
      if (closed && i + 2 == cuts.size())
        to.t = Domain(chain[to.index]).first + Domain(chain[to.index]).second;
      Chain part;
      ASSERT_EQ(KurvoChainTrim(chain.get(), &from, &to, part.get(), &g), 1) << KurvoErrGet(&g);
      ASSERT_GT(part.count(), 0);
      sum += LengthOf(part.get());
      ExpectStretch(chain, part, cuts[i] * whole, whole, closed);
      if (before.count() > 0) {
        Point end, start;
        KurvocvEndPoint(&before[before.count() - 1], end, &g);
        KurvocvStartPoint(&part[0], start, &g);
        EXPECT_NEAR(end[0], start[0], 1e-14 * kSize);
        EXPECT_NEAR(end[1], start[1], 1e-14 * kSize);
      }
      before = std::move(part);
    }
    EXPECT_NEAR(sum, whole, 1e-12 * whole);

    const KurvoPlace somewhere = PlaceAt(chain.get(), cuts[1] * whole);
    Chain loop;
    EXPECT_EQ(KurvoChainTrim(chain.get(), &somewhere, &somewhere, loop.get(), &g), 1);
    EXPECT_EQ(loop.count() > 0, closed);
    if (!closed) return;
    EXPECT_NEAR(LengthOf(loop.get()), whole, 1e-12 * whole);
    ExpectStretch(chain, loop, cuts[1] * whole, whole, true);
  });
}

TEST(ChainTrim, Cases) {
  struct Row {
    const char* chain;
    int32_t from_index;
    double from;
    int32_t to_index;
    double to;
    int code;
    const char* parts;
  };
  constexpr auto kOpen = "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 8 4)";
  constexpr auto kClosed = "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 0)";
  constexpr auto kMixed = "(c .25 .25 .5 (l 0 0 4 0)(l 4 0 4 4)(B 4 4 8 4 | 0 0 1 1))";
  // clang-format off
  const Row rows[] = {
      {kOpen,   0, .25, 2, .5,    KURVO_ERR_NONE,  "(l 1 0 4 0)(l 4 0 4 4)(l 4 4 6 4)"},
      {kOpen,   1, .25, 1, .5,    KURVO_ERR_NONE,  "(l 4 1 4 2)"},
      {kOpen,   0, 1,   2, 0,     KURVO_ERR_NONE,  "(l 4 0 4 4)"},
      {kOpen,   0, 0,   2, 1,     KURVO_ERR_NONE,  kOpen},
      {kOpen,   1, .5,  1, .5,    KURVO_ERR_NONE,  ""},
      {kOpen,   0, 1,   1, 0,     KURVO_ERR_NONE,  ""},
      {kOpen,   1, .5,  1, .25,   KURVO_ERR_RANGE, ""},
      {kOpen,   2, 0,   1, 1,     KURVO_ERR_RANGE, ""},
      {kOpen,   0, 0,   3, 0,     KURVO_ERR_RANGE, ""},
      {kOpen,   0, -.1, 1, 0,     KURVO_ERR_RANGE, ""},
      {kOpen,   0, kNaN, 1, 0,    KURVO_ERR_NOT_FINITE, ""},
      {kClosed, 1, .5,  0, .5,    KURVO_ERR_NONE,  "(l 4 2 4 4)(l 4 4 0 0)(l 0 0 2 0)"},
      {kClosed, 0, .5,  0, .5,    KURVO_ERR_NONE,  "(l 2 0 4 0)(l 4 0 4 4)(l 4 4 0 0)(l 0 0 2 0)"},
      {kClosed, 1, 0,   1, 0,     KURVO_ERR_NONE,  "(l 4 0 4 4)(l 4 4 0 0)(l 0 0 4 0)"},
      {kClosed, 2, 1,   0, 0,     KURVO_ERR_NONE,  ""},
      {kMixed,  0, .125, 0, .75,  KURVO_ERR_NONE,  "(c .2 .4 .4 (l 2 0 4 0)(l 4 0 4 4)(B 4 4 6 4 | 0 0 1 1))"},
      {kMixed,  0, .25, 0, .5,    KURVO_ERR_NONE,  "(c 1 (l 4 0 4 4))"},
      {"(b 0 0 2 0 2 2)", 0, .5, 0, 1,  KURVO_ERR_NONE, "(b 1.5 .5 2 1 2 2)"},
      {"(r 0 0 1 2 0 1 2 2 1)", 0, 0, 0, .5,  KURVO_ERR_NONE, "(r 0 0 1 1 0 1 1.5 .5 1)"},
      {"(B 0 0 4 0 4 4 8 4 | 3 3 4 5 6 6)", 0, 3.5, 0, 5.5, KURVO_ERR_NONE,
       "(B 2 0 4 0 4 4 6 4 | 0 0 .25 .75 1 1)"},
      {"(B 0 0 4 0 4 4 | 0 1 2 3 4 5)", 0, 2.5, 0, 3, KURVO_ERR_NONE, "(B 3.5 .5 4 1 4 4 | 0 0 0 1 3 5)"},
      {"(l 0 0 1 0)(l 2 0 3 0)", 0, 0, 1, 1,  KURVO_ERR_CHAIN_ENDS, ""},
      {"(e)",   0, 0,   0, 1,     KURVO_ERR_CURVE, ""},
      {"",      0, 0,   0, 1,     KURVO_ERR_RANGE, ""},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.chain) + " to " + row.parts);
    Globals g;
    const Chain want(row.parts);
    Chain got;
    const KurvoPlace from = {row.from_index, 0, row.from, {}, {}};
    const KurvoPlace to = {row.to_index, 0, row.to, {}, {}};
    EXPECT_EQ(KurvoChainTrim(Chain(row.chain).get(), &from, &to, got.get(), &g), !row.code);
    EXPECT_EQ(KurvoErrGet(&g), row.code);
    ASSERT_EQ(got.count(), want.count());
    for (int i = 0; i < want.count(); ++i) EXPECT_TRUE(IsCurve(got[i], want[i], 1e-15));
  }
}

// A circle in one record leaves as arcs of at most half a turn.
TEST(ChainTrim, FullCircles) {
  struct Row {
    double from, to;
    int arcs;
    double turn;
  };
  for (const Row& row : {Row{0, 0, 4, 1},
                         {.3, .3, 4, 1},
                         {1, 1, 4, 1},
                         {0, 1, 4, 1},
                         {.25, .75, 1, .5},
                         {.1, .8, 2, .7},
                         {.8, .1, 2, .3}}) {
    SCOPED_TRACE(std::to_string(row.from) + ' ' + std::to_string(row.to));
    Chain circle("(a 3 4 5 1 1)");
    auto& arc = *static_cast<KurvoArc*>(circle[0].data);
    arc.normal[2] = -1;
    KurvoclCopyVector(arc.start, arc.end);
    const KurvoPlace from = {0, 0, row.from, {}, {}}, to = {0, 0, row.to, {}, {}};
    Globals g;
    Chain part;
    ASSERT_EQ(KurvoChainTrim(circle.get(), &from, &to, part.get(), &g), 1);
    EXPECT_EQ(part.count(), row.arcs);
    EXPECT_NEAR(LengthOf(part.get()), 10 * 3.14159265358979324 * row.turn, 1e-13);
    for (int i = 0; i + 1 < part.count(); ++i)
      EXPECT_TRUE(Same(static_cast<KurvoArc*>(part[i].data)->end,
                       static_cast<KurvoArc*>(part[i + 1].data)->start));
    if (row.turn == 1) {
      EXPECT_TRUE(Same(static_cast<KurvoArc*>(part[3].data)->end,
                       static_cast<KurvoArc*>(part[0].data)->start));
    }
  }
  Globals g;
  Chain chain("(l 0 0 1 0)");
  const KurvoPlace place = {};
  EXPECT_EQ(KurvoChainTrim(chain.get(), &place, &place, chain.get(), &g), 0);
  EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_OPTION);
  EXPECT_EQ(chain.count(), 1);
}

}  // namespace
}  // namespace kurvo_test
