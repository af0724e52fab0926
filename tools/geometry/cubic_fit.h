// Cubic Bezier curves close to other curves.
#pragma once

#include "geometry/library.h"

namespace kurvo::tools {

struct Cubic {
  Point p0, p1, p2, p3;

  Point At(double s) const;
  Point Derivative(double s) const;
};

struct FittedCubic {
  Cubic cubic;
  // The largest distance to points of the curve, as measured at a few; infinite where the stretch
  // turns by more than some 25 degrees.
  double deviation;
};

// A cubic with the ends of a stretch of the curve and its directions there, whose handles are as
// long as bring it closest to the stretch: the distance is of order 6 in the length of the stretch,
// where one with handles by the derivatives is off by order 4.
FittedCubic FitCubic(Library& library, const OwnedCurve& curve, double from, double to);

}  // namespace kurvo::tools
