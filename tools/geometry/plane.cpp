#include "geometry/plane.h"

#include <cmath>
#include <numbers>

namespace kurvo::tools {
namespace {

double Radians(double degrees) { return degrees * (std::numbers::pi / 180); }

}  // namespace

void Bounds::Add(Point p) { Add(Bounds{p.x, p.y, p.x, p.y}); }

void Bounds::Add(const Bounds& other) {
  if (other.IsEmpty()) return;
  if (IsEmpty()) {
    *this = other;
    return;
  }
  min_x = std::min(min_x, other.min_x);
  min_y = std::min(min_y, other.min_y);
  max_x = std::max(max_x, other.max_x);
  max_y = std::max(max_y, other.max_y);
}

void Bounds::Grow(double margin) {
  min_x -= margin;
  min_y -= margin;
  max_x += margin;
  max_y += margin;
}

Affine operator*(const Affine& outer, const Affine& inner) {
  const Point x_axis = outer.ApplyToVector({inner.a, inner.b});
  const Point y_axis = outer.ApplyToVector({inner.c, inner.d});
  const Point origin = outer.Apply({inner.e, inner.f});
  return {x_axis.x, x_axis.y, y_axis.x, y_axis.y, origin.x, origin.y};
}

Affine Translation(double dx, double dy) { return {1, 0, 0, 1, dx, dy}; }

Affine Scaling(double sx, double sy) { return {sx, 0, 0, sy, 0, 0}; }

Affine Rotation(double degrees) {
  // Quarter turns are exact, so that outlines turned by them keep their round numbers.
  const double turn = std::remainder(degrees, 360.0);
  if (turn == 0) return {};
  if (turn == 90) return {0, 1, -1, 0, 0, 0};
  if (turn == -90) return {0, -1, 1, 0, 0, 0};
  if (std::fabs(turn) == 180) return {-1, 0, 0, -1, 0, 0};
  const double cosine = std::cos(Radians(turn));
  const double sine = std::sin(Radians(turn));
  return {cosine, sine, -sine, cosine, 0, 0};
}

Affine SkewX(double degrees) { return {1, 0, std::tan(Radians(degrees)), 1, 0, 0}; }

Affine SkewY(double degrees) { return {1, std::tan(Radians(degrees)), 0, 1, 0, 0}; }

}  // namespace kurvo::tools
