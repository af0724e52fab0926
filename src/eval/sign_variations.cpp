// Descartes' rule of signs on an interval.
#include "eval/sign_variations.h"

#include <algorithm>
#include <cmath>

namespace kurvo {
namespace {

constexpr double kDoubt = 1e-12;  // of the sum of magnitudes: below it a sign is not trusted

}  // namespace

SignVariations VariationsOn(const Polynomial& f, double a, double b) {
  const std::size_t count = f.count();
  double c[Polynomial::kCapacity];
  double magnitude = 0.0;
  const double reach = std::max({1.0, std::fabs(a), std::fabs(b)});
  for (std::size_t i = count; i-- > 0;) {
    c[i] = f[i];
    magnitude = magnitude * reach + std::fabs(f[i]);
  }
  // f(a + s) by repeated synthetic division, then s = (b - a) x.
  for (std::size_t pass = 0; pass + 1 < count; ++pass)
    for (std::size_t i = count - 1; i-- > pass;) c[i] += a * c[i + 1];
  double scale = 1.0;
  for (std::size_t i = 1; i < count; ++i) c[i] *= scale *= b - a;

  // Bernstein coefficients by the inverse of the power-basis matrix: c[i] / C(n, i) are the
  // differences of the coefficients at 0, which repeated summation undoes.
  double binomial = 1.0;
  for (std::size_t i = 1; i < count; ++i) {
    binomial *= static_cast<double>(count - i) / static_cast<double>(i);
    c[i] /= binomial;
  }
  for (std::size_t pass = 1; pass < count; ++pass)
    for (std::size_t i = count - 1; i >= pass; --i) c[i] += c[i - 1];

  int variations = 0;
  const double floor = kDoubt * magnitude;
  for (std::size_t i = 0; i < count; ++i) {
    if (!(std::fabs(c[i]) > floor)) return SignVariations::kOpen;
    if (i > 0 && (c[i] < 0.0) != (c[i - 1] < 0.0) && ++variations > 1) return SignVariations::kOpen;
  }
  return variations == 0 ? SignVariations::kNone : SignVariations::kOne;
}

}  // namespace kurvo
