// What the intersection of two curves passes around.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "foundation/point.h"
#include "foundation/short_vector.h"
#include "kurvo.h"

namespace kurvo {

constexpr double kShallowCrossing = 1e-4;  // radians; curves that cross at less touch

// One common point: its parameter on the first and on the second curve.
struct Crossing {
  double first;
  double second;
  // The curves come within the tolerance here without crossing at more than a shallow angle. All
  // touches along one run within the tolerance are one contact, and none beside a crossing.
  bool touch = false;
  // Within the tolerance of both points, where crossings are still to be merged.
  Vec2 place{};
};

using Crossings = ShortVector<Crossing, 8>;

// Such crossings are one, whatever lies between.
inline bool SameParameters(const Crossing& x, const Crossing& y, double param_tol) {
  return param_tol >= std::fabs(x.first - y.first) && param_tol >= std::fabs(x.second - y.second);
}

// Ascending along the first curve; equal ones stay in their order.
inline void SortByFirst(Crossings& crossings) {
  const auto before = [](const Crossing& x, const Crossing& y) { return x.first < y.first; };
  constexpr std::size_t kFew = 16;  // are sorted without memory
  if (crossings.size() > kFew) return std::stable_sort(crossings.begin(), crossings.end(), before);
  for (Crossing* at = crossings.begin(); at != crossings.end(); ++at)
    std::rotate(std::upper_bound(crossings.begin(), at, *at, before), at, at + 1);
}

inline void DropNotFinite(Crossings& crossings) {
  crossings.erase_if(
      [](const Crossing& at) { return !std::isfinite(at.first) || !std::isfinite(at.second); });
}

// What two curves, or parts of them, have in common.
enum class Common : uint32_t {
  kPoints = KURVO_FOUND,     // the crossings that were collected
  kStretch = KURVO_OVERLAP,  // infinitely many points
  kNothing = KURVO_NOTHING
};

// Which curves end at their end points; the others go on along their line or circle.
struct Bounded {
  bool first;
  bool second;

  bool both() const { return first && second; }
};

}  // namespace kurvo
