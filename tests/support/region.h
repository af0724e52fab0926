// Regions of tests.
#pragma once

#include <gtest/gtest.h>
#include <kurvo_outline.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/generator.h"

namespace kurvo_test {

class Region : public Owner<KurvoRegion, KurvoRegionFree> {
 public:
  Region() = default;
  explicit Region(const std::vector<std::string>& loops, int32_t rule = KURVO_FILL_NONZERO) {
    for (const std::string& loop : loops) Add(Chain(loop));
    record_.rule = rule;
  }
  // Loops with semicolons between them.
  explicit Region(const char* loops) {
    std::istringstream text(loops);
    for (std::string loop; std::getline(text, loop, ';');) Add(Chain(loop));
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

inline KurvoOptions OptionsOf(double tol = 0, double gap = 0) {
  KurvoOptions options = {};
  options.size = sizeof options;
  options.flags = KURVO_WITH_ORIGINS;
  options.tol = tol;
  options.gap = gap;
  return options;
}

// The sum over its loops, each by itself.
inline double AreaOfLoops(const KurvoRegion& region) {
  Globals g;
  double area = 0;
  for (int i = 0; i < region.count; ++i) {
    KurvoMoments moments;
    EXPECT_EQ(KurvoChainMoments(&region.loops[i], &moments, &g), 1);
    area += moments.area;
  }
  return area;
}

// 1: inside, 0: on a loop, -1: outside.
inline int32_t Where(const KurvoRegion& region, const Point& q) {
  Globals g;
  int32_t where = 0;
  EXPECT_EQ(KurvoRegionLocate(&region, q.data(), 1, &where, nullptr, &g), 1);
  return where;
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

// A point beside a curve of a region, by up to five times tol; anywhere where that has none.
inline XY PlaceBeside(Random& random, const KurvoRegion& region, double tol) {
  if (region.count == 0) return RandomPlace(random, 9);
  const Cvseq& loop = region.loops[RandomInt(random, 0, region.count - 1)];
  const Point p = PointAt(loop.curves[RandomInt(random, 0, loop.count - 1)], random.Uniform(0, 1));
  return {p[0] + random.Uniform(-5, 5) * tol, p[1] + random.Uniform(-5, 5) * tol};
}

}  // namespace kurvo_test
