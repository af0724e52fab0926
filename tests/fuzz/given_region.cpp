// Chains that the bytes of a fuzzer stand for: a packed region, in the form that KurvoRegionPack
// writes, of words and numbers in two bytes each. What KurvoRegionUnpack refuses stands for none.
#include "fuzz/given_region.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

#include "support/basics.h"

namespace kurvo_test {
namespace {

constexpr int kGreatest = 32000;  // whose 64th part is a number; those beyond are the ones below
constexpr double kOthers[] = {kNaN,   kInfinity, 1e308, 1e-308, 1e150,
                              1e-150, 1e9,       1e-9,  1e6,    0x1p-40};

int Word(const uint8_t* bytes) { return static_cast<int16_t>(bytes[0] | bytes[1] << 8); }

double Number(int word) {
  const int beyond = std::abs(word) - kGreatest - 1;
  if (beyond < 0) return word / 64.;
  return (word < 0 ? -1 : 1) * kOthers[static_cast<std::size_t>(beyond) % std::size(kOthers)];
}

}  // namespace

const Gallery* TakeGiven(std::span<const uint8_t>& bytes) {
  static std::unique_ptr<Gallery> given;
  if (bytes.size() < 2) return nullptr;
  const std::size_t all = bytes.size() / 2 - 1, words = std::min<std::size_t>(bytes[0], all),
                    numbers = std::min<std::size_t>(bytes[1], all - words);
  std::vector<int32_t> word_list(words);
  std::vector<double> number_list(numbers);
  const uint8_t* next = &bytes[2];
  for (int32_t& word : word_list) word = Word(std::exchange(next, next + 2));
  for (double& number : number_list) number = Number(Word(std::exchange(next, next + 2)));
  bytes = bytes.subspan(2 * (1 + words + numbers));
  KurvoRegion region;
  Globals g;
  KurvoRegionUnpack(word_list.data(), static_cast<int32_t>(words), number_list.data(),
                    static_cast<int32_t>(numbers), &region, &g);
  given = std::make_unique<Gallery>(region);
  KurvoRegionFree(&region);
  return given->empty() ? nullptr : given.get();
}

}  // namespace kurvo_test
