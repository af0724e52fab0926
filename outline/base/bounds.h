// Axis-parallel boxes.
#pragma once

#include <algorithm>
#include <limits>

#include "base/vec2.h"

namespace kurvo::outline {

// Empty until something is added: then low <= high.
struct Bounds {
  Vec2 low = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  Vec2 high = {-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

  bool IsEmpty() const { return !(low.x <= high.x); }
  void Add(Vec2 p) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y)};
  }
  void Join(const Bounds& other) {
    Add(other.low);
    Add(other.high);
  }
  // The largest coordinate.
  double Farthest() const {
    if (IsEmpty()) return 0;
    return std::max(std::max(-low.x, high.x), std::max(-low.y, high.y));
  }
  double LongerSide() const { return IsEmpty() ? 0 : std::max(high.x - low.x, high.y - low.y); }
};

// The square of the distance from p to the nearest point of the box; 0 inside.
inline double SquaredDistance(const Bounds& box, Vec2 p) {
  const Vec2 outside = {std::max({box.low.x - p.x, p.x - box.high.x, 0.0}),
                        std::max({box.low.y - p.y, p.y - box.high.y, 0.0})};
  return SquaredLength(outside);
}

// Whether the boxes come within `margin` of each other.
inline bool Near(const Bounds& a, const Bounds& b, double margin) {
  return a.low.x <= b.high.x + margin && b.low.x <= a.high.x + margin &&
         a.low.y <= b.high.y + margin && b.low.y <= a.high.y + margin;
}

}  // namespace kurvo::outline
