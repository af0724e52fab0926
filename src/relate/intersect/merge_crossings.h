// Each crossing once.
#pragma once

#include "relate/intersect/crossing.h"

namespace kurvo {

// Drops crossings that are not finite, sorts the others by the first parameter, and keeps one of
// those that are one point, rather a crossing than a touch: parameters that agree within the
// tolerance on both curves, or, from different pieces, parameters that are neighbours on both
// (across the closing joint of a closed curve too) with points that agree.
void MergeCrossings(const Curve& a, const Curve& b, GlobalVar& g, Crossings& crossings);

}  // namespace kurvo
