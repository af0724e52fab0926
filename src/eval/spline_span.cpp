// One knot span of a B-spline: its polynomials, and bounds on its distance.
#include "eval/spline_span.h"

#include "control/bernstein.h"
#include "control/blossom.h"

namespace kurvo {

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
      const double weight = segment.rational ? WeightOf(points_[j]) : 1.0;
      const double n = basis[j][c];
      sum = {sum.x + weight * (points_[j][0] - origin.x) * n,
             sum.y + weight * (points_[j][1] - origin.y) * n, sum.w + weight * n};
    }
    segment.x[c] = sum.x;
    segment.y[c] = sum.y;
    if (segment.rational) segment.w[c] = sum.w;
  }
  return segment;
}

template <std::size_t kDim>
void SplineSpan<kDim>::ToBezier(Vec2 p, BezierPoints& points) const {
  const bool polynomial = IsPolynomial();
  WithOrder(spline_.order, [&](auto k) {
    for (int32_t m = 0; m < k; ++m) {
      const double weight = polynomial ? 1.0 : WeightOf(points_[m]);
      points[static_cast<std::size_t>(m)] = {weight * (points_[m][0] - p.x),
                                             weight * (points_[m][1] - p.y), weight};
    }
    RaiseSpanKnots(k, spline_.knots + i_, points.data());
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
      largest = std::max(largest, d[i].x * d[i].x + d[i].y * d[i].y);
    const double floor = kBoundNoise * largest;
    const double limit2 = limit * limit;
    for (std::size_t m = 0; m <= 2 * n; ++m) {
      double sum = 0.0;
      double weights = 0.0;
      for (std::size_t i = m > n ? m - n : 0; i <= std::min(m, n); ++i) {
        const std::size_t j = m - i;
        const double product = d[i].x * d[j].x + d[i].y * d[j].y - limit2 * (d[i].w * d[j].w);
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
