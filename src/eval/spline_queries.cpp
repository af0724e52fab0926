// Nearest point and parameter on a B-spline, span by span.
#include "eval/spline_queries.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "calc/boxes.h"
#include "eval/basis_polynomials.h"
#include "eval/prationalcurve2d.h"
#include "eval/segment.h"
#include "eval/spline_point.h"

namespace kurvo {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double Weight(const double (&)[3]) { return 1.0; }
double Weight(const double (&point)[4]) { return point[3]; }

// One span of a spline: its stretch of the domain, its control points and their box.
template <std::size_t kDim>
class Span {
 public:
  Span(const SplineView<kDim>& spline, int32_t i, double tol)
      : spline_(spline), i_(i), tol_(tol), points_(spline.points + (i - spline.order + 1)) {
    for (int32_t j = 0; j < spline.order; ++j) box_.Widen(Planar(points_[j]));
  }

  const PlanarBox& box() const { return box_; }
  double ToDomain(double s) const { return Left() + s * (Right() - Left()); }
  Vec2 Position(double s) const { return Planar(PointOnSpan(spline_, i_, ToDomain(s), tol_)); }

  // A rational span stays in the box of its control points only when no weight is negative.
  bool InsideBox() const {
    for (int32_t j = 0; j < spline_.order; ++j)
      if (!(Weight(points_[j]) > 0.0)) return false;
    return true;
  }

  // Whether the curve may have a corner at the left (right) end of the span. The ends of the domain
  // are no corners.
  bool CornerAtLeft() const {
    return i_ >= spline_.order && IsCorner(Left(), i_ - spline_.order + 2, i_ + 1);
  }
  bool CornerAtRight() const {
    return i_ + 1 < spline_.count && IsCorner(Right(), i_ + 1, i_ + spline_.order);
  }

  // The span's polynomials in its own parameter s in [0, 1].
  Segment ToSegment() const {
    const BasisPolynomials basis(KnotsOf(spline_), i_);
    Segment segment;
    segment.rational = !SpanIsPolynomial(spline_, i_, tol_);
    for (int32_t j = 0; j < spline_.order; ++j) {
      const double weight = segment.rational ? Weight(points_[j]) : 1.0;
      segment.x = SumScaled(segment.x, weight * points_[j][0], basis[j]);
      segment.y = SumScaled(segment.y, weight * points_[j][1], basis[j]);
      if (segment.rational) segment.w = SumScaled(segment.w, weight, basis[j]);
    }
    return segment;
  }

 private:
  double Left() const { return spline_.knots[i_]; }
  double Right() const { return spline_.knots[i_ + 1]; }

  // True when the order - 1 knots u[first .. last) are exactly `value`; none for order 1, which
  // jumps at every knot.
  bool IsCorner(double value, int32_t first, int32_t last) const {
    return std::all_of(spline_.knots + first, spline_.knots + last,
                       [value](double knot) { return knot == value; });
  }

  const SplineView<kDim>& spline_;
  const int32_t i_;
  const double tol_;
  const double (*points_)[kDim];
  PlanarBox box_;
};

// Keeps the nearest candidate, the first one of equals; a NaN distance never wins.
struct Best {
  NearestOnCurve nearest{0.0, kInfinity};

  void Offer(double t, double dist) {
    if (dist < nearest.dist) nearest = {t, dist};
  }
};

template <std::size_t kDim>
void OfferSpan(const Span<kDim>& span, Vec2 p, double tol, Best& best) {
  const auto offer = [&](double s) { best.Offer(span.ToDomain(s), Length(p - span.Position(s))); };
  for (const double s : FootPoints(span.ToSegment(), p, tol)) offer(s);
  if (span.CornerAtLeft()) offer(0.0);
  if (span.CornerAtRight()) offer(1.0);
}

}  // namespace

template <std::size_t kDim>
bool HasFootPoints(const SplineView<kDim>& spline, double tol) {
  const int32_t degree = spline.order - 1;
  if constexpr (kDim == 4) {
    if (degree > kMaxRationalFootDegree && degree <= kMaxPlainFootDegree)
      return WeightsAreOne(spline.points, spline.count, tol);
  }
  return degree <= kMaxPlainFootDegree;
}

template <std::size_t kDim>
NearestOnCurve NearestOnSpline(const SplineView<kDim>& spline, Vec2 p, double tol) {
  const KnotVector knots = KnotsOf(spline);
  const double to_start = Length(p - Planar(StartOfSpline(spline, tol)));
  const double to_end = Length(p - Planar(EndOfSpline(spline, tol)));

  // No span whose box is farther away than some point of the curve can win.
  double reach = std::min(to_start, to_end);
  AnySpan(knots, [&](int32_t i) {
    const Span<kDim> span(spline, i, tol);
    if (reach > Distance(span.box(), p)) reach = std::min(reach, Length(p - span.Position(0.5)));
    return false;
  });

  Best best;
  AnySpan(knots, [&](int32_t i) {
    const Span<kDim> span(spline, i, tol);
    const double limit = std::min(reach, best.nearest.dist) + tol;
    if (!(Distance(span.box(), p) > limit && span.InsideBox())) OfferSpan(span, p, tol, best);
    return false;
  });
  best.Offer(knots.Start(), to_start);
  best.Offer(knots.End(), to_end);
  if (best.nearest.dist < kInfinity) return best.nearest;
  return {knots.End(), to_end};
}

template <std::size_t kDim>
Incidence ParameterOnSpline(const SplineView<kDim>& spline, Vec3 p, double tol, double& t) {
  const bool found = AnySpan(KnotsOf(spline), [&](int32_t i) {
    const Span<kDim> span(spline, i, tol);
    if (!Contains(span.box(), Planar(p), tol) && span.InsideBox()) return false;
    double s;
    const auto position = [&](double at) { return span.Position(at); };
    if (!FindParameter(span.ToSegment(), p, tol, position, s)) return false;
    t = span.ToDomain(s);
    return true;
  });
  if (found) return Incidence::kOn;
  const NearestOnCurve nearest = NearestOnSpline(spline, Planar(p), tol);
  t = nearest.t;
  return tol >= nearest.dist ? Incidence::kOn : Incidence::kOff;
}

template bool HasFootPoints(const SplineView<3>&, double);
template bool HasFootPoints(const SplineView<4>&, double);
template NearestOnCurve NearestOnSpline(const SplineView<3>&, Vec2, double);
template NearestOnCurve NearestOnSpline(const SplineView<4>&, Vec2, double);
template Incidence ParameterOnSpline(const SplineView<3>&, Vec3, double, double&);
template Incidence ParameterOnSpline(const SplineView<4>&, Vec3, double, double&);

}  // namespace kurvo
