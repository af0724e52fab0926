// The outlines of a drawing at a distance.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "geometry/drawing.h"
#include "geometry/library.h"

namespace kurvo::tools {

// One outline of the drawing, which must outlive it, at one distance.
struct OutlineOffset {
  std::string label;
  const Outline* source;
  double distance;
  std::vector<OwnedCurve> pieces;
};

// What a tolerance is when none is given, in parts of the distance.
inline constexpr double kOffsetTolerance = 1e-3;

// Every outline at every distance, in drawing order; positive distances go to the left of travel as
// seen in the drawing, whose y points down. `done` is called for each curve at each
// distance. Curves are offset one by one: nothing is put in or cut off at corners.
std::vector<OutlineOffset> OffsetOutlines(Library& library, const Drawing& drawing,
                                          const std::vector<double>& distances,
                                          const std::optional<double>& tolerance,
                                          const CurveDone& done);

}  // namespace kurvo::tools
