// The basis functions of one knot span as polynomials.
#include "eval/basis_polynomials.h"

namespace kurvo {
namespace {

// target += f (constant + slope s); f may be longer than target.
void AddLinearMultiple(Polynomial& target, const Polynomial& f, double constant, double slope) {
  if (f.IsZero()) return;
  const std::size_t count = f.count() + 1;
  if (target.count() < count) {
    const std::size_t old_count = target.count();
    target.Truncate(count);
    for (std::size_t i = old_count; i < count; ++i) target[i] = 0.0;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const double low = i < f.count() ? f[i] * constant : 0.0;
    const double high = i > 0 ? f[i - 1] * slope : 0.0;
    target[i] += low + high;
  }
}

}  // namespace

// N(j, d) = N(j, d-1) (s/d1 - u[j]/d1) + N(j+1, d-1) (u[j+d]/d2 - s/d2) with d1 = u[j+d-1] - u[j]
// and d2 = u[j+d] - u[j+1]; a zero denominator drops its term. On level d the functions j = i-d+1
// ... i are not zero; they are kept in basis_[0 .. d-1].
BasisPolynomials::BasisPolynomials(const KnotVector& knots, int32_t i) {
  const double origin = knots.u[i];
  const double span = knots.u[i + 1] - origin;
  const auto local = [&](int32_t index) { return (knots.u[index] - origin) / span; };

  basis_[0] = Polynomial::Constant(1.0);
  for (int32_t d = 2; d <= knots.order; ++d) {
    for (int32_t slot = d - 1; slot >= 0;
         --slot) {  // from the right: slot - 1 is still of level d - 1
      const int32_t j = i - d + 1 + slot;
      const auto at = static_cast<std::size_t>(slot);
      Polynomial next;
      if (slot > 0) {
        const double u0 = local(j), d1 = local(j + d - 1) - u0;
        if (d1 != 0.0) AddLinearMultiple(next, basis_[at - 1], -(u0 / d1), 1.0 / d1);
      }
      if (slot < d - 1) {
        const double u1 = local(j + d), d2 = u1 - local(j + 1);
        if (d2 != 0.0) AddLinearMultiple(next, basis_[at], u1 / d2, -(1.0 / d2));
      }
      basis_[at] = next;
    }
  }
}

}  // namespace kurvo
