// Regions as records: copies, closing lines, packing and what cannot be unpacked.
#include <kurvo_outline.h>

#include <cstring>

#include "support/generator.h"
#include "support/region.h"

namespace kurvo_test {
namespace {

std::string TextOf(const KurvoRegion& region) {
  std::string text = std::to_string(region.rule);
  for (int i = 0; i < region.count; ++i) {
    text += " loop";
    for (int k = 0; k < region.loops[i].count; ++k) {
      const Curve& curve = region.loops[i].curves[k];
      text += Text(" curve", AllNumbers(curve)) + ' ' + std::to_string(curve.type) + ' ' +
              std::to_string(curve.attr) + ' ' + std::to_string(curve.attr_p1) + ' ' +
              std::to_string(curve.attr_p2);
    }
  }
  return text;
}

// Loops of up to four random curves, joined by lines of the region's own.
Region RandomRegion(Random& random, GlobalVar& g) {
  Region region;
  for (int loops = RandomInt(random, 0, 4); loops > 0; --loops) {
    std::vector<Owned> curves;
    for (int count = RandomInt(random, 0, 4); count > 0; --count) {
      curves.push_back(RandomCurve(random, kAllTypes[RandomInt(random, 0, 6)], 5));
      curves.back()->attr = RandomInt(random, -9, 9);
      curves.back()->attr_p1 = 0xFEDCBA9876543210u + static_cast<unsigned>(count);
    }
    const Chain chain(std::move(curves));
    EXPECT_EQ(KurvoRegionAdd(region.get(), chain.get(), kInfinity, &g), 1);
  }
  region->rule = RandomInt(random, 0, 3);
  return region;
}

TEST(RegionRecords, PackAndCopyKeepEveryBit) {
  Globals g;
  Rounds(Cases(300), [&](Random& random, int) {
    const Region region = RandomRegion(random, g);
    Region copy, again;
    ASSERT_EQ(KurvoRegionCopy(region.get(), copy.get(), &g), 1) << KurvoErrGet(&g);
    int32_t *words, word_count, number_count;
    double* numbers;
    ASSERT_EQ(KurvoRegionPack(region.get(), &words, &word_count, &numbers, &number_count, &g), 1);
    ASSERT_EQ(KurvoRegionUnpack(words, word_count, numbers, number_count, again.get(), &g), 1);
    EXPECT_EQ(TextOf(*copy), TextOf(*region));
    EXPECT_EQ(TextOf(*again), TextOf(*region));

    // One word or number more or fewer never fits; a changed word is refused or another region.
    Region none;
    EXPECT_EQ(KurvoRegionUnpack(words, word_count - 1, numbers, number_count, none.get(), &g), 0);
    KurvoErrReset(&g);
    words[RandomInt(random, 0, word_count - 1)] = RandomInt(random, -2, 1200);
    if (!KurvoRegionUnpack(words, word_count, numbers, number_count, none.get(), &g)) {
      EXPECT_EQ(none->count, 0);
      EXPECT_TRUE(KurvoErrGet(&g) == KURVO_ERR_OPTION || KurvoErrGet(&g) == KURVO_ERR_CURVE ||
                  KurvoErrGet(&g) == KURVO_ERR_NOT_FINITE || KurvoErrGet(&g) == KURVO_ERR_WEIGHT)
          << KurvoErrGet(&g);
      KurvoErrReset(&g);
    }
    KurvoFree(words);
    KurvoFree(numbers);
  });
}

TEST(RegionRecords, AddClosesJoints) {
  struct Row {
    const char* chain;
    double gap;
    int code, curves;
  };
  // clang-format off
  const Row rows[] = {
      {"(l 0 0 1 0)(l 1 0 0 1)(l 0 1 0 0)",         0,         KURVO_ERR_NONE,       3},
      {"(l 0 0 1 0)(l 1 5e-7 0 1)(l 0 1 0 0)",      0,         KURVO_ERR_NONE,       3},
      {"(l 0 0 1 0)(l 1 .25 0 1)(l 0 1 0 0)",       .25,       KURVO_ERR_NONE,       4},
      {"(l 0 0 1 0)(l 1 .25 0 1)(l 0 1 0 0)",       .24,       KURVO_ERR_CHAIN_ENDS, 0},
      {"(l 0 0 1 0)(l 1 0 0 1)",                    0,         KURVO_ERR_CHAIN_ENDS, 0},
      {"(l 0 0 1 0)(l 1 0 0 1)",                    1,         KURVO_ERR_NONE,       3},
      {"(l 0 0 9 9)(l 1 0 0 1)",                    kInfinity, KURVO_ERR_NONE,       4},
      {"(l 0 0 1 0)",                               -1,        KURVO_ERR_TOLERANCE,  0},
      {"(l 0 0 1 0)",                               kNaN,      KURVO_ERR_TOLERANCE,  0},
      {"(e)",                                       1,         KURVO_ERR_CURVE,      0},
      {"(l 0 0 1e308 0)",                           1,         KURVO_ERR_NOT_FINITE, 0},
      {"(r 0 0 0 1 1 1 2 0 1)",                     9,         KURVO_ERR_WEIGHT,     0},
      {"(c 1 (e))",                                 9,         KURVO_ERR_CURVE,      0},
      {"",                                          0,         KURVO_ERR_NONE,       0},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(row.chain);
    Globals g;
    Region region;
    const Chain chain(row.chain);
    EXPECT_EQ(KurvoRegionAdd(region.get(), chain.get(), row.gap, &g), !row.code);
    EXPECT_EQ(KurvoErrGet(&g), row.code);
    ASSERT_EQ(region->count, !row.code);
    if (row.code == KURVO_ERR_NONE) {
      EXPECT_EQ(region->loops[0].count, row.curves);
    }
  }
}

}  // namespace
}  // namespace kurvo_test
