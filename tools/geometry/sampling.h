// Curves as polylines of points evaluated on them.
#pragma once

#include <vector>

#include "geometry/library.h"

namespace kurvo::tools {

// Points of the curve between two parameters, from its start to its end unless they are given, so
// close that the chords between them stay within `tolerance` (a length) of the curve. A line is its
// two ends.
std::vector<Point> SampleCurve(Library& library, const OwnedCurve& curve, double tolerance,
                               double from = 0, double to = 1);

}  // namespace kurvo::tools
