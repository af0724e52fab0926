// Narrowest boxes against extremes found in long double.
#include <kurvo_outline.h>

#include "outline/wide.h"
#include "support/generator.h"

namespace kurvo_test {
namespace {

TEST(ChainTightBox, ClosedForms) {
  struct Row {
    const char* chain;
    double low_x, low_y, high_x, high_y;
  };
  // clang-format off
  const Row rows[] = {
      {"",                                          0, 0, 0, 0},
      {"(c)",                                       0, 0, 0, 0},
      {"(l 3 2 1 5)",                               1, 2, 3, 5},
      {"(b 4 7)",                                   4, 7, 4, 7},
      {"(a 0 0 1 -.5 2.5)",                         std::cos(2.), -std::sin(.5), 1, 1},
      {"(a 0 0 2 1 6)",                             -2, -2, 2, 2},
      {"(b 0 0 0 4 0 0)",                           0, 0, 0, 2},
      {"(b 0 0 0 3 1 3 1 0)",                       0, 0, 1, 2.25},
      {"(b 0 0 1 0 1 0 0 0)",                       0, 0, .75, 0},
      {"(b 0 0 1 0 2 1 3 0 4 0)",                   0, 0, 4, .375},
      {"(r 1 0 1 1 1 -.70710678118654752 0 1 1)",   -1, -1, 1, 1},
      {"(B 0 0 0 2 2 2 2 0 | 0 0 0 .5 1 1 1)",      0, 0, 2, 2},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(row.chain);
    Globals g(9);
    Box box;
    ASSERT_EQ(KurvoChainTightBox(Chain(row.chain).get(), box, &g), 1) << KurvoErrGet(&g);
    const double want[] = {row.low_x, row.low_y, 0, row.high_x, row.high_y, 0};
    for (int i = 0; i < 6; ++i) EXPECT_NEAR(box[i], want[i], 1e-14) << i;
  }
}

TEST(ChainTightBox, LongDouble) {
  Rounds(Cases(120), [](Random& random, int round) {
    const int degree = round % 10 == 0 ? 63 : round % 3 == 0 ? RandomInt(random, 4, 30) : 3;
    std::vector<Owned> curves;
    curves.push_back(RandomCurve(random, kAllTypes[RandomInt(random, 0, 6)], degree));
    const Chain chain(std::move(curves));
    Wide want[] = {1e9L, 1e9L, -1e9L, -1e9L};
    const auto add = [&want](const WideAt& at) {
      want[0] = std::min(want[0], at.x);
      want[1] = std::min(want[1], at.y);
      want[2] = std::max(want[2], at.x);
      want[3] = std::max(want[3], at.y);
    };
    for (const Oracle::Part& part : Oracle(chain[0]).Parts()) {
      constexpr int kSamples = 256;
      for (int i = 0; i <= kSamples; ++i) add(AtPart(part, Wide{1} * i / kSamples));
      for (int i = 0; i < kSamples; ++i) {  // where a velocity changes sign: halve
        for (const auto speed : {&WideAt::dx, &WideAt::dy}) {
          Wide low = Wide{1} * i / kSamples, high = Wide{1} * (i + 1) / kSamples;
          const Wide sense = AtPart(part, low).*speed;
          if (sense * AtPart(part, high).*speed >= 0) continue;
          for (int step = 0; step < 40; ++step) {
            const Wide middle = (low + high) / 2;
            (sense * AtPart(part, middle).*speed > 0 ? low : high) = middle;
          }
          add(AtPart(part, low));
        }
      }
    }
    Globals g(kInfinity);
    Box box;
    ASSERT_EQ(KurvoChainTightBox(chain.get(), box, &g), 1) << KurvoErrGet(&g);
    const Wide size = std::max(want[2] - want[0], want[3] - want[1]);
    const double got[] = {box[0], box[1], box[3], box[4]};
    for (int i = 0; i < 4; ++i)
      EXPECT_GE(1e-12L * size, std::fabs(got[i] - want[i]))
          << i << ' ' << got[i] << ' ' << static_cast<double>(want[i]);
  });
}

}  // namespace
}  // namespace kurvo_test
