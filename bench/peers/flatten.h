// Curves for libraries that take polygons: chords within a ten-thousandth of an em.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "curve.h"

namespace peers {

// The corners of a contour, each once. Curves go in equal steps: a chord is no farther off than an
// eighth of the second derivative.
inline std::vector<Point> Corners(const Glyph& contour) {
  constexpr double kDeviation = 1e-4 * 1000;  // of an em of 1000
  std::vector<Point> corners;
  for (const Bezier& b : contour) {
    const std::size_t degree = b.size() - 1;
    double bend = 0;
    for (std::size_t i = 0; i + 2 <= degree; ++i)
      bend = std::max(bend, std::hypot(b[i].x - 2 * b[i + 1].x + b[i + 2].x,
                                       b[i].y - 2 * b[i + 1].y + b[i + 2].y));
    const double second = double(degree * (degree - 1)) * bend;
    const int steps = std::max(1, static_cast<int>(std::ceil(std::sqrt(second / 8 / kDeviation))));
    for (int i = 0; i < steps; ++i) {
      Bezier d = b;
      const double t = double(i) / steps;
      for (std::size_t n = degree; n > 0; --n)
        for (std::size_t k = 0; k < n; ++k)
          d[k] = {d[k].x + t * (d[k + 1].x - d[k].x), d[k].y + t * (d[k + 1].y - d[k].y)};
      corners.push_back(d[0]);
    }
  }
  return corners;
}

// The lines of a ring, which need not repeat its first corner.
template <class Ring, class PointAt>
Glyph LinesOf(const Ring& ring, const PointAt& point_at) {
  Glyph contour;
  for (std::size_t i = 0; i < ring.size(); ++i)
    contour.push_back({point_at(ring[i]), point_at(ring[(i + 1) % ring.size()])});
  return contour;
}

}  // namespace peers
