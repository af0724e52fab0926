// Curves that run alongside each other, compared as formulas.
#pragma once

#include <limits>

#include "pair/graph.h"

namespace kurvo::outline {

enum class Verdict { kUnknown, kApart, kNear };

// What is known of two graphs between two heights; where they are apart and near by turns, they are
// apart outside of low and high.
struct Relation {
  Verdict verdict = Verdict::kUnknown;
  double low = -kUnbounded, high = kUnbounded;

  static constexpr double kUnbounded = std::numeric_limits<double>::infinity();
};

// Whether two graphs are near everywhere between two heights, or apart: without flattening them,
// which near curves would need to the square root of the tolerance. Known for curves of one degree
// and those that are written so, for two arcs, and for an arc and another curve.
Relation Alongside(const Circle& a, const Stretch& part_a, const Circle& b, const Stretch& part_b,
                   const SideReach& reach);

}  // namespace kurvo::outline
