// Points of a B-spline by its basis values.
#pragma once

#include <optional>

#include "eval/knot_spans.h"
#include "foundation/point.h"

namespace kurvo {

// A point costs O(order^2): orders above this are refused, so that no single point takes seconds.
constexpr int32_t kMaxSplineOrder = 4096;

// True when the span's control points are evaluated without weights: always for a plain spline, for
// a rational one when all its weights are 1 within `tol`, or the k weights that act on span i are 1
// but for rounding. Other weights are looked at only when those k are near 1 beyond that, so that
// the cost of a point does not hang on the length of the curve.
bool SpanIsPolynomial(const SplineView<3>& spline, int32_t i, double tol);
bool SpanIsPolynomial(const SplineView<4>& spline, int32_t i, double tol);

// The point of span i at t, or of its continuation. z is the sum of basis times z for a plain
// spline and 0 for a rational one; a weight sum of exactly 0 leaves x and y undivided.
Vec3 PointOnSpan(const SplineView<3>& spline, int32_t i, double t, double tol);
Vec3 PointOnSpan(const SplineView<4>& spline, int32_t i, double t, double tol);

struct SpanPoint {
  int32_t span;
  double t;
};

// Where the first (last) point of the curve is evaluated: nowhere when there are exactly `order`
// equal end knots, so that it is the end control point itself; otherwise, also when the end knot is
// repeated into the domain and the first control points act on no span, at the end of the domain.
template <std::size_t kDim>
std::optional<SpanPoint> EvaluatedStart(const SplineView<kDim>& spline);
template <std::size_t kDim>
std::optional<SpanPoint> EvaluatedEnd(const SplineView<kDim>& spline);

// The first (last) point of the curve.
template <std::size_t kDim>
Vec3 StartOfSpline(const SplineView<kDim>& spline, double tol);
template <std::size_t kDim>
Vec3 EndOfSpline(const SplineView<kDim>& spline, double tol);

}  // namespace kurvo
