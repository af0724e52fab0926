// Curves as cubics one after the other: what flattening and fitting look at.
#pragma once

#include "base/memory.h"
#include "strand/span.h"

namespace kurvo::outline {

// A polynomial cubic alongside a part of a span, which it meets at both ends with the same
// tangents.
struct CubicCell {
  Vec2 points[4];   // Bezier
  int32_t span;     // index of the span
  double from, to;  // its parameters

  // With t in [0, 1]: start + t velocity + t^2/2 bend + t^3/6 jerk.
  Vec2 Velocity() const { return 3.0 * (points[1] - points[0]); }
  Vec2 Bend() const { return 6.0 * ((points[2] - points[1]) - (points[1] - points[0])); }
  Vec2 Jerk() const { return 6.0 * ((points[3] - points[0]) - 3.0 * (points[2] - points[1])); }
};

// Appends cells that are no farther from the span than `error` (> 0, length, at least rounding) at
// the same parameter; of an arc, anywhere along it. A polynomial of degree 3 or less is one cell
// and exact, also where that costs a raise of its degree. Result: whether all are exact. Cost:
// O(degree^2) a cell.
bool AppendCells(const Span& span, int32_t index, double error, Array<CubicCell>& cells);

}  // namespace kurvo::outline
