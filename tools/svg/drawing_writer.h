// A drawing as an SVG file of its curves alone.
#pragma once

#include <string>

#include "geometry/result.h"
#include "svg/curve_path.h"

namespace kurvo::tools {

// How far curves that SVG has no form for may be off in a drawing; a part of their size.
inline constexpr double kDrawingDeviation = 1e-4;

// One path for each element that the chains come from, with its id, in its groups and layers, on
// the sheet of the source. Closed chains end with Z. A sheet that the source does not have is the
// box around the chains.
std::string DrawingText(Context& context, const Result& result, const PathAccuracy& accuracy);

}  // namespace kurvo::tools
