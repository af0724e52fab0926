// Arcs of ellipses and circles, in the form in which an affine map keeps them what they are.
#pragma once

#include "geometry/plane.h"

namespace kurvo::tools {

// The points centre + cos(t) u + sin(t) v for t from start_angle to start_angle + sweep (radians).
// u and v are any two conjugate half diameters: an affine map takes them to such a pair again.
struct EllipticalArc {
  Point centre;
  Point u;
  Point v;
  double start_angle = 0;
  double sweep = 0;

  Point At(double angle) const;
};

// An arc as path data gives it, from the current point to `to`.
struct EndpointArc {
  double rx = 0;
  double ry = 0;
  double rotation = 0;  // of the x axis of the ellipse, degrees
  bool large_arc = false;
  bool positive_sweep = false;
  Point to;
};

// The arc in centre form. The radii must not be zero, nor the end points the same; radii too small
// to reach are scaled up until they just do (W3C, SVG 1.1, appendix F.6).
EllipticalArc CentreForm(Point from, const EndpointArc& arc);

EllipticalArc Transformed(const EllipticalArc& arc, const Affine& map);

// Whether the ellipse is a circle, but for rounding.
bool IsCircular(const EllipticalArc& arc);

// Whether it runs counter-clockwise where x points right and y up.
bool IsCounterClockwise(const EllipticalArc& arc);

// The weighted middle control point of the quadratic rational Bezier curve that is the arc from
// angle `from` to angle `to`, less than half a turn. The outer weights are 1.
struct MiddleControl {
  Point point;
  double weight;
};
MiddleControl RationalMiddle(const EllipticalArc& arc, double from, double to);

}  // namespace kurvo::tools
