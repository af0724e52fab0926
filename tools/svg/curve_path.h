// Curves as SVG path data that gives the same curves when it is read.
//
// Numbers have the fewest digits that read back as the same double. Lines, arcs of circles and
// ellipses, Bezier curves of degree 1 to 3 and B-splines up to order 4 are written as what they
// are; arcs wider than a third of a turn in parts, since the centre of a half turn, which the
// reader works out, depends on the last digits of its ends. SVG has no form for other curves: they
// become cubic Bezier curves that stay within a deviation, but none of which is so short that it
// is lost when it is read.
#pragma once

#include <span>
#include <string>

#include "geometry/plane.h"

namespace kurvo::tools {

// From a curve that SVG has no form for to what is written for it, unless said otherwise; a part of
// the longer side of the box around the curve.
inline constexpr double kPathDeviation = 1e-9;

// How far what is written may be from such a curve: a part of its size, unless it is a length.
struct PathAccuracy {
  double share = kPathDeviation;
  double length = 0;  // 0: the share holds
};

// Curves that run end to start, as one subpath; what is between them is bridged by lines.
std::string PathData(Context& context, std::span<const Curve> curves,
                     const PathAccuracy& accuracy = {});

// One curve; a composite whose pieces do not meet becomes several subpaths.
std::string PathData(Context& context, const Curve& curve);

}  // namespace kurvo::tools
