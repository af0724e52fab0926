// Curves as plain numbers: what the questions are about, before any library has made its own record
// of them.
#pragma once

#include <vector>

namespace peers {

struct Point {
  double x = 0.0, y = 0.0;
};

struct Segment {
  Point start, end;
};

// Counter-clockwise from `from` over `sweep`, both in radians; the parameter runs with the angle.
struct Arc {
  Point centre;
  double radius = 0.0, from = 0.0, sweep = 0.0;
};

// The control points of a Bezier curve.
using Bezier = std::vector<Point>;

// A cubic B-spline: four knots more than control points.
struct Spline {
  std::vector<Point> points;
  std::vector<double> knots;
};

// A closed contour of Bezier curves, each beginning where the one before it ends.
using Glyph = std::vector<Bezier>;

// Closed contours of lines and Bezier curves, filled where they go around at all.
using Outline = std::vector<Glyph>;

// A common point of two curves, by its parameters on both.
struct Common {
  double on_a = 0.0, on_b = 0.0;
};

}  // namespace peers
