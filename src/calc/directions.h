// Directions in the plane: unit vectors and angles.
#pragma once

#include <cmath>

#include "foundation/error_codes.h"
#include "foundation/point.h"

namespace kurvo {

constexpr double kPi = 3.141592653589793;
constexpr double kTwoPi = 6.283185307179586;

// Polar angle in (-pi, pi]; 0 for the zero vector.
inline double AngleOf(Vec2 v) { return std::atan2(v.y, v.x); }

// v / |v|. A vector whose components are all within epsilon of 0 is too short to have a direction:
// it gives the zero vector and leaves a warning. The test looks at components and not at the
// length, so that a vector is short exactly when its two ends are the same point.
inline Vec3 UnitVector(Vec3 v, GlobalVar& g) {
  if (Within(v, g.epsilon)) {
    Fail(g, KURVO_WARN_SHORT_VECTOR);
    return {};
  }
  return v / Length(v);
}

// A difference of two polar angles, brought by one turn into [-slack, 2 pi - slack].
inline double OneTurn(double angle, double slack) {
  if (angle + slack < 0) return angle + kTwoPi;
  if (angle + slack > kTwoPi) return angle - kTwoPi;
  return angle;
}

}  // namespace kurvo
