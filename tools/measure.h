// What there is to say about each outline of a drawing and each of its curves.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "library.h"
#include "nearest.h"
#include "progress.h"
#include "svg_reader.h"

namespace kurvo::tools {

struct CurveMeasures {
  int type;
  int degree;
  Point start;
  Point end;
  Bounds box;  // of the control points, for a Bezier curve
  std::optional<NearestPoint> nearest;
};

struct OutlineMeasures {
  std::string label;
  bool closed;
  Bounds box;
  std::vector<CurveMeasures> curves;  // at least one
  std::size_t nearest_curve = 0;      // the first of those that are nearest
};

// `near` is the point to be near to, when there is one. `progress` takes a step for each curve.
std::vector<OutlineMeasures> Measure(Library& library, const Drawing& drawing,
                                     const std::optional<Point>& near, Progress& progress);

// The outline with the nearest point, the first of several; nothing without outlines.
const OutlineMeasures* NearestOutline(const std::vector<OutlineMeasures>& outlines);

// What is nearest in the outline.
const NearestPoint& NearestIn(const OutlineMeasures& outline);

std::size_t CurveCount(const Drawing& drawing);

}  // namespace kurvo::tools
