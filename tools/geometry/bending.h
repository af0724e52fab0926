// How curves bend: direction, curvature and turning. Positive is from the x axis towards the y
// axis, which is clockwise where y points down as in SVG.
#pragma once

#include <optional>

#include "geometry/library.h"

namespace kurvo::tools {

// 1 / radius of curvature with its sign; nothing where the curve has no tangent, as in a cusp.
std::optional<double> SignedCurvature(Library& library, const OwnedCurve& curve, double t);

struct CurvatureAt {
  double curvature;
  double parameter;
};

struct Bending {
  // Nothing when the curve has a curvature nowhere.
  std::optional<CurvatureAt> least;
  std::optional<CurvatureAt> greatest;
  // All that the tangent turns by, in radians; a cusp counts as half a turn.
  double turning = 0;
  // Of the tangents at the ends, of any length; nothing when the curve is a point.
  std::optional<Point> start_direction;
  std::optional<Point> end_direction;
};

Bending BendingOf(Library& library, const OwnedCurve& curve);

// The angle from one direction to the other, in (-pi, pi] radians.
double TurnBetween(Point from, Point to);

}  // namespace kurvo::tools
