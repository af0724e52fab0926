// Curves as polylines of points evaluated on them.
#pragma once

#include <vector>

#include "library.h"

namespace kurvo::tools {

// Points of the curve from its start to its end, so close that the chords between them stay within
// `tolerance` (a length) of the curve. A line is its two ends.
std::vector<Point> SampleCurve(Library& library, const OwnedCurve& curve, double tolerance);

}  // namespace kurvo::tools
