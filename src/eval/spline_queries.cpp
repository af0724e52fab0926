// Nearest point and parameter on a B-spline, span by span.
//
// A foot point on a span is a root of (C - p) . C', which costs far more than any bound. So the
// walk over the spans keeps `reach`, the distance of some point of the curve, and passes over a
// span whose box is farther away, or, of the few that are left, one whose squared distance minus
// reach^2 has positive Bernstein coefficients throughout. Bounds allow for rounding by `noise`.
#include "eval/spline_queries.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "eval/spline_span.h"

namespace kurvo {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Keeps the nearest candidate; of equals the one of the lowest rank, and of these the first. A
// distance that is not finite never wins.
struct Best {
  SplineFoot foot{{0.0, kInfinity}, {}};
  int32_t rank = -1;

  double dist() const { return foot.nearest.dist; }
  void Consider(double t, Vec2 point, double dist, int32_t at_rank) {
    if (dist < foot.nearest.dist || (dist == foot.nearest.dist && at_rank < rank)) {
      foot = {{t, dist}, point};
      rank = at_rank;
    }
  }
};

// The search for the nearest point. A span ranks by its index, the ends come after all of them.
template <std::size_t kDim>
class NearestSearch {
 public:
  NearestSearch(const SplineView<kDim>& spline, Vec2 p, double tol)
      : spline_(spline),
        knots_(KnotsOf(spline)),
        p_(p),
        tol_(tol),
        plain_(EvaluatesPlain(spline, tol)) {}

  SplineFoot Run() {
    const Vec2 start = Planar(StartOfSpline(spline_));
    const Vec2 end = Planar(EndOfSpline(spline_));
    best_.Consider(knots_.Start(), start, Length(p_ - start), spline_.count);
    best_.Consider(knots_.End(), end, Length(p_ - end), spline_.count + 1);
    Survey();
    SearchSpans();
    if (best_.dist() > reach_) {
      // Where the finder misses a foot, no candidate may come as near as some point of the curve:
      // then that bound was too sharp, and the candidates alone set it.
      bound_by_reach_ = false;
      SearchSpans();
    }
    if (best_.dist() < kInfinity) return best_.foot;
    return {{knots_.End(), Length(p_ - end)}, end};
  }

 private:
  // A span whose box is near enough.
  struct Candidate {
    int32_t i;
    double squared_gap;  // from the box, 0 when the span may leave it
    double to_middle;    // from the middle of the span
  };
  static constexpr std::size_t kBatch = 64;

  double Limit() const {
    return (bound_by_reach_ ? std::min(best_.dist(), reach_) : best_.dist()) + noise_;
  }

  // Measures the size of the coordinates, and a point of the curve where the control polygon comes
  // near.
  void Survey() {
    int32_t nearest = 0;
    double nearest_gap = kInfinity;
    double largest = std::max(std::fabs(p_.x), std::fabs(p_.y));
    for (int32_t j = 0; j < spline_.count; ++j) {
      const Vec2 point = Planar(spline_.points[j]);
      const Vec2 gap = point - p_;
      largest = std::max(largest, std::max(std::fabs(point.x), std::fabs(point.y)));
      if (Dot(gap, gap) < nearest_gap) {
        nearest_gap = Dot(gap, gap);
        nearest = j;
      }
    }
    noise_ = kBoundNoise * largest;
    const int32_t i = std::clamp(nearest + spline_.order / 2, spline_.order - 1, spline_.count - 1);
    if (knots_.u[i] < knots_.u[i + 1]) Reach(i, 0.5);
  }

  // The distance of the point at s on span i, to which the reach is lowered.
  double Reach(int32_t i, double s) {
    const SplineSpan<kDim> span(spline_, i, plain_);
    const double dist = Length(p_ - span.Position(s));
    if (dist + tol_ < reach_) reach_ = dist + tol_;
    return dist;
  }

  void SearchSpans() {
    WithOrder(spline_.order, [&](auto k) {
      Candidate batch[kBatch];
      std::size_t size = 0;
      AnySpan(knots_, [&](int32_t i) {
        const Vec2 to_box = GapBetween(BoxOfPoints(spline_.points + (i - k + 1), k), p_);
        const double gap = Dot(to_box, to_box);  // NaN when p is not a number
        const double limit = Limit();
        const bool inside = SplineSpan<kDim>(spline_, i, plain_).InsideBox();
        if (gap > limit * limit && inside) return false;
        batch[size++] = {i, inside ? gap : 0.0, Reach(i, 0.5)};
        if (size == kBatch) {
          ExamineBatch(batch, size);
          size = 0;
        }
        return false;
      });
      if (size > 0) ExamineBatch(batch, size);
    });
  }

  // Begins with the one that is likely to be the nearest, so that the others can be passed over.
  void ExamineBatch(const Candidate (&batch)[kBatch], std::size_t size) {
    std::size_t first = 0;
    for (std::size_t n = 1; n < size; ++n)
      if (batch[n].to_middle < batch[first].to_middle) first = n;
    if (first > 0 && first + 1 < size) ReachBetween(batch + first);
    Examine(SplineSpan<kDim>(spline_, batch[first].i, plain_), batch[first].i);
    for (std::size_t n = 0; n < size; ++n) {
      const double limit = Limit();
      if (n == first || batch[n].squared_gap > limit * limit) continue;
      const SplineSpan<kDim> span(spline_, batch[n].i, plain_);
      if (!(span.InsideBox() && span.StaysBeyond(p_, limit))) Examine(span, batch[n].i);
    }
  }

  // Lowers the reach to about the nearest point of a span whose middle is nearer than those of the
  // candidates before and after it: at the vertex of the parabola through the squared distances.
  void ReachBetween(const Candidate* middle) {
    const auto squared = [](const Candidate& c) { return c.to_middle * c.to_middle; };
    const double before = squared(middle[-1]) - squared(middle[0]);
    const double after = squared(middle[1]) - squared(middle[0]);
    const double s = 0.5 + 0.5 * (before - after) / (before + after);
    if (OnUnitInterval(s, 0.0)) Reach(middle->i, s);
  }

  void Examine(const SplineSpan<kDim>& span, int32_t i) {
    const auto offer = [&](double s) {
      const Vec2 point = span.Position(s);
      best_.Consider(span.ToDomain(s), point, Length(p_ - point), i);
    };
    for (const double s : FootPoints(FootRoots(span.ToSegment(p_)), tol_)) offer(s);
    if (span.CornerAtLeft()) offer(0.0);
    if (span.CornerAtRight()) offer(1.0);
  }

  const SplineView<kDim>& spline_;
  const KnotVector knots_;
  const Vec2 p_;
  const double tol_;
  const bool plain_;
  double noise_ = 0.0;        // what rounding can do to a distance
  double reach_ = kInfinity;  // some point of the curve is no farther than this
  bool bound_by_reach_ = true;
  Best best_;
};

}  // namespace

template <std::size_t kDim>
bool HasFootPoints(const SplineView<kDim>& spline, double tol) {
  const int32_t degree = spline.order - 1;
  if constexpr (kDim == 4) {
    if (degree > kMaxRationalFootDegree && degree <= kMaxPlainFootDegree)
      return EvaluatesPlain(spline, tol);
  }
  return degree <= kMaxPlainFootDegree;
}

template <std::size_t kDim>
SplineFoot FootOnSpline(const SplineView<kDim>& spline, Vec2 p, double tol) {
  return NearestSearch<kDim>(spline, p, tol).Run();
}

template <std::size_t kDim>
Incidence ParameterOnSpline(const SplineView<kDim>& spline, Vec3 p, double tol, double& t) {
  const bool plain = EvaluatesPlain(spline, tol);
  const bool found = AnySpan(KnotsOf(spline), [&](int32_t i) {
    const SplineSpan<kDim> span(spline, i, plain);
    if (!Contains(span.BoundBox(), Planar(p), tol) && span.InsideBox()) return false;
    double s;
    const auto position = [&](double at) { return span.Position(at); };
    if (!FindParameter(span.ToSegment(Planar(p)), p, tol, position, s)) return false;
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
template SplineFoot FootOnSpline(const SplineView<3>&, Vec2, double);
template SplineFoot FootOnSpline(const SplineView<4>&, Vec2, double);
template Incidence ParameterOnSpline(const SplineView<3>&, Vec3, double, double&);
template Incidence ParameterOnSpline(const SplineView<4>&, Vec3, double, double&);

}  // namespace kurvo
