// Degree elevation of Bezier curves.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kurvo {

// Raises a Bezier curve of degree n by one, in place: `points` holds n + 1 control points, plain or
// homogeneous, and has room for one more.
template <std::size_t kDim>
void ElevateDegree(double (*points)[kDim], int32_t n);

}  // namespace kurvo
