// Bernstein form: binomial coefficients, conversion to power basis, de Casteljau's algorithm.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "control/blossom.h"
#include "foundation/with_constant.h"

namespace kurvo {

// Up to this degree positions are sums of powers; from the next on, where the power basis would
// lose more than 3^9 units in the last place, they are repeated interpolations.
constexpr int32_t kMaxPowerBasisDegree = 9;

// Up to this degree functions are written in power basis.
constexpr std::size_t kMaxTabledDegree = 39;

namespace internal {

constexpr std::size_t kTableSize = kMaxTabledDegree + 1;
using BinomialTable = std::array<std::array<double, kTableSize>, kTableSize>;

constexpr BinomialTable MakeBinomials() {  // Pascal's triangle; exact, all below 2^53
  BinomialTable table{};
  for (std::size_t n = 0; n < kTableSize; ++n) {
    table[n][0] = 1.0;
    for (std::size_t i = 1; i <= n; ++i)
      table[n][i] = table[n - 1][i - 1] + (i < n ? table[n - 1][i] : 0.0);
  }
  return table;
}

inline constexpr BinomialTable kBinomials = MakeBinomials();

}  // namespace internal

// C(n, i) for 0 <= i <= n <= kMaxTabledDegree.
constexpr double Binomial(std::size_t n, std::size_t i) { return internal::kBinomials[n][i]; }

// Entry (j, i) of the Bernstein-to-power matrix of degree n, the coefficient of t^j in the
// Bernstein polynomial B(i, n): (-1)^(j-i) C(n, j) C(j, i) for i <= j, else 0. Exact up to
// degree 30.
constexpr double BernsteinToPower(std::size_t n, std::size_t j, std::size_t i) {
  const double magnitude = Binomial(n, j) * Binomial(j, i);
  return (j - i) % 2 == 0 ? magnitude : -magnitude;
}

namespace internal {

// Coefficient j, for each component: the sum over i of matrix entry (j, i) times vector i.
template <std::size_t kSize, class EntryAt>
std::array<double, kSize> PowerCoefficient(std::size_t j, const std::array<double, kSize>* vectors,
                                           EntryAt&& entry) {
  std::array<double, kSize> sum;
  for (std::size_t c = 0; c < kSize; ++c) sum[c] = entry(j, 0) * vectors[0][c];
  for (std::size_t i = 1; i <= j; ++i)
    for (std::size_t c = 0; c < kSize; ++c) sum[c] += entry(j, i) * vectors[i][c];
  return sum;
}

// The Bernstein-to-power matrix of a degree known at compile time, for loops that the compiler
// unrolls.
template <std::size_t kDegree>
struct FixedMatrix {
  static constexpr auto kEntries = [] {
    std::array<std::array<double, kDegree + 1>, kDegree + 1> m{};
    for (std::size_t j = 0; j <= kDegree; ++j)
      for (std::size_t i = 0; i <= j; ++i) m[j][i] = BernsteinToPower(kDegree, j, i);
    return m;
  }();
  static constexpr std::size_t kPoints = kDegree + 1;
  static constexpr std::size_t degree() { return kDegree; }
  constexpr double operator()(std::size_t j, std::size_t i) const { return kEntries[j][i]; }
};

struct GeneralMatrix {
  static constexpr std::size_t kPoints = kTableSize;
  std::size_t n;
  std::size_t degree() const { return n; }
  double operator()(std::size_t j, std::size_t i) const { return BernsteinToPower(n, j, i); }
};

// Calls use(matrix) with the matrix of degree n, fixed up to kMaxPowerBasisDegree.
template <class Use>
decltype(auto) WithMatrix(std::size_t n, Use&& use) {
  return WithConstant<1, 2, 3, 4, 5, 6, 7, 8, 9>(n, [&]<class Degree>(Degree degree) {
    if constexpr (std::is_same_v<Degree, std::size_t>)
      return use(GeneralMatrix{degree});
    else
      return use(FixedMatrix<Degree::value>());
  });
}

// The coefficient vectors of a function of the matrix's degree.
template <std::size_t kSize, class Matrix>
struct Vectors {
  template <class Load>
  Vectors(const Matrix& matrix, Load&& load) {
    for (std::size_t i = 0; i <= matrix.degree(); ++i) load(static_cast<int32_t>(i), of_point[i]);
  }
  std::array<double, kSize> of_point[Matrix::kPoints];
};

}  // namespace internal

// Calls store(j, vector) with the coefficient vector of t^j, in power basis, of the Bezier function
// of degree n <= kMaxTabledDegree whose coefficient vectors are written by load(i, vector): the sum
// over i of matrix entry times vector i, in ascending order of i.
template <std::size_t kSize, class Load, class Store>
void ToPowerBasis(std::size_t n, Load&& load, Store&& store) {
  internal::WithMatrix(n, [&]<class Matrix>(const Matrix& matrix) {
    const internal::Vectors<kSize, Matrix> vectors(matrix, load);
    for (std::size_t j = 0; j <= matrix.degree(); ++j)
      store(j, internal::PowerCoefficient(j, vectors.of_point, matrix));
  });
}

// The values at t of the polynomials with the coefficients of ToPowerBasis, by the same operations
// in the same order as Value, without storing them. Requires n <= kMaxPowerBasisDegree.
template <std::size_t kSize, class Load>
std::array<double, kSize> PowerBasisValue(int32_t n, double t, Load&& load) {
  return internal::WithMatrix(static_cast<std::size_t>(n), [&]<class Matrix>(const Matrix& matrix) {
    const internal::Vectors<kSize, Matrix> vectors(matrix, load);
    std::array<double, kSize> sum = internal::PowerCoefficient(0, vectors.of_point, matrix);
    if (t == 0.0) return sum;
    double power = 1.0;
    for (std::size_t j = 1; j <= matrix.degree(); ++j) {
      const std::array<double, kSize> term =
          internal::PowerCoefficient(j, vectors.of_point, matrix);
      power *= t;
      for (std::size_t c = 0; c < kSize; ++c) sum[c] += term[c] * power;
    }
    return sum;
  });
}

namespace internal {

// For t in [0, 1]: the linear-time recurrence of Wozny and Chudy (Computer-Aided Design 118, 2020,
// algorithm 1), a sequence of convex combinations that needs no work area:
//   Q_k = (1 - h_k) Q_(k-1) + h_k P_k with h_k = u h_(k-1) (n-k+1) / (k + u h_(k-1) (n-k+1)) and
//   u = t / (1 - t); run from the end that is nearer, so that u stays at most 1.
template <std::size_t kSize, class Load>
std::array<double, kSize> InnerValue(int32_t n, double t, Load&& load) {
  const bool from_end = t > 0.5;
  const double u = from_end ? (1.0 - t) / t : t / (1.0 - t);
  std::array<double, kSize> q, p;
  load(from_end ? n : 0, q);
  double h = 1.0;
  for (int32_t k = 1; k <= n; ++k) {
    const double ahead = u * h * static_cast<double>(n - k + 1);
    h = ahead / (static_cast<double>(k) + ahead);
    load(from_end ? n - k : k, p);
    MixInto(q, p, h, q);
  }
  return q;
}

// For t beyond the ends, where u is negative and the recurrence above has poles: the quotient
//   (sum of C(n, k) u^k P_k) / (sum of C(n, k) u^k),
// summed term by term, both sums scaled down together before they overflow.
template <std::size_t kSize, class Load>
std::array<double, kSize> ContinuedValue(int32_t n, double t, Load&& load) {
  constexpr double kLarge = 0x1p500;
  const bool from_end = t > 0.5;
  const double u = from_end ? (1.0 - t) / t : t / (1.0 - t);
  std::array<double, kSize> q, p;
  load(from_end ? n : 0, q);
  double term = 1.0;
  double sum = 1.0;
  for (int32_t k = 1; k <= n; ++k) {
    term *= u * static_cast<double>(n - k + 1) / static_cast<double>(k);
    if (std::fabs(term) > kLarge) {
      term /= kLarge;
      sum /= kLarge;
      for (double& component : q) component /= kLarge;
    }
    load(from_end ? n - k : k, p);
    for (std::size_t c = 0; c < kSize; ++c) q[c] += term * p[c];
    sum += term;
  }
  for (double& component : q) component /= sum;
  return q;
}

}  // namespace internal

// The value at t of the Bezier function of degree n whose coefficient vectors of `kSize` components
// are written by load(i, vector): de Casteljau's algorithm on the stack up to degree 39, beyond
// that in linear time without a work area.
template <std::size_t kSize, class Load>
std::array<double, kSize> CasteljauValue(int32_t n, double t, Load&& load) {
  using Vector = std::array<double, kSize>;
  constexpr int32_t kStackDegree = 39;
  if (n <= kStackDegree) {
    const double s = 1.0 - t;
    Vector work[kStackDegree + 1];
    for (int32_t i = 0; i <= n; ++i) load(i, work[i]);
    for (int32_t level = n; level > 0; --level)
      for (int32_t i = 0; i < level; ++i)
        for (std::size_t c = 0; c < kSize; ++c) work[i][c] = s * work[i][c] + t * work[i + 1][c];
    return work[0];
  }
  return t < 0.0 || t > 1.0 ? internal::ContinuedValue<kSize>(n, t, load)
                            : internal::InnerValue<kSize>(n, t, load);
}

// The same out of line: its work area would be in the way of lower degrees.
template <std::size_t kSize, class Load>
[[gnu::noinline]] std::array<double, kSize> CasteljauValueApart(int32_t n, double t, Load&& load) {
  return CasteljauValue<kSize>(n, t, load);
}

// The value at t of the Bezier function of degree n whose coefficient vectors are written by
// load(i, vector), in the way that suits the degree.
template <std::size_t kSize, class Load>
std::array<double, kSize> BezierValue(int32_t n, double t, Load&& load) {
  return n <= kMaxPowerBasisDegree ? PowerBasisValue<kSize>(n, t, load)
                                   : CasteljauValueApart<kSize>(n, t, load);
}

}  // namespace kurvo
