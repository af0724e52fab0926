// Curvature combs: teeth across a curve, as long as it is bent there.
#pragma once

#include <vector>

#include "geometry/drawing.h"

namespace kurvo::tools {

// One of a curve. Teeth stand on the outer side of the bend, so that they change sides where it
// inflects; where the curve has no curvature, as in a cusp, there is a new comb.
struct Comb {
  std::vector<Point> feet;  // on the curve
  std::vector<Point> tips;
};

// The combs of all curves but lines, to one scale: three quarters of the length of these curves
// have teeth shorter than a fixed part of `extent`, the size of the drawing. Teeth far longer are
// cut.
std::vector<Comb> CombsOf(Context& context, const Drawing& drawing, double extent);

}  // namespace kurvo::tools
