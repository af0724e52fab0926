#include "chain/foot.h"

#include <algorithm>
#include <cmath>

namespace kurvo::outline {
namespace {

// Distances that differ by less are one. Rounding of coordinates is about a quarter of it.
constexpr double kTieShare = 0x1p-49;   // of the distance
constexpr double kTieLength = 0x1p-50;  // in a frame, of size about 1
// The same for bounds, which are compared as squares and come in other coordinates too.
constexpr double kBoundShare = 0x1p-40;
constexpr double kBoundSquare = 0x1p-60;

bool IsEarlier(const Foot& a, const Foot& b) {
  return a.curve != b.curve ? a.curve < b.curve : a.t < b.t;
}

}  // namespace

void Feet::Assume(double squared_distance) {
  limit_ = std::min(limit_, squared_distance + (kBoundShare * squared_distance + kBoundSquare));
}

void Feet::Add(const Span& span, std::size_t number, double u, double squared_distance) {
  const Foot foot = {
      std::sqrt(squared_distance), span.curve, span.ParameterAt(u), span.from, number, u};
  least_ = std::min(least_, foot.distance);
  Assume(squared_distance);
  const double tie = least_ + (kTieShare * least_ + kTieLength);
  if (foot.distance > tie) return;
  int kept = 0;
  bool counts = true;
  for (int i = 0; i < count_; ++i) {
    const Foot& other = feet_[i];
    const bool is_earlier = IsEarlier(other, foot);
    if (other.distance > tie || (!is_earlier && other.distance >= foot.distance)) continue;
    if (is_earlier && other.distance <= foot.distance) counts = false;
    feet_[kept++] = other;
  }
  count_ = kept;
  if (counts) feet_[std::min(count_++, kMost - 1)] = foot;
  count_ = std::min(count_, kMost);
}

const Foot& Feet::First() const { return *std::min_element(feet_, feet_ + count_, IsEarlier); }

}  // namespace kurvo::outline
