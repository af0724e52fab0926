// Points and boxes of the plane, and affine maps of it.
#pragma once

#include <algorithm>
#include <cmath>
#include <kurvo.hpp>
#include <numbers>

namespace kurvo::tools {

// To and from points of space, in the plane z = 0.
struct Point {
  constexpr Point() = default;
  constexpr Point(double px, double py) : x(px), y(py) {}
  constexpr Point(const kurvo::Point& p) : x(p.x), y(p.y) {}
  constexpr operator kurvo::Point() const { return {x, y, 0}; }

  double x = 0;
  double y = 0;
};

inline Point operator+(Point p, Point q) { return {p.x + q.x, p.y + q.y}; }
inline Point operator-(Point p, Point q) { return {p.x - q.x, p.y - q.y}; }
inline Point operator*(double s, Point p) { return {s * p.x, s * p.y}; }
inline double Dot(Point p, Point q) { return p.x * q.x + p.y * q.y; }
inline double Cross(Point p, Point q) { return p.x * q.y - p.y * q.x; }
inline double Size(Point v) { return std::hypot(v.x, v.y); }

inline double Degrees(double radians) { return radians * 180 / std::numbers::pi; }

// An axis-parallel rectangle, empty at first.
struct Bounds {
  double min_x = 1;
  double min_y = 1;
  double max_x = -1;
  double max_y = -1;

  bool IsEmpty() const { return min_x > max_x; }
  double Width() const { return max_x - min_x; }
  double Height() const { return max_y - min_y; }
  double LongerSide() const { return std::max(Width(), Height()); }
  Point Min() const { return {min_x, min_y}; }
  Point Max() const { return {max_x, max_y}; }
  bool Contains(Point p) const {
    return min_x <= p.x && p.x <= max_x && min_y <= p.y && p.y <= max_y;
  }
  // Where y points the other way.
  Bounds TurnedOver() const { return {min_x, -max_y, max_x, -min_y}; }
  void Add(Point p);
  void Add(const Bounds& other);
  void Grow(double margin);
};

// x' = a x + c y + e, y' = b x + d y + f; the order of the six numbers of an SVG matrix().
struct Affine {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  Point Apply(Point p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
  Point ApplyToVector(Point v) const { return {a * v.x + c * v.y, b * v.x + d * v.y}; }
  double Determinant() const { return a * d - b * c; }
};

// The map that applies `inner` first.
Affine operator*(const Affine& outer, const Affine& inner);

Affine Translation(double dx, double dy);
Affine Scaling(double sx, double sy);
Affine Rotation(double degrees);
Affine SkewX(double degrees);
Affine SkewY(double degrees);

}  // namespace kurvo::tools
