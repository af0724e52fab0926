// Bezier curves over another range of their parameter.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kurvo {

// Replaces the control points of a Bezier curve of degree n over [0, 1] by those of the same
// polynomials over [s0, s1], s0 < s1, which may lie inside or outside. Weighted points are
// Cartesian and are treated in homogeneous form. An end that does not move stays to the bit.
template <std::size_t kDim>
void Reparametrise(double (*points)[kDim], int32_t n, double s0, double s1);

}  // namespace kurvo
