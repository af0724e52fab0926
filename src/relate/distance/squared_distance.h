// The squared distance of a point on one piece from a point on another, near a pair of parameters.
#pragma once

#include <algorithm>

#include "relate/bezier_piece.h"

namespace kurvo {

struct ParameterCell {
  ParameterPair low;
  ParameterPair high;
};

inline double ClampedS(const ParameterCell& cell, double s) {
  return std::clamp(s, cell.low.s, cell.high.s);
}
inline double ClampedT(const ParameterCell& cell, double t) {
  return std::clamp(t, cell.low.t, cell.high.t);
}

// f(s, t) = |B(t) - A(s)|^2 / 2 with its first and second derivatives.
struct SquaredDistance {
  SquaredDistance(const Jet& a, const Jet& b);

  // A step of Newton's method that goes down: along the axes of the Hessian, with its curvatures
  // taken without their signs, where the function is not convex (Nocedal and Wright, Numerical
  // Optimization, 2006, section 3.4). A parameter that is fixed stays.
  ParameterPair StepDown(bool fixed_s, bool fixed_t) const;
  // The step that a cell leaves room for: where `step` leaves it, on to the least value that the
  // second derivatives promise on the side it leaves through.
  ParameterPair Within(const ParameterCell& room, ParameterPair step) const;
  // A step that goes down if it is short enough, whatever the second derivatives are.
  ParameterPair SteepStep(bool fixed_s, bool fixed_t) const;

  double square;  // |B - A|^2
  double slope_s, slope_t;
  double ss, st, tt;
  double speed_s, speed_t;  // |A'|^2, |B'|^2

 private:
  ParameterPair StepAlongAxes() const;
  double Change(ParameterPair step) const;  // of f, by Taylor's formula
};

}  // namespace kurvo
