// Curves of points of the plane. All of it throws BadResult.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

// One record, also of a full circle, whose ends are the same.
Curve ArcOf(Point centre, double radius, bool counter_clockwise, Point start, Point end);
// Of degree 2, with outer weights 1.
Curve ConicOf(Point p0, Point p1, double weight1, Point p2);
// A Bezier curve without knots, or else a B-spline; rational where there are weights, one a point.
Curve FreeForm(const std::vector<Point>& points, const std::vector<double>& weights,
               const std::vector<double>& knots);
// The spline of this order through at least `order` points, of which no neighbours are the same;
// nothing when none in doubles passes through them.
std::optional<Curve> SplineThrough(Context& context, const std::vector<Point>& points, int order);

std::vector<Curve> Copies(Context& context, std::span<const Curve> curves);
// The curves of a chain, out of it.
std::vector<Curve> Taken(Chain chain);

}  // namespace kurvo::tools
