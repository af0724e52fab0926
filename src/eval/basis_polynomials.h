// The basis functions of one knot span as polynomials.
#pragma once

#include <array>

#include "eval/knot_spans.h"
#include "eval/polynomial.h"

namespace kurvo {

// The k basis functions of span i by the Cox-de Boor recursion on polynomials, each level once.
// They are polynomials of the span's own parameter s = (t - u[i]) / (u[i+1] - u[i]): in powers of t
// itself a span of width h would lose h^(1-k) units in the last place. Requires order <= 40 and
// u[i] < u[i+1].
class BasisPolynomials {
 public:
  BasisPolynomials(const KnotVector& knots, int32_t i);

  // That of control point i - k + 1 + j, 0 <= j < k.
  const Polynomial& operator[](int32_t j) const { return basis_[static_cast<std::size_t>(j)]; }

 private:
  std::array<Polynomial, Polynomial::kCapacity> basis_;
};

}  // namespace kurvo
