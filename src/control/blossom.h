// The triangle of points behind de Casteljau's algorithm, de Boor's and Boehm's knot insertion.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kurvo {

template <std::size_t kDim>
void MixInto(const double (&a)[kDim], const double (&b)[kDim], double share, double (&out)[kDim]) {
  for (std::size_t c = 0; c < kDim; ++c) out[c] = (1.0 - share) * a[c] + share * b[c];
}

// Level 0 of the triangle holds the `levels` + 1 control points of a polynomial, plain or
// homogeneous. Item q of level l is (1 - s) times item q of the level above plus s times item q +
// 1, where s = share(l, q) says how far the new parameter c lies between the two parameters in
// which the blossoms of the two differ (Ramshaw, Computer Aided Geometric Design 6, 1989). The apex
// is the point at c, the right edge of the triangle controls the curve after c, the left edge the
// curve before it. Both edges come from the same operations: their apexes agree to the bit.

// Replaces the points, in place, by the right edge, from the apex on. The last point stays.
template <std::size_t kDim, class Share>
void ToRightEdge(double (*points)[kDim], int32_t levels, Share&& share) {
  for (int32_t l = 1; l <= levels; ++l)
    for (int32_t q = 0; q <= levels - l; ++q)
      MixInto(points[q], points[q + 1], share(l, q), points[q]);
}

// Replaces the points, in place, by the left edge, to the apex. The first point stays.
template <std::size_t kDim, class Share>
void ToLeftEdge(double (*points)[kDim], int32_t levels, Share&& share) {
  for (int32_t l = 1; l <= levels; ++l)
    for (int32_t q = levels - l; q >= 0; --q)
      MixInto(points[q + l - 1], points[q + l], share(l, q), points[q + l]);
}

}  // namespace kurvo
