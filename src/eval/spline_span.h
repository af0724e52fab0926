// One knot span of a B-spline: its polynomials, its corners, and bounds on its distance.
#pragma once

#include <algorithm>
#include <array>

#include "calc/boxes.h"
#include "control/homogeneous.h"
#include "control/spline_point.h"
#include "eval/basis_polynomials.h"
#include "eval/segment.h"

namespace kurvo {

// Distances of a span may be off by this much of the largest coordinate that went into them, and
// their squares by this much of the largest square: far more than rounding can do.
constexpr double kBoundNoise = 1e-12;

// The box of `count` control points: a number or, for an unrolled loop, an integral constant.
template <std::size_t kDim, class Count>
PlanarBox BoxOfPoints(const double (*points)[kDim], Count count) {
  PlanarBox box;
  for (int32_t j = 0; j < count; ++j) box.Widen(Planar(points[j]));
  return box;
}

// Requires order - 1 <= kMaxPlainFootDegree for everything but the box and the corners.
template <std::size_t kDim>
class SplineSpan {
 public:
  // `plain`: whether weights are left aside on the whole spline.
  SplineSpan(const SplineView<kDim>& spline, int32_t i, bool plain)
      : spline_(spline), i_(i), plain_(plain), points_(spline.points + (i - spline.order + 1)) {}

  double ToDomain(double s) const { return Left() + s * (Right() - Left()); }
  Vec2 Position(double s) const {
    const Weights weights = IsPolynomial() ? Weights::kAside : Weights::kCount;
    return Planar(PointOnSpan(spline_, i_, ToDomain(s), weights));
  }

  PlanarBox BoundBox() const {
    return WithOrder(spline_.order, [&](auto k) { return BoxOfPoints(points_, k); });
  }

  // A rational span stays in the box of its control points only when no weight is negative.
  bool InsideBox() const {
    if constexpr (kDim == 3) return true;
    for (int32_t j = 0; j < spline_.order; ++j)
      if (!(WeightOf(points_[j]) > 0.0)) return false;
    return true;
  }

  // Whether the span certainly stays farther away from p than `limit`. Requires InsideBox().
  bool StaysBeyond(Vec2 p, double limit) const;

  // Whether the curve may have a corner at the left (right) end of the span. The ends of the domain
  // are no corners.
  bool CornerAtLeft() const {
    return i_ >= spline_.order && IsCorner(Left(), i_ - spline_.order + 2, i_ + 1);
  }
  bool CornerAtRight() const {
    return i_ + 1 < spline_.count && IsCorner(Right(), i_ + 1, i_ + spline_.order);
  }

  // The span's polynomials, relative to `origin`, in its own parameter s in [0, 1].
  Segment ToSegment(Vec2 origin) const;

 private:
  using BezierPoints = std::array<Homogeneous, kMaxPlainFootDegree + 1>;

  bool IsPolynomial() const { return SpanIsPolynomial(spline_, i_, plain_); }
  double Left() const { return spline_.knots[i_]; }
  double Right() const { return spline_.knots[i_ + 1]; }

  // True when the order - 1 knots u[first .. last) are exactly `value`; none for order 1, which
  // jumps at every knot.
  bool IsCorner(double value, int32_t first, int32_t last) const {
    return std::all_of(spline_.knots + first, spline_.knots + last,
                       [value](double knot) { return knot == value; });
  }

  // The Bezier points of the span relative to p.
  void ToBezier(Vec2 p, BezierPoints& b) const;

  const SplineView<kDim>& spline_;
  const int32_t i_;
  const bool plain_;
  const double (*points_)[kDim];
};

}  // namespace kurvo
