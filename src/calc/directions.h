// Directions in the plane: unit vectors and angles.
#pragma once

#include <cmath>

#include "foundation/error_codes.h"
#include "foundation/point.h"

namespace kurvo {

constexpr double kPi = 3.141592653589793;
constexpr double kTwoPi = 6.283185307179586;

// Polar angle in [-pi, pi], -pi only for a y of -0.0; 0 for (0, 0).
inline double AngleOf(Vec2 v) { return std::atan2(v.y, v.x); }

// v / |v|; the zero vector for one whose components are all within `tol` of 0, which is too short
// to have a direction. The test looks at components and not at the length, so that a vector is
// short exactly when its two ends are the same point.
inline Vec3 UnitOrZero(Vec3 v, double tol) { return Within(v, tol) ? Vec3{} : v / Length(v); }

// The same within epsilon, with a warning for a vector that is too short.
inline Vec3 UnitVector(Vec3 v, GlobalVar& g) {
  if (Within(v, g.epsilon)) Fail(g, KURVO_WARN_SHORT_VECTOR);
  return UnitOrZero(v, g.epsilon);
}

// True when the directions are the same or opposite within `angle_tol` radians.
bool Parallel(Vec2 a, Vec2 b, double angle_tol);

// A difference of two polar angles, brought by one turn into [-slack, 2 pi - slack].
inline double OneTurn(double angle, double slack) {
  if (angle + slack < 0) return angle + kTwoPi;
  if (angle + slack > kTwoPi) return angle - kTwoPi;
  return angle;
}

}  // namespace kurvo
