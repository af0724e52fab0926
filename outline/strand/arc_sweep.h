// How far an arc goes.
#pragma once

#include <cmath>
#include <numbers>

#include "base/vec2.h"

namespace kurvo::outline {

inline constexpr double kTurn = 2 * std::numbers::pi;
inline constexpr double kCircleSlack = 1e-6;  // radians that the end of a circle may lie behind

// The sweep between two directions from the centre, in [0, kTurn] radians in the sense (1 counter-
// clockwise, -1 clockwise); kTurn for ends that are the same and for an end that lies no more than
// kCircleSlack behind the start.
inline double SweepBetween(Vec2 from, Vec2 to, double sense, bool same_ends) {
  double sweep = sense * std::atan2(Cross(from, to), Dot(from, to));
  if (sweep < 0) sweep += kTurn;
  return same_ends || sweep > kTurn - kCircleSlack ? kTurn : sweep;
}

}  // namespace kurvo::outline
