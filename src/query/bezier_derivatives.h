// Derivatives of a Bezier curve of either kind, of any degree.
#pragma once

#include "foundation/point.h"
#include "records/views.h"

namespace kurvo {

struct Derivatives {
  Vec2 first;
  Vec2 second;  // 0 when only the first is asked for
};

// By the curve's own parameter, everywhere on the real line. A rational curve whose weights are all
// 1 within `tol` counts as the plain curve of its points; a weight function of 0 gives numbers that
// are not finite. kOrders is 1 or 2.
template <int kOrders, std::size_t kDim>
Derivatives LowDerivatives(const BezierView<kDim>& bezier, double t, double tol);

// The first one alone, of a plain curve: it is returned in registers.
Vec2 FirstDerivative(const BezierView<3>& bezier, double t);

// The derivative of order n >= 1. Throws std::bad_alloc when the degree or the order is too large
// for a work area on the stack.
template <std::size_t kDim>
Vec2 NthDerivative(const BezierView<kDim>& bezier, int32_t n, double t, double tol);

}  // namespace kurvo
