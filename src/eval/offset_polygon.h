// Control polygons moved sideways.
#pragma once

#include <cstdint>

#include "foundation/point.h"

namespace kurvo {

// Degree up to which Bezier curves are offset. Raised by one it fits the 40 coefficients that
// polynomials hold here, and all work areas lie on the stack.
constexpr int32_t kMaxOffsetDegree = 38;
constexpr int32_t kMaxOffsetPoints = kMaxOffsetDegree + 2;  // control points once it is raised

// The sharpest turn from one leg to the next at which their crossing counts; it goes to infinity as
// the turn goes to pi.
enum class SharpestTurn {
  kChecked,    // 150 degrees, 3.9 times the distance away: what is made of it is checked
  kUnchecked,  // 60 degrees, 1.2 times the distance away
};

// How every control point of an open polygon with n legs moves when each leg moves by `distance` to
// its left: the ends with their legs, an inner point to where its two legs cross. Legs that are
// parallel within `angle_tol` radians, and legs that turn by more than `sharpest`, have no crossing
// of use: the point goes with the leg that ends there. A leg not longer than `length_tol` has no
// direction and takes that of a neighbour. False when no leg has one: the polygon is a point.
bool MovePolygon(const Vec2* points, int32_t n, double distance, double length_tol,
                 double angle_tol, SharpestTurn sharpest, Vec2* moves);

}  // namespace kurvo
