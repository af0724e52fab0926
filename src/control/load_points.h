// Control points as the coefficient vectors of Bezier functions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "foundation/point.h"

namespace kurvo {

// Loads x and y of point i; a weight is passed over.
template <std::size_t kDim>
auto LoadPlanar(const double (*points)[kDim]) {
  return [points](int32_t i, std::array<double, 2>& p) { p = {points[i][0], points[i][1]}; };
}
// The same relative to `origin`.
template <std::size_t kDim>
auto LoadPlanar(const double (*points)[kDim], Vec2 origin) {
  return [points, origin](int32_t i, std::array<double, 2>& p) {
    p = {points[i][0] - origin.x, points[i][1] - origin.y};
  };
}

// Loads the homogeneous point w x, w y, w.
inline auto LoadHomogeneous(const double (*points)[4]) {
  return [points](int32_t i, std::array<double, 3>& p) {
    const double w = points[i][3];
    p = {w * points[i][0], w * points[i][1], w};
  };
}
// The same relative to `origin`; a point without a weight has weight 1.
template <std::size_t kDim>
auto LoadHomogeneous(const double (*points)[kDim], Vec2 origin) {
  return [points, origin](int32_t i, std::array<double, 3>& p) {
    const double w = WeightOf(points[i]);
    p = {w * (points[i][0] - origin.x), w * (points[i][1] - origin.y), w};
  };
}

}  // namespace kurvo
