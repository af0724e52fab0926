// Polynomials and curves in Bernstein form, in long double, for the oracles.
#pragma once

#include <cstddef>
#include <vector>

#include "oracle.h"

namespace peers::oracle {

inline Vec V(Point p) { return {p.x, p.y}; }

template <class T>
T DeCasteljau(std::vector<T> b, Real t) {
  for (std::size_t n = b.size(); n > 1; --n)
    for (std::size_t i = 0; i + 1 < n; ++i) b[i] = (1 - t) * b[i] + t * b[i + 1];
  return b[0];
}

template <class T>
void Halve(const std::vector<T>& b, std::vector<T>* left, std::vector<T>* right) {
  *right = b;
  left->resize(b.size());
  for (std::size_t n = b.size(); n > 0; --n) {
    (*left)[b.size() - n] = (*right)[0];
    for (std::size_t i = 0; i + 1 < n; ++i)
      (*right)[i] = Real(0.5) * ((*right)[i] + (*right)[i + 1]);
  }
}

inline std::vector<Vec> Hodograph(const std::vector<Vec>& points) {
  std::vector<Vec> d;
  for (std::size_t i = 0; i + 1 < points.size(); ++i)
    d.push_back(static_cast<Real>(points.size() - 1) * (points[i + 1] - points[i]));
  return d;
}

inline Real Binomial(std::size_t n, std::size_t k) {
  Real b = 1;
  for (std::size_t i = 0; i < k; ++i) b = b * static_cast<Real>(n - i) / static_cast<Real>(i + 1);
  return b;
}

// The Bernstein coefficients of the scalar product of two curves.
inline std::vector<Real> Product(const std::vector<Vec>& a, const std::vector<Vec>& b) {
  const std::size_t m = a.size() - 1, n = b.size() - 1;
  std::vector<Real> c(m + n + 1, 0);
  for (std::size_t i = 0; i <= m; ++i)
    for (std::size_t j = 0; j <= n; ++j)
      c[i + j] += Binomial(m, i) * Binomial(n, j) / Binomial(m + n, i + j) * Dot(a[i], b[j]);
  return c;
}

}  // namespace peers::oracle
