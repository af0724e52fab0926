// Bezier curves cut in two.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kurvo {

// A cut costs O(degree^2): degrees above this are refused, so that none takes seconds.
constexpr int32_t kMaxSplitDegree = 4095;

// Cuts a Bezier curve of degree n at t by de Casteljau's algorithm: `points` becomes the part after
// t, `before`, with room for n + 1 points, the part before it. Weighted points are Cartesian and
// are cut in homogeneous form. The ends stay to the bit; new points have z = 0.
template <std::size_t kDim>
void SplitBezier(double (*points)[kDim], int32_t n, double t, double (*before)[kDim]);

}  // namespace kurvo
