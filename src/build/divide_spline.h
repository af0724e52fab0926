// B-splines cut into pieces.
#pragma once

#include <optional>

#include "records/owned_curve.h"
#include "records/views.h"

namespace kurvo {

// The parameters at which one piece ends and the next one begins: the same, but for a stretch that
// is left out because the curve stands still there.
struct CutPlace {
  double before;
  double after;
};

// Where a B-spline is cut for a parameter t inside its domain: at the stored knot when t rounds to
// one; past the span of t, when that is a single point; otherwise at t. Nothing for knots not in
// order. O(log count + order).
template <std::size_t kDim>
std::optional<CutPlace> DivisionPlace(const SplineView<kDim>& spline, double t, const GlobalVar& g);

// Writes the n + 1 pieces between n places, which ascend from the start to the end of the domain;
// `curve` is the record of `spline`. A piece without length is a point curve. The knots of every
// piece run over [0, 1]. False for knots not in order. Throws std::bad_alloc.
template <std::size_t kDim>
bool CutSpline(const Curve& curve, const SplineView<kDim>& spline, const CutPlace* places,
               int32_t n, OwnedCurve* pieces, GlobalVar& g);

}  // namespace kurvo
