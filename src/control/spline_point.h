// Points of a B-spline by its basis values.
#pragma once

#include <optional>

#include "control/knot_spans.h"
#include "foundation/point.h"

namespace kurvo {

// Whether an evaluator leaves the weights of a spline aside: always for a plain one, for a rational
// one when all its weights are 1 within `tol`.
inline bool EvaluatesPlain(const SplineView<3>&, double) { return true; }
bool EvaluatesPlain(const SplineView<4>& spline, double tol);

// The same for span i of a spline that as a whole `plain`ly is, or is not, evaluated so: there the
// k weights that act on the span count, when they are 1 but for rounding.
inline bool SpanIsPolynomial(const SplineView<3>&, int32_t, bool) { return true; }
bool SpanIsPolynomial(const SplineView<4>& spline, int32_t i, bool plain);

// The point of span i at t, or of its continuation. z is the sum of basis times z for a plain
// spline and 0 for a rational one; a weight sum of exactly 0 leaves x and y undivided. Weights
// count, unless they are left aside for the whole span.
enum class Weights { kCount, kAside };
Vec3 PointOnSpan(const SplineView<3>& spline, int32_t i, double t,
                 Weights weights = Weights::kCount);
Vec3 PointOnSpan(const SplineView<4>& spline, int32_t i, double t,
                 Weights weights = Weights::kCount);

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
Vec3 StartOfSpline(const SplineView<kDim>& spline);
template <std::size_t kDim>
Vec3 EndOfSpline(const SplineView<kDim>& spline);

}  // namespace kurvo
