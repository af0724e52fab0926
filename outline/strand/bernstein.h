// Polynomials in Bernstein form.
#pragma once

#include <algorithm>
#include <cstddef>

#include "strand/check.h"

namespace kurvo::outline {

// The sum of coefficient(i) B_i,n(t) over i = 0 ... n, by Horner's rule on the basis (Farin, Curves
// and Surfaces for CAGD, 5th ed. 2002, section 4.8, "hornbez").
template <class Coefficient>
inline auto BernsteinSum(int n, double t, const Coefficient& coefficient) {
  const double s = 1 - t;
  // The same terms in the same order, without the counting.
  if (n == 1) return s * coefficient(0) + t * coefficient(1);
  if (n == 2) return s * (s * coefficient(0) + (2 * t) * coefficient(1)) + (t * t) * coefficient(2);
  if (n == 3) {
    const double tt = t * t;
    const auto two =
        s * (s * coefficient(0) + (3 * t) * coefficient(1)) + (3 * tt) * coefficient(2);
    return s * two + (tt * t) * coefficient(3);
  }
  auto sum = coefficient(0);
  double power = 1;     // t^i
  double binomial = 1;  // n over i
  for (int i = 1; i <= n; ++i) {
    power *= t;
    binomial = binomial * (n - i + 1) / i;
    sum = s * sum + (power * binomial) * coefficient(i);
  }
  return sum;
}

// Calls f with the degree as a constant for the usual ones, so that the sums unroll.
template <class F>
inline auto WithDegree(int degree, const F& f) {
  switch (degree) {
    case 1:
      return f(1);
    case 2:
      return f(2);
    case 3:
      return f(3);
    default:
      return f(degree);
  }
}

// The coefficients of the part of a polynomial up to t (`low`) and from t (`high`), by de
// Casteljau's algorithm; either may be `from` itself, the other may not.
template <class T>
inline void SplitBernstein(const T* from, int n, double t, T* low, T* high) {
  std::copy(from, from + n + 1, high);
  low[0] = from[0];
  for (int k = 1; k <= n; ++k) {
    for (int i = 0; i <= n - k; ++i) high[i] = (1 - t) * high[i] + t * high[i + 1];
    low[k] = high[0];
  }
}

// CutBernstein of a known degree, for loops that unroll.
template <int n, class T>
inline void CutLowBernstein(const T* from, double t0, double t1, T* out) {
  T c[static_cast<std::size_t>(n) + 1];
  for (int i = 0; i <= n; ++i) c[i] = out[i] = from[i];
  if (t1 < 1) {
    for (int k = 1; k <= n; ++k) {
      for (int i = 0; i <= n - k; ++i) c[i] = (1 - t1) * c[i] + t1 * c[i + 1];
      out[k] = c[0];
    }
  }
  if (!(t0 > 0)) return;
  const double t = t0 / t1;
  for (int k = 1; k <= n; ++k)
    for (int i = 0; i <= n - k; ++i) out[i] = (1 - t) * out[i] + t * out[i + 1];
}

// The coefficients of the part between t0 and t1; those at an end that is not cut off stay as they
// are. `out` may not be `from`.
template <class T>
inline void CutBernstein(const T* from, int n, double t0, double t1, T* out) {
  if (n == 2) return CutLowBernstein<2>(from, t0, t1, out);
  if (n == 3) return CutLowBernstein<3>(from, t0, t1, out);
  T beyond[kMostDegree + 1];
  if (t1 < 1) {
    SplitBernstein(from, n, t1, out, beyond);
  } else {
    std::copy(from, from + n + 1, out);
  }
  if (!(t0 > 0)) return;
  T before[kMostDegree + 1];
  SplitBernstein(out, n, t0 / t1, before, beyond);
  std::copy(beyond, beyond + n + 1, out);
}

}  // namespace kurvo::outline
