// The basis functions of one knot span as polynomials.
#include "eval/basis_polynomials.h"

namespace kurvo {
namespace {

// Element c of (constant + slope s) f, where f has `count` coefficients.
double LinearMultiple(const double* f, int32_t count, int32_t c, double constant, double slope) {
  const double low = c < count ? f[c] * constant : 0.0;
  const double high = c > 0 ? f[c - 1] * slope : 0.0;
  return low + high;
}

}  // namespace

// N(j, d) = N(j, d-1) (s/d1 - u[j]/d1) + N(j+1, d-1) (u[j+d]/d2 - s/d2) with d1 = u[j+d-1] - u[j]
// and d2 = u[j+d] - u[j+1]; a zero denominator drops its term. On level d the functions j = i-d+1
// ... i are not zero; they are kept in rows 0 ... d-1. `u` is the left knot of the span.
template <class Order>
void BasisPolynomials::Fill(Order k, const double* u) {
  double local[2 * Polynomial::kCapacity];  // knot u[m - k + 2] as a value of s
  for (int32_t m = 0; m < 2 * (k - 1); ++m) local[m] = (u[m - k + 2] - u[0]) / (u[1] - u[0]);

  coefficients_[0] = 1.0;
  for (int32_t d = 2; d <= k; ++d) {
    for (int32_t row = d - 1; row >= 0; --row) {  // from the last: row - 1 is still of level d - 1
      const int32_t j = k - d - 1 + row;  // first knot of the function in this row; -1: not needed
      double* f = coefficients_ + row * k;
      const double d1 = row > 0 ? local[j + d - 1] - local[j] : 0.0;
      const double d2 = row < d - 1 ? local[j + d] - local[j + 1] : 0.0;
      for (int32_t c = d - 1; c >= 0; --c) {  // from the last: f[c - 1] is still of level d - 1
        double sum = 0.0;
        if (d1 != 0.0) sum += LinearMultiple(f - k, d - 1, c, -(local[j] / d1), 1.0 / d1);
        if (d2 != 0.0) sum += LinearMultiple(f, d - 1, c, local[j + d] / d2, -(1.0 / d2));
        f[c] = sum;
      }
    }
  }
}

BasisPolynomials::BasisPolynomials(const KnotVector& knots, int32_t i) : order_(knots.order) {
  WithOrder(order_, [&](auto k) { Fill(k, knots.u + i); });
}

}  // namespace kurvo
