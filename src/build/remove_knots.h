// Removal of knots that a B-spline does not need.
#pragma once

#include "records/owned_curve.h"
#include "records/views.h"

namespace kurvo {

// The B-spline without the inner knots whose removal leaves it where it is within epsilon; `curve`
// is the record of `spline`, well formed, and no error is pending. Empty, with the bad-curve error,
// for more knots of a high order than HighOrderWork allows. Throws std::bad_alloc.
template <std::size_t kDim>
OwnedCurve WithoutKnots(const Curve& curve, const SplineView<kDim>& spline, GlobalVar& g);

}  // namespace kurvo
