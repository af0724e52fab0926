// Drawings whose points are on a grid.
#pragma once

#include <cstddef>

#include "geometry/drawing.h"

namespace kurvo::tools {

struct GridOptions {
  double size;   // a length
  double share;  // how far curves may be off that are no Bezier curves: a part of their size,
  double deviation = 0;  // unless this is a length
};

// What rounding did.
struct GridReport {
  double size = 0;
  double moved = 0;          // the farthest that a point was moved
  std::size_t vanished = 0;  // outlines of which nothing is left
};

// Rounds all points to the grid around the origin of each shape: ends and control points. The
// curves are lines, quadratics and cubics then; others become cubics. Curves of which all points
// fall on one are left out. Throws BadResult.
GridReport RoundToGrid(Context& context, const GridOptions& options, Drawing& drawing);

}  // namespace kurvo::tools
