// What there is to say about each outline of a drawing and each of its curves.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/progress.h"
#include "geometry/bending.h"
#include "geometry/library.h"
#include "geometry/nearest.h"
#include "svg/svg_reader.h"

namespace kurvo::tools {

struct CurveMeasures {
  int type;
  int degree;
  Point start;
  Point end;
  Bounds box;  // of the control points, for a Bezier curve
  double length;
  Bending bending;
  std::optional<NearestPoint> nearest;
};

struct OutlineMeasures {
  std::string label;
  bool closed;
  Bounds box;
  std::vector<CurveMeasures> curves;  // at least one
  std::size_t nearest_curve = 0;      // the first of those that are nearest
  double length = 0;
  double turning = 0;  // of the curves and in the corners between them, radians
};

// `near` is the point to be near to, when there is one. `progress` takes a step for each curve.
std::vector<OutlineMeasures> Measure(Library& library, const Drawing& drawing,
                                     const std::optional<Point>& near, Progress& progress);

// The outline with the nearest point, the first of several; nothing without outlines.
const OutlineMeasures* NearestOutline(const std::vector<OutlineMeasures>& outlines);

// What is nearest in the outline.
const NearestPoint& NearestIn(const OutlineMeasures& outline);

// The curve with the least curvature of the outline, and that with the greatest; the first of
// several, nothing when no curve has a curvature.
std::optional<std::size_t> LeastCurved(const OutlineMeasures& outline);
std::optional<std::size_t> MostCurved(const OutlineMeasures& outline);

}  // namespace kurvo::tools
