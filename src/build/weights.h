// Tests on the weights of rational control points.
#pragma once

#include <cstdint>

#include "foundation/rounded_compare.h"

namespace kurvo {

// True when all weights are the same number, whichever it is.
inline bool WeightsAreEqual(const double (*points)[4], int32_t count) {
  for (int32_t i = 0; i < count; ++i)
    if (!(points[i][3] == points[0][3])) return false;
  return true;
}

// True when all weights round to 1 at six decimals.
inline bool WeightsRoundToOne(const double (*points)[4], int32_t count) {
  for (int32_t i = 0; i < count; ++i)
    if (CompareRounded(points[i][3], 1.0) != 0) return false;
  return true;
}

}  // namespace kurvo
