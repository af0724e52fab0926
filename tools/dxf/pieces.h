// Chains as the entities of DXF have them: runs of lines and arcs, and splines.
#pragma once

#include <span>
#include <vector>

#include "geometry/plane.h"
#include "geometry/result.h"

namespace kurvo::tools {

// A line or an arc of at most half a turn, from the one point to the other.
struct DxfSegment {
  Point from, to;
  double sweep = 0;  // radians, counter-clockwise positive; 0: a line
  Point centre = {};
  double radius = 0;
};

// Points, weights (none: all are 1) and knots.
struct DxfSpline {
  int degree = 0;
  std::vector<Point> points;
  std::vector<double> weights = {};
  std::vector<double> knots;
};

// What becomes one entity: segments that run end to start, or a spline.
struct DxfRun {
  std::vector<DxfSegment> segments = {};
  DxfSpline spline = {};
  bool closed = false;

  bool IsSpline() const { return segments.empty(); }
  // Whether it is all of one circle.
  bool IsCircle() const;
};

// The chain through `map`, which scales alike in x and y and may mirror.
std::vector<DxfRun> RunsOf(Context& context, const ResultChain& chain, const Affine& map);

}  // namespace kurvo::tools
