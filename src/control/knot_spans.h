// Knot spans of a B-spline and the basis values on one of them.
#pragma once

#include <cstdint>
#include <memory>

#include "foundation/with_constant.h"
#include "records/views.h"

namespace kurvo {

// The part of a knot vector that places one B-spline: order k, m control points, knots u[0 ..
// k+m-1].
struct KnotVector {
  const double* u;
  int32_t order;
  int32_t count;

  double Start() const { return u[order - 1]; }
  double End() const { return u[count]; }
};

template <std::size_t kDim>
KnotVector KnotsOf(const SplineView<kDim>& spline) {
  return {spline.knots, spline.order, spline.count};
}

// Calls use(k) with the order, for the common ones as a constant.
template <class Use>
decltype(auto) WithOrder(int32_t order, Use&& use) {
  return WithConstant<3, 4>(order, use);
}

// A span is named by the index i of its left knot, order - 1 <= i < count; control points i - order
// + 1 to i act on it. The index stays in that range whatever the knots hold.

// The span on which parameter t is evaluated: the first with a width whose right end lies after t
// when both are rounded to six decimals, so that t at an interior knot belongs to the span on its
// right; the last span when there is none. Binary search.
int32_t FindSpan(const KnotVector& knots, double t);

// The last span of the domain that has a width.
int32_t LastSpan(const KnotVector& knots);

// Calls visit(i) for every span with u[i] < u[i + 1], ascending, until it returns true.
template <class Visit>
bool AnySpan(const KnotVector& knots, Visit&& visit) {
  for (int32_t i = knots.order - 1; i < knots.count; ++i)
    if (knots.u[i] < knots.u[i + 1] && visit(i)) return true;
  return false;
}

// The triangular table of the Cox-de Boor recursion (Piegl and Tiller, The NURBS Book, algorithm
// A2.2), started from span i alone, so that neighbours that share a knot add nothing. 0/0 counts as
// 0. `u` is the left knot of the span; `values`, `left` and `right` have k entries. k is a number
// or, for the compiler to unroll the common orders, an integral constant.
template <class Order>
void FillBasis(Order k, const double* u, double t, double* values, double* left, double* right) {
  values[0] = 1.0;
  for (int32_t d = 1; d < k; ++d) {
    left[d] = t - u[1 - d];
    right[d] = u[d] - t;
    double saved = 0.0;
    for (int32_t r = 0; r < d; ++r) {
      const double width = u[r + 1] - u[1 - d + r];
      const double share = width != 0.0 ? values[r] * (1.0 / width) : 0.0;
      values[r] = saved + right[r + 1] * share;
      saved = left[d - r] * share;
    }
    values[d] = saved;
  }
}

// The k basis values of span i at t, and beyond the span the continuation of its polynomials. Lives
// on the stack for every order in use; larger ones take a work area from the heap.
class BasisValues {
 public:
  BasisValues(const KnotVector& knots, int32_t i, double t);
  BasisValues(const BasisValues&) = delete;
  BasisValues& operator=(const BasisValues&) = delete;

  // Value of the control point i - k + 1 + j, 0 <= j < k.
  double operator[](int32_t j) const { return values_[j]; }

 private:
  static constexpr int32_t kStackOrder = 64;

  double stack_[3 * kStackOrder];
  std::unique_ptr<double[]> heap_;
  double* values_ = stack_;
};

}  // namespace kurvo
