// What there is to say about each outline of a drawing and each of its curves. Curvature and
// turning are positive from the x axis towards the y axis, which is clockwise where y points down
// as in SVG.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "geometry/chain.h"
#include "geometry/drawing.h"

namespace kurvo::tools {

// 1 / radius of curvature with its sign; nothing where the curve has no tangent, as in a cusp.
std::optional<double> SignedCurvature(Context& context, const Curve& curve, double t);

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

Bending BendingOf(Context& context, const Curve& curve);

// Along the curve at 0 or 1, of any length; nothing when the curve is a point.
std::optional<Point> EndDirection(Context& context, const Curve& curve, double t);

// The angle from one direction to the other, in (-pi, pi] radians.
double TurnBetween(Point from, Point to);

struct CurveMeasures {
  int type;
  int degree;
  Point start;
  Point end;
  Bounds box;
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
  // Positive from x towards y; an open outline is closed by a line. Without an area the centroid is
  // that of the length.
  double area = 0;
  Point centroid = {};
};

// `near` is the point to be near to, when there is one. `done` is called for each curve,
// from several threads.
std::vector<OutlineMeasures> Measure(const Drawing& drawing, const std::optional<Point>& near,
                                     const CurveDone& done);

// Of all outlines together.
double TotalLength(const std::vector<OutlineMeasures>& outlines);

// The outline with the nearest point, the first of several; nothing without outlines.
const OutlineMeasures* NearestOutline(const std::vector<OutlineMeasures>& outlines);

// What is nearest in the outline.
const NearestPoint& NearestIn(const OutlineMeasures& outline);

// The curve with the least curvature of the outline, and that with the greatest; the first of
// several, nothing when no curve has a curvature.
std::optional<std::size_t> LeastCurved(const OutlineMeasures& outline);
std::optional<std::size_t> MostCurved(const OutlineMeasures& outline);

}  // namespace kurvo::tools
