// Lines and circles that touch beyond their ends.
#pragma once

#include "relate/intersect/crossing.h"

namespace kurvo {

// A line and a circle, or two circles, that touch have one point in common for the many within the
// tolerance, which are far apart where the curves bend little. When that point lies beyond an end
// of a bounded arc or segment, replaces it by the nearest end that lies on the other curve, if any.
void MoveTouchToEnds(const Curve& a, const Curve& b, Bounded bounded, GlobalVar& g,
                     Crossings& found);

}  // namespace kurvo
