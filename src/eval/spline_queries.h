// Nearest point and parameter on a B-spline, span by span.
#pragma once

#include "eval/pcurve2d.h"
#include "records/views.h"

namespace kurvo {

// True when the degree is low enough for the foot-point polynomials of every span.
template <std::size_t kDim>
bool HasFootPoints(const SplineView<kDim>& spline, double tol);

// The nearest point of a spline. It is not that at t where the curve jumps, or where the domain is
// so narrow that parameters of different spans are the same to six decimals.
struct SplineFoot {
  NearestOnCurve nearest;
  Vec2 point;
};

// The nearest among the foot points of every span, the corners (interior knots of multiplicity
// order - 1 or more) and the two ends of the curve; ties keep the earlier one in this order.
// Polynomials are made for the spans alone that can win: the others are passed over by bounds on
// their distance, without a change of the result.
template <std::size_t kDim>
SplineFoot FootOnSpline(const SplineView<kDim>& spline, Vec2 p, double tol);

template <std::size_t kDim>
NearestOnCurve NearestOnSpline(const SplineView<kDim>& spline, Vec2 p, double tol) {
  return FootOnSpline(spline, p, tol).nearest;
}

// The parameter of the first passage of the curve through p, else that of the nearest point.
template <std::size_t kDim>
Incidence ParameterOnSpline(const SplineView<kDim>& spline, Vec3 p, double tol, double& t);

}  // namespace kurvo
