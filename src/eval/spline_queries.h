// Nearest point and parameter on a B-spline, span by span.
#pragma once

#include "eval/pcurve2d.h"
#include "records/views.h"

namespace kurvo {

// True when the degree is low enough for the foot-point polynomials of every span.
template <std::size_t kDim>
bool HasFootPoints(const SplineView<kDim>& spline, double tol);

// The nearest among the foot points of every span, the corners (interior knots of multiplicity
// order - 1 or more) and the two ends of the curve; ties keep the earlier one in this order.
template <std::size_t kDim>
NearestOnCurve NearestOnSpline(const SplineView<kDim>& spline, Vec2 p, double tol);

// The parameter of the first passage of the curve through p, else that of the nearest point.
template <std::size_t kDim>
Incidence ParameterOnSpline(const SplineView<kDim>& spline, Vec3 p, double tol, double& t);

}  // namespace kurvo
