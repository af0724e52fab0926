// Regions written as arrays of plain numbers.
#include <kurvo_outline.h>

#include <bit>
#include <initializer_list>

#include "base/memory.h"
#include "base/refusal.h"
#include "region/check_region.h"
#include "region/packed.h"

namespace kurvo::outline {
namespace {

class Packer {
 public:
  void Region(const KurvoRegion& region) {
    Words({kPackedVersion, region.rule, region.count});
    for (int i = 0; i < region.count; ++i) {
      Words({region.loops[i].count});
      for (int k = 0; k < region.loops[i].count; ++k) Curve(region.loops[i].curves[k]);
    }
  }

  const Array<int32_t>& words() const { return words_; }
  const Array<double>& numbers() const { return numbers_; }

 private:
  void Words(std::initializer_list<int32_t> words) {
    words_.insert(words_.end(), words.begin(), words.end());
  }

  void Curve(const ::Curve& curve) {
    const Sizes sizes = SizesOf(curve);
    Words({curve.type, sizes.first, sizes.second, curve.attr});
    for (const uint64_t word : {curve.attr_p1, curve.attr_p2})
      Words({std::bit_cast<int32_t>(static_cast<uint32_t>(word)),
             std::bit_cast<int32_t>(static_cast<uint32_t>(word >> 32))});
    ForEachArray(curve, [this](const double* at, std::size_t count) {
      numbers_.insert(numbers_.end(), at, at + count);
    });
    if (curve.type != CV_SEGCV) return;
    const auto& composite = *static_cast<const KurvoSegcv*>(curve.data);
    for (int i = 0; i < composite.count; ++i) Curve(composite.curves[i]);
  }

  Array<int32_t> words_;
  Array<double> numbers_;
};

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoRegionPack(const KurvoRegion* region, int32_t** words, int32_t* word_count,
                               double** numbers, int32_t* number_count, GlobalVar* g) noexcept {
  const bool has_outputs = words && word_count && numbers && number_count;
  if (words) *words = nullptr;
  if (numbers) *numbers = nullptr;
  if (word_count) *word_count = 0;
  if (number_count) *number_count = 0;
  return Answer(g, [&] {
    Require(has_outputs, KURVO_ERR_OPTION);
    Bounds unused;
    CheckRegion(region, unused);
    Packer packer;
    packer.Region(*region);
    Handed<int32_t> all_words(packer.words());
    Handed<double> all_numbers(packer.numbers());
    *word_count = CountOf(packer.words().size());
    *number_count = CountOf(packer.numbers().size());
    *words = all_words.Release();
    *numbers = all_numbers.Release();
  });
}
