// Descartes' rule of signs on an interval.
#include "eval/sign_variations.h"

#include <algorithm>
#include <cmath>

#include "foundation/with_constant.h"

namespace kurvo {
namespace {

constexpr double kDoubt = 1e-12;  // of the sum of magnitudes: below it a sign is not trusted

// Replaces the coefficients of f(t) by those of f(a + h x), by repeated synthetic division. Count
// is a number or, for the compiler to keep short polynomials in registers, an integral constant.
template <class Count>
void ShiftAndScale(Count count, double a, double h, double* c) {
  for (std::size_t pass = 0; pass + 1 < count; ++pass)
    for (std::size_t i = count - 1; i-- > pass;) c[i] += a * c[i + 1];
  double scale = 1.0;
  for (std::size_t i = 1; i < count; ++i) c[i] *= scale *= h;
}

// From powers to Bernstein coefficients, by the inverse of the power-basis matrix: c[i] / C(n, i)
// are the differences of the coefficients at 0, which repeated summation undoes.
template <class Count>
void ToBernstein(Count count, double* c) {
  double binomial = 1.0;
  for (std::size_t i = 1; i < count; ++i) {
    binomial *= static_cast<double>(count - i) / static_cast<double>(i);
    c[i] /= binomial;
  }
  for (std::size_t pass = 1; pass < count; ++pass)
    for (std::size_t i = count - 1; i >= pass; --i) c[i] += c[i - 1];
}

template <class Count>
SignVariations CountOn(Count count, const double* f, double a, double b) {
  double c[Polynomial::kCapacity];
  double magnitude = 0.0;
  const double reach = std::max({1.0, std::fabs(a), std::fabs(b)});
  for (std::size_t i = count; i-- > 0;) {
    c[i] = f[i];
    magnitude = magnitude * reach + std::fabs(f[i]);
  }
  ShiftAndScale(count, a, b - a, c);
  ToBernstein(count, c);

  int variations = 0;
  const double floor = kDoubt * magnitude;
  for (std::size_t i = 0; i < count; ++i) {
    if (!(std::fabs(c[i]) > floor)) return SignVariations::kOpen;
    if (i > 0 && (c[i] < 0.0) != (c[i - 1] < 0.0) && ++variations > 1) return SignVariations::kOpen;
  }
  return variations == 0 ? SignVariations::kNone : SignVariations::kOne;
}

}  // namespace

// The counts that are constants are those of the foot points of plain curves up to degree 5 and of
// rational ones up to degree 3, and of their derivatives.
SignVariations VariationsOn(const Polynomial& f, double a, double b) {
  return WithConstant<3, 4, 5, 6, 7, 8, 9, 10>(
      f.count(), [&](auto count) { return CountOn(count, f.data(), a, b); });
}

}  // namespace kurvo
