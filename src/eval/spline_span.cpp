// One knot span of a B-spline: its polynomials, and bounds on its distance.
#include "eval/spline_span.h"

#include "control/bernstein.h"

namespace kurvo {
namespace {

using Homogeneous = std::array<double, 3>;

// (1 - s) a + s b.
Homogeneous Mix(const Homogeneous& a, const Homogeneous& b, double s) {
  return {(1.0 - s) * a[0] + s * b[0], (1.0 - s) * a[1] + s * b[1], (1.0 - s) * a[2] + s * b[2]};
}

}  // namespace

template <std::size_t kDim>
Segment SplineSpan<kDim>::ToSegment(Vec2 origin) const {
  const BasisPolynomials basis(KnotsOf(spline_), i_);
  const auto order = static_cast<std::size_t>(spline_.order);
  Segment segment;
  segment.rational = !IsPolynomial();
  segment.x.Truncate(order);
  segment.y.Truncate(order);
  segment.w.Truncate(segment.rational ? order : 0);
  for (std::size_t c = 0; c < order; ++c) {
    Homogeneous sum = {};
    for (int32_t j = 0; j < spline_.order; ++j) {
      const double weight = segment.rational ? Weight(points_[j]) : 1.0;
      const double n = basis[j][c];
      sum = {sum[0] + weight * (points_[j][0] - origin.x) * n,
             sum[1] + weight * (points_[j][1] - origin.y) * n, sum[2] + weight * n};
    }
    segment.x[c] = sum[0];
    segment.y[c] = sum[1];
    if (segment.rational) segment.w[c] = sum[2];
  }
  return segment;
}

// The Bezier points of the span [a, b] = [u[i], u[i+1]] by knot insertion, written with the blossom
// F of the span's polynomial (Ramshaw 1989) of degree n: the control points are d(m) = F(u[i-n+1+m]
// ... u[i+m]). The first loop replaces the knots before a by a, which leaves F(a^(n-m), u[i+1] ...
// u[i+m]) in place m; the second one replaces those after b by b. Every step is a convex
// combination for ascending knots.
template <std::size_t kDim>
void SplineSpan<kDim>::ToBezier(Vec2 p, BezierPoints& points) const {
  const double* u = spline_.knots + i_;
  const double a = u[0];
  const double b = u[1];
  const bool polynomial = IsPolynomial();
  WithOrder(spline_.order, [&](auto k) {
    const int32_t n = k - 1;
    Homogeneous* d = points.data();
    for (int32_t m = 0; m <= n; ++m) {
      const double weight = polynomial ? 1.0 : Weight(points_[m]);
      d[m] = {weight * (points_[m][0] - p.x), weight * (points_[m][1] - p.y), weight};
    }
    for (int32_t level = 1; level < n; ++level)
      for (int32_t m = 0; m < n - level; ++m)
        d[m] = Mix(d[m], d[m + 1], (a - u[m + level - n]) / (u[m + 1] - u[m + level - n]));
    for (int32_t level = 1; level < n; ++level)
      for (int32_t m = n; m > level; --m)
        d[m] = Mix(d[m - 1], d[m], (b - a) / (u[m - level + 1] - a));
  });
}

// With N(s) the numerators relative to p and W(s) the denominator, the span stays beyond the limit
// L where |N|^2 - L^2 W^2 > 0. It does so everywhere when all coefficients of that polynomial in
// Bernstein form are positive: for the product of two forms of degree n, coefficient m is the mean
// of the products of coefficients i and m - i with the weights C(n, i) C(n, m - i) / C(2n, m).
template <std::size_t kDim>
bool SplineSpan<kDim>::StaysBeyond(Vec2 p, double limit) const {
  BezierPoints d;
  ToBezier(p, d);
  return WithOrder(spline_.order, [&](auto k) {
    const auto n = static_cast<std::size_t>(k - 1);
    double largest = 0.0;
    for (std::size_t i = 0; i <= n; ++i)
      largest = std::max(largest, d[i][0] * d[i][0] + d[i][1] * d[i][1]);
    const double floor = kBoundNoise * largest;
    const double limit2 = limit * limit;
    for (std::size_t m = 0; m <= 2 * n; ++m) {
      double sum = 0.0;
      double weights = 0.0;
      for (std::size_t i = m > n ? m - n : 0; i <= std::min(m, n); ++i) {
        const std::size_t j = m - i;
        const double product = d[i][0] * d[j][0] + d[i][1] * d[j][1] - limit2 * (d[i][2] * d[j][2]);
        sum += Binomial(n, i) * Binomial(n, j) * product;
        weights += Binomial(n, i) * Binomial(n, j);
      }
      if (!(sum > floor * weights)) return false;
    }
    return true;
  });
}

template class SplineSpan<3>;
template class SplineSpan<4>;

}  // namespace kurvo
