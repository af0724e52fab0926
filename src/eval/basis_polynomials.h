// The basis functions of one knot span as polynomials.
#pragma once

#include <cstddef>

#include "control/knot_spans.h"
#include "eval/polynomial.h"

namespace kurvo {

// The k basis functions of span i by the Cox-de Boor recursion on polynomials, each level once.
// They are polynomials of the span's own parameter s = (t - u[i]) / (u[i+1] - u[i]): in powers of t
// itself a span of width h would lose h^(1-k) units in the last place. Requires order <= 40 and
// u[i] < u[i+1].
class BasisPolynomials {
 public:
  BasisPolynomials(const KnotVector& knots, int32_t i);

  // The k coefficients, in ascending powers, of the function of control point i - k + 1 + j,
  // 0 <= j < k.
  const double* operator[](int32_t j) const { return coefficients_ + j * order_; }

 private:
  template <class Order>
  void Fill(Order k, const double* u);

  const int32_t order_;
  double coefficients_[Polynomial::kCapacity * Polynomial::kCapacity];
};

}  // namespace kurvo
