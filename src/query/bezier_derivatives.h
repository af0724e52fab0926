// Derivatives of a Bezier curve of either kind, of any degree.
#pragma once

#include "control/blossom.h"
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

// De Casteljau's algorithm without a loop or a work area: the compiler computes each point once.
template <int32_t kDegree, int32_t kFirst = 0, class At>
[[gnu::always_inline]] inline auto FixedValue(double t, const At& at) {
  if constexpr (kDegree == 0)
    return at(kFirst);
  else
    return Mix(FixedValue<kDegree - 1, kFirst>(t, at), FixedValue<kDegree - 1, kFirst + 1>(t, at),
               t);
}

// The same for a known degree, inlined: so many times the Bezier function of the legs.
template <int32_t kDegree>
inline Vec2 FirstDerivativeOf(const double (*points)[3], double t) {
  const auto leg = [points](int32_t i) { return Planar(points[i + 1]) - Planar(points[i]); };
  return static_cast<double>(kDegree) * FixedValue<kDegree - 1>(t, leg);
}

// The derivative of order n >= 1. Throws std::bad_alloc when the degree or the order is too large
// for a work area on the stack.
template <std::size_t kDim>
Vec2 NthDerivative(const BezierView<kDim>& bezier, int32_t n, double t, double tol);

}  // namespace kurvo
