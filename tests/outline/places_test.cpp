// Places at lengths and lengths at places: each the other's inverse.
#include <kurvo_outline.h>

#include <algorithm>

#include "outline/random_chain.h"
#include "outline/wide.h"

namespace kurvo_test {
namespace {

TEST(ChainPlaces, AreInverseToLengths) {
  Rounds(Cases(150), [](Random& random, int round) {
    const bool closed = round % 2 == 0;
    const Chain chain = RandomChain(random, closed);
    Globals g;
    double whole;
    ASSERT_EQ(KurvoChainLength(chain.get(), &whole, &g), 1) << KurvoErrGet(&g);
    Numbers lengths, again(40);
    for (int i = 0; i < 40; ++i) lengths.push_back(random.Uniform(0, whole));
    std::vector<KurvoPlace> places(40), later(40);
    ASSERT_EQ(KurvoChainPlaces(chain.get(), lengths.data(), 40, places.data(), &g), 1);
    ASSERT_EQ(KurvoChainLengths(chain.get(), places.data(), 40, again.data(), &g), 1);
    for (std::size_t i = 0; i < 40; ++i) {
      ASSERT_NEAR(again[i], lengths[i], 1e-12 * whole);
      const auto& curve = chain[places[i].index];
      const double* at = places[i].point;
      const double* tangent = places[i].tangent;
      const Oracle oracle(curve);
      EXPECT_GE(1e-12 * kSize, oracle.DistanceAt(places[i].t, at));
      const LongPoint velocity = oracle.JetAt<4>(places[i].t).Derivative(1);
      EXPECT_NEAR(std::hypot(tangent[0], tangent[1]), 1, 1e-14);
      EXPECT_GE(1e-9 * std::hypot(velocity.x, velocity.y),
                std::fabs(velocity.x * tangent[1] - velocity.y * tangent[0]));
      EXPECT_GT(velocity.x * tangent[0] + velocity.y * tangent[1], 0);
    }
    if (!closed) return;
    for (double& length : lengths) length += whole * RandomInt(random, -3, 3);
    ASSERT_EQ(KurvoChainPlaces(chain.get(), lengths.data(), 40, later.data(), &g), 1);
    for (std::size_t i = 0; i < 40; ++i)
      EXPECT_GE(1e-13 * whole, std::hypot(later[i].point[0] - places[i].point[0],
                                          later[i].point[1] - places[i].point[1]));
  });
}

TEST(ChainPlaces, AtJointsAndEnds) {
  struct Row {
    const char* chain;
    double length;
    int code, index;
    double t;
  };
  constexpr auto kOpen = "(l 0 0 3 0)(l 3 0 3 0)(B 3 0 3 3 | 5 5 7 7)";
  constexpr auto kClosed = "(l 0 0 3 0)(l 3 0 3 4)(l 3 4 0 0)";
  constexpr auto kCusp = "(b 0 0 1 0 1 0 0 0)";  // turns at .5, .75 along
  constexpr auto kTiny = "(l 0 0 1e-9 0)(l 1e-9 0 2e-9 0)";
  // clang-format off
  const Row rows[] = {
      {kOpen,   0,            KURVO_ERR_NONE,       0, 0},
      {kOpen,   1.5,          KURVO_ERR_NONE,       0, .5},
      {kOpen,   3,            KURVO_ERR_NONE,       2, 5},
      {kOpen,   3 - 4e-16,    KURVO_ERR_NONE,       2, 5},
      {kOpen,   6,            KURVO_ERR_NONE,       2, 7},
      {kOpen,   6 + 9e-7,     KURVO_ERR_NONE,       2, 7},
      {kOpen,   -9e-7,        KURVO_ERR_NONE,       0, 0},
      {kOpen,   6 + 2e-6,     KURVO_ERR_RANGE,      0, 0},
      {kOpen,   -2e-6,        KURVO_ERR_RANGE,      0, 0},
      {kOpen,   kNaN,         KURVO_ERR_NOT_FINITE, 0, 0},
      {kOpen,   kInfinity,    KURVO_ERR_NOT_FINITE, 0, 0},
      {kClosed, 12,           KURVO_ERR_NONE,       0, 0},
      {kClosed, 7 - 12e3,     KURVO_ERR_NONE,       2, 0},
      {kClosed, -6,           KURVO_ERR_NONE,       1, .75},
      {kClosed, kInfinity,    KURVO_ERR_NOT_FINITE, 0, 0},
      {kCusp,   .75,          KURVO_ERR_NONE,       0, .5},
      {kTiny,   1.5e-9,       KURVO_ERR_NONE,       1, .5},
      {"(l 2 2 2 2)", 5,      KURVO_ERR_NONE,       0, 0},
      {"",      7,            KURVO_ERR_NONE,       0, 0},
      {"(c)",   7,            KURVO_ERR_NONE,       0, 0},
      {"(l 0 0 1 0)(l 2 0 3 0)", 0, KURVO_ERR_CHAIN_ENDS, 0, 0},
      {"(e)",   0,            KURVO_ERR_CURVE,      0, 0},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.chain) + ' ' + std::to_string(row.length));
    Globals g;
    KurvoPlace place = {-1, -1, -1, {}, {}};
    EXPECT_EQ(KurvoChainPlaces(Chain(row.chain).get(), &row.length, 1, &place, &g), !row.code);
    EXPECT_EQ(KurvoErrGet(&g), row.code);
    EXPECT_EQ(place.index, row.code ? -1 : row.index);
    // Beside a cusp the parameter is known to the root of the length's precision only.
    EXPECT_NEAR(place.t, row.code ? -1 : row.t, row.chain == kCusp ? 1e-7 : 1e-14);
  }
}

TEST(ChainLengths, Refusals) {
  struct Row {
    int32_t index;
    double t;
    int code;
    double length;
  };
  const Chain chain("(l 0 0 3 0)(c)(B 3 0 3 3 | 5 5 7 7)");
  // clang-format off
  const Row rows[] = {
      {0, .5,       KURVO_ERR_NONE,       1.5},
      {0, 1,        KURVO_ERR_NONE,       3},
      {0, 1 + 9e-10, KURVO_ERR_NONE,      3},
      {0, -9e-10,   KURVO_ERR_NONE,       0},
      {2, 7,        KURVO_ERR_NONE,       6},
      {0, 1.001,    KURVO_ERR_RANGE,      0},
      {0, -1e-8,    KURVO_ERR_RANGE,      0},
      {1, 0,        KURVO_ERR_RANGE,      0},
      {2, 4.9,      KURVO_ERR_RANGE,      0},
      {3, 0,        KURVO_ERR_RANGE,      0},
      {-1, 0,       KURVO_ERR_RANGE,      0},
      {0, kNaN,     KURVO_ERR_NOT_FINITE, 0},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(std::to_string(row.index) + ' ' + std::to_string(row.t));
    Globals g;
    // The rest of a place is not read.
    const KurvoPlace places[] = {{0, 0, 0, {}, {}},
                                 {row.index, 7, row.t, {kNaN, kNaN, kNaN}, {kNaN, kNaN, kNaN}}};
    double lengths[] = {-1, -1};
    EXPECT_EQ(KurvoChainLengths(chain.get(), places, 2, lengths, &g), !row.code);
    EXPECT_EQ(KurvoErrGet(&g), row.code);
    EXPECT_NEAR(lengths[1], row.code ? -1 : row.length, 1e-8 * (row.length > 0));
    EXPECT_EQ(lengths[0], row.code ? -1 : 0);
  }
  Globals g;
  double length;
  KurvoPlace place;
  for (const int32_t n : {-1, 1}) {
    EXPECT_EQ(KurvoChainLengths(chain.get(), nullptr, n, &length, &g), 0);
    EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_OPTION);
    KurvoErrReset(&g);
    EXPECT_EQ(KurvoChainPlaces(chain.get(), &length, n, n < 0 ? &place : nullptr, &g), 0);
    EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_OPTION);
    KurvoErrReset(&g);
  }
}

}  // namespace
}  // namespace kurvo_test
