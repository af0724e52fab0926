// Weighted control points in homogeneous form and back.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "foundation/point.h"

namespace kurvo {

// A point of the plane times its weight, and the weight.
struct Homogeneous {  // work areas of these are not set to 0 first
  double x;
  double y;
  double w;
};

inline Homogeneous operator+(Homogeneous a, Homogeneous b) {
  return {a.x + b.x, a.y + b.y, a.w + b.w};
}
inline Homogeneous operator-(Homogeneous a, Homogeneous b) {
  return {a.x - b.x, a.y - b.y, a.w - b.w};
}
inline Homogeneous operator*(double s, Homogeneous a) { return {s * a.x, s * a.y, s * a.w}; }
inline Vec2 Planar(Homogeneous a) { return {a.x, a.y}; }  // still times the weight

// (x, y, z, w) becomes (w x, w y, w z, w). Plain points are their own homogeneous form.
inline void ToHomogeneous(double (*points)[4], int32_t count) {
  for (int32_t i = 0; i < count; ++i)
    for (int c = 0; c < 3; ++c) points[i][c] *= points[i][3];
}
inline void ToHomogeneous(double (*)[3], int32_t) {}

// A weight below the rounding of all others, relative to the largest.
constexpr double kTinyWeight = 0x1p-60;

// The inverse. A control point at infinity, of weight 0, gets a weight too small to change the
// curve, since without one it would be lost; one that is 0 altogether stays as it is.
inline void ToCartesian(double (*points)[4], int32_t count) {
  const auto largest_weight = [&] {
    double largest = 0.0;
    for (int32_t i = 0; i < count; ++i) largest = std::max(largest, std::fabs(points[i][3]));
    return largest;
  };
  for (int32_t i = 0; i < count; ++i) {
    double& w = points[i][3];
    if (w == 0.0 && (points[i][0] != 0.0 || points[i][1] != 0.0))
      w = kTinyWeight * largest_weight();
    if (w == 0.0) continue;
    for (int c = 0; c < 3; ++c) points[i][c] /= w;
  }
}
inline void ToCartesian(double (*)[3], int32_t) {}

}  // namespace kurvo
