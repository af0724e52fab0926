// Crossings of strands that need no search: at an angle, away from the ends.
#pragma once

#include <optional>

#include "pair/near_search.h"
#include "sweep/strand.h"

namespace kurvo::outline {

inline constexpr double kSameSide = 0x1p-20;  // of tol: sides that differ by no more at a crossing

struct LoneCrossing {
  double height, side;
  int32_t sense;  // as that of Crossing
};

// Ascending.
struct LoneCrossings {
  int count = 0;
  LoneCrossing crossings[2];

  const LoneCrossing* begin() const { return crossings; }
  const LoneCrossing* end() const { return crossings + count; }
};

// Where two strands cross between two heights, when it is easily shown that they are near each
// other, by `tol` (length), at these places alone, over no more than 16 tolerances of height.
std::optional<LoneCrossings> FindLoneCrossings(const Strand& a, const Strand& b,
                                               const CommonLevel& low, const CommonLevel& high,
                                               double tol);

}  // namespace kurvo::outline
