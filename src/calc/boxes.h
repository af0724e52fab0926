// Axis-aligned boxes in the plane.
#pragma once

#include <algorithm>
#include <limits>

#include "foundation/point.h"

namespace kurvo {

// Empty until widened.
struct PlanarBox {
  Vec2 min = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  Vec2 max = {-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

  // Grows to take p in; a NaN coordinate changes nothing.
  void Widen(Vec2 p) {
    min = {p.x < min.x ? p.x : min.x, p.y < min.y ? p.y : min.y};
    max = {p.x > max.x ? p.x : max.x, p.y > max.y ? p.y : max.y};
  }
  void Widen(const PlanarBox& box) {
    Widen(box.min);
    Widen(box.max);
  }
};

// True when p lies in the box grown by `length_tol`.
inline bool Contains(const PlanarBox& box, Vec2 p, double length_tol) {
  return box.min.x - length_tol <= p.x && p.x <= box.max.x + length_tol &&
         box.min.y - length_tol <= p.y && p.y <= box.max.y + length_tol;
}

// True when the boxes overlap or come within `length_tol`; not for NaN.
inline bool Meet(const PlanarBox& a, const PlanarBox& b, double length_tol) {
  return a.max.x >= b.min.x - length_tol && b.max.x >= a.min.x - length_tol &&
         a.max.y >= b.min.y - length_tol && b.max.y >= a.min.y - length_tol;
}

// How far apart the boxes lie in x and in y, 0 where they overlap; NaN where a point is not a
// number.
inline Vec2 GapBetween(const PlanarBox& a, const PlanarBox& b) {
  return {std::max(std::max(b.min.x - a.max.x, a.min.x - b.max.x), 0.0),
          std::max(std::max(b.min.y - a.max.y, a.min.y - b.max.y), 0.0)};
}
inline Vec2 GapBetween(const PlanarBox& box, Vec2 p) { return GapBetween(box, {p, p}); }

// The distance from p to a box that is not empty, 0 inside and for NaN.
double Distance(const PlanarBox& box, Vec2 p);

}  // namespace kurvo
