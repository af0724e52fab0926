// Control points that are all the same.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/point.h"

namespace kurvo {

// True when all of them agree with the first, coordinate by coordinate; weights do not count.
template <std::size_t kDim>
bool AreOnePoint(const double (*points)[kDim], int32_t count, double length_tol) {
  for (int32_t i = 1; i < count; ++i)
    if (!SamePoint(Spatial(points[0]), Spatial(points[i]), length_tol)) return false;
  return true;
}

}  // namespace kurvo
