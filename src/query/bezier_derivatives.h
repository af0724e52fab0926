// Derivatives of a Bezier curve of either kind, of any degree.
#pragma once

#include "foundation/point.h"
#include "records/views.h"

namespace kurvo {

// By the curve's own parameter, everywhere on the real line. A rational curve whose weights are all
// 1 within `tol` counts as the plain curve of its points; a weight function of 0 gives numbers that
// are not finite.
template <std::size_t kDim>
Vec2 FirstDerivative(const BezierView<kDim>& bezier, double t, double tol);

struct FirstAndSecond {
  Vec2 first;
  Vec2 second;
};
template <std::size_t kDim>
FirstAndSecond FirstTwoDerivatives(const BezierView<kDim>& bezier, double t, double tol);

// The derivative of order n >= 1. Throws std::bad_alloc when the degree or the order is too large
// for a work area on the stack.
template <std::size_t kDim>
Vec2 NthDerivative(const BezierView<kDim>& bezier, int32_t n, double t, double tol);

}  // namespace kurvo
