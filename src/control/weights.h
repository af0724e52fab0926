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

// True when all weights lie within `tol` of 1: then the curve is evaluated as the plain curve of
// the same points, without a division.
inline bool WeightsAreOne(const double (*points)[4], int32_t count, double tol) {
  for (int32_t i = 0; i < count; ++i)
    if (!(points[i][3] >= 1.0 - tol && 1.0 + tol >= points[i][3])) return false;
  return true;
}

// True when all weights round to 1 at six decimals.
inline bool WeightsRoundToOne(const double (*points)[4], int32_t count) {
  for (int32_t i = 0; i < count; ++i)
    if (CompareRounded(points[i][3], 1.0) != 0) return false;
  return true;
}

// True when all weights are positive at six decimals.
inline bool HasPositiveWeights(const double (*)[3], int32_t) { return true; }
inline bool HasPositiveWeights(const double (*points)[4], int32_t count) {
  for (int32_t i = 0; i < count; ++i)
    if (!(Millionths(points[i][3]) > 0.0)) return false;
  return true;
}

}  // namespace kurvo
