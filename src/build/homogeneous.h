// Weighted control points in homogeneous form and back.
#pragma once

#include <cstdint>

namespace kurvo {

// (x, y, z, w) becomes (w x, w y, w z, w). Plain points are their own homogeneous form.
inline void ToHomogeneous(double (*points)[4], int32_t count) {
  for (int32_t i = 0; i < count; ++i)
    for (int c = 0; c < 3; ++c) points[i][c] *= points[i][3];
}
inline void ToHomogeneous(double (*)[3], int32_t) {}

// The inverse. A point at infinity, of weight 0, stays as it is.
inline void ToCartesian(double (*points)[4], int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    const double w = points[i][3];
    if (w == 0.0) continue;
    for (int c = 0; c < 3; ++c) points[i][c] /= w;
  }
}
inline void ToCartesian(double (*)[3], int32_t) {}

}  // namespace kurvo
