// Regions of tests.
#pragma once

#include <gtest/gtest.h>
#include <kurvo_outline.h>

#include <string>
#include <utility>
#include <vector>

#include "support/curve_text.h"

namespace kurvo_test {

class Region : public Owner<KurvoRegion, KurvoRegionFree> {
 public:
  Region() = default;
  explicit Region(const std::vector<std::string>& loops, int32_t rule = KURVO_FILL_NONZERO) {
    for (const std::string& loop : loops) Add(Chain(loop));
    record_.rule = rule;
  }
  void Add(const Chain& loop, double gap = 0) {
    Globals g;
    EXPECT_EQ(KurvoRegionAdd(&record_, loop.get(), gap, &g), 1) << KurvoErrGet(&g);
  }
  Region Copied() const {
    Globals g;
    Region copy;
    EXPECT_EQ(KurvoRegionCopy(get(), copy.get(), &g), 1) << KurvoErrGet(&g);
    return copy;
  }
};

// Calls use(curve) for every curve of a region.
template <class Use>
void ForEachCurve(const KurvoRegion& region, const Use& use) {
  for (int i = 0; i < region.count; ++i)
    for (int k = 0; k < region.loops[i].count; ++k) use(region.loops[i].curves[k]);
}

// All bits of a region but its origins.
inline std::pair<std::vector<int32_t>, std::vector<double>> Packed(const KurvoRegion& region) {
  Globals g;
  int32_t *words = nullptr, word_count = 0, number_count = 0;
  double* numbers = nullptr;
  EXPECT_EQ(KurvoRegionPack(&region, &words, &word_count, &numbers, &number_count, &g), 1);
  std::pair<std::vector<int32_t>, std::vector<double>> packed = {{words, words + word_count},
                                                                 {numbers, numbers + number_count}};
  KurvoFree(words);
  KurvoFree(numbers);
  return packed;
}

}  // namespace kurvo_test
