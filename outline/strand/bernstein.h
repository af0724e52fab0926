// Polynomials in Bernstein form.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/vec2.h"
#include "strand/check.h"

namespace kurvo::outline {

inline constexpr int kMostTabled = 15;  // degree: binomials of higher ones are counted on the way

using BinomialRow = std::array<double, static_cast<std::size_t>(kMostTabled) + 1>;
using BinomialTable = std::array<BinomialRow, static_cast<std::size_t>(kMostTabled) + 1>;

constexpr BinomialTable MakeBinomials() {  // Pascal's triangle
  BinomialTable table{};
  for (std::size_t n = 0; n < table.size(); ++n) {
    table[n][0] = 1;
    for (std::size_t i = 1; i <= n; ++i) table[n][i] = table[n - 1][i - 1] + table[n - 1][i];
  }
  return table;
}

inline constexpr BinomialTable kBinomials = MakeBinomials();

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
  double power = 1;  // t^i
  if (n <= kMostTabled) {
    const BinomialRow& row = kBinomials[static_cast<std::size_t>(n)];
    for (int i = 1; i <= n; ++i) {
      power *= t;
      sum = s * sum + (power * row[static_cast<std::size_t>(i)]) * coefficient(i);
    }
    return sum;
  }
  double binomial = 1;  // n over i
  for (int i = 1; i <= n; ++i) {
    power *= t;
    binomial = binomial * (n - i + 1) / i;
    sum = s * sum + (power * binomial) * coefficient(i);
  }
  return sum;
}

// The same with the first derivative, whose digits are as many as those of the coefficients, not of
// their differences: by the last step of de Casteljau's algorithm.
template <class Coefficient, class T>
inline T BernsteinSumWithSlope(int n, double t, const Coefficient& coefficient, T& slope) {
  const double s = 1 - t;
  T low = coefficient(0), high = coefficient(1);
  double power = 1, binomial = 1;  // t^i, n - 1 over i
  for (int i = 1; i < n; ++i) {
    power *= t;
    binomial = n - 1 <= kMostTabled
                   ? kBinomials[static_cast<std::size_t>(n - 1)][static_cast<std::size_t>(i)]
                   : binomial * (n - i) / i;
    const double weight = power * binomial;
    low = s * low + weight * coefficient(i);
    high = s * high + weight * coefficient(i + 1);
  }
  slope = static_cast<double>(n) * (high - low);
  return s * low + t * high;
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

// The same between t0 and t1 for a degree that is known, for loops that unroll (0: one that is
// not); load(i) is a coefficient, store(i, c) takes one of the part.
template <int known, class Load, class Store>
inline void CutOfDegree(int degree, double t0, double t1, const Load& load, const Store& store) {
  using T = decltype(load(0));
  constexpr std::size_t kCount = static_cast<std::size_t>(known > 0 ? known : kMostDegree) + 1;
  const int n = known > 0 ? known : degree;
  T c[kCount], out[kCount];
  for (int i = 0; i <= n; ++i) c[i] = out[i] = load(i);
  if (t1 < 1) {
    for (int k = 1; k <= n; ++k) {
      for (int i = 0; i <= n - k; ++i) c[i] = (1 - t1) * c[i] + t1 * c[i + 1];
      out[k] = c[0];
    }
  }
  if (t0 > 0) {
    const double t = t0 / t1;
    for (int k = 1; k <= n; ++k)
      for (int i = 0; i <= n - k; ++i) out[i] = (1 - t) * out[i] + t * out[i + 1];
  }
  for (int i = 0; i <= n; ++i) store(i, out[i]);
}

template <class Load, class Store>
inline void CutBernstein(int n, double t0, double t1, const Load& load, const Store& store) {
  if (n == 2) return CutOfDegree<2>(n, t0, t1, load, store);
  if (n == 3) return CutOfDegree<3>(n, t0, t1, load, store);
  CutOfDegree<0>(n, t0, t1, load, store);
}

// The coefficients between t0 and t1; those at an end that is not cut off stay as they are.
template <class T>
inline void CutBernstein(const T* from, int n, double t0, double t1, T* out) {
  CutBernstein(
      n, t0, t1, [=](int i) { return from[i]; }, [=](int i, T c) { out[i] = c; });
}

// The same of points whose coordinates are apart.
inline void CutBernstein(const double* x, const double* y, int n, double t0, double t1,
                         double* part_x, double* part_y) {
  CutBernstein(
      n, t0, t1,
      [=](int i) {
        return Vec2{x[i], y[i]};
      },
      [=](int i, Vec2 p) {
        part_x[i] = p.x;
        part_y[i] = p.y;
      });
}

}  // namespace kurvo::outline
