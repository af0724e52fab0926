// B-splines cut into pieces. A cut at t inserts t as a knot up to order - 1 times (Boehm's
// algorithm, control/knot_insertion.h), after which the curve passes through a control point there
// and falls apart. A cut next to a knot is made at the knot itself, which a comparison of rounded
// values decides; on a span that stands still it is made at the ends of the span.
#include "build/divide_spline.h"

#include <algorithm>
#include <cmath>

#include "build/point_curve.h"
#include "control/knot_insertion.h"
#include "control/one_point.h"
#include "foundation/point.h"
#include "foundation/rounded_compare.h"
#include "records/new_records.h"

namespace kurvo {
namespace {

bool SameControlPoint(const double (&a)[3], const double (&b)[3], const GlobalVar& g) {
  return SamePoint(Spatial(a), Spatial(b), g.epsilon);
}
bool SameControlPoint(const double (&a)[4], const double (&b)[4], const GlobalVar& g) {
  return SamePoint(Spatial(a), Spatial(b), g.epsilon) && g.epsilon0 >= std::fabs(a[3] - b[3]);
}

// True when all control points that act on the span u[i - 1], u[i] follow each other closely.
template <std::size_t kDim>
bool StandsStill(const SplineView<kDim>& spline, int32_t i, const GlobalVar& g) {
  for (int32_t j = i - spline.order + 1; j < i; ++j)
    if (!SameControlPoint(spline.points[j - 1], spline.points[j], g)) return false;
  return true;
}

}  // namespace

template <std::size_t kDim>
std::optional<CutPlace> DivisionPlace(const SplineView<kDim>& spline, double t,
                                      const GlobalVar& g) {
  const int32_t k = spline.order;
  const int32_t n = spline.count;
  const double* u = spline.knots;
  const double start = u[k - 1];
  const double end = u[n];
  const auto i = static_cast<int32_t>(std::lower_bound(u + k, u + n + 1, t) - u);
  if (i > n || !(u[i - 1] < t)) return std::nullopt;

  const auto rounds_to = [&](double knot) {
    return start < knot && knot < end && CompareRounded(knot, t) == 0;
  };
  const bool nearer_right = std::fabs(u[i] - t) <= std::fabs(t - u[i - 1]);
  const double nearer = nearer_right ? u[i] : u[i - 1];
  const double other = nearer_right ? u[i - 1] : u[i];
  if (rounds_to(nearer)) return CutPlace{nearer, nearer};
  if (rounds_to(other)) return CutPlace{other, other};

  if (!StandsStill(spline, i, g)) return CutPlace{t, t};
  if (i == k || i == n) return CutPlace{u[i - 1], u[i]};
  return CutPlace{u[i], u[i]};
}

namespace {

// A piece all of whose control points are the same is given as few of them as it needs.
template <std::size_t kDim>
OwnedCurve Finished(OwnedCurve piece, double length_tol) {
  auto& block = piece.block<SplineBlock<kDim>>();
  if (!AreOnePoint(block.points, block.count, length_tol)) {
    KurvoclNormalizeKnot(block.knots, block.count + block.order, block.order);
    return piece;
  }
  return NewSingleSpan<kDim>(block.order - 1, [&](double(*to)[kDim]) {
    CopyArray(block.points, block.order - 1, to);
    CopyArray(block.points + block.count - 1, 1, to + block.order - 1);
  });
}

// The last point of one piece is the first one of the next to the bit, also where that piece has
// been cut a second time. A knot of full multiplicity, where the curve may jump, is left alone.
template <std::size_t kDim>
void ShareJoint(OwnedCurve& before, OwnedCurve& after) {
  const auto& from = after.block<SplineBlock<kDim>>();
  const auto& to = before.block<SplineBlock<kDim>>();
  std::copy_n(from.points[0], kDim, to.points[to.count - 1]);
}

}  // namespace

template <std::size_t kDim>
bool CutSpline(const Curve& curve, const SplineView<kDim>& spline, const CutPlace* places,
               int32_t n, OwnedCurve* pieces, GlobalVar& g) {
  const KnotVector knots = KnotsOf(spline);
  std::optional<KnotCut> from;
  double start = knots.Start();
  bool joined = false;  // the piece before this one is no point, and the curve does not jump
  for (int32_t i = 0; i <= n; ++i) {
    const double end = i < n ? places[i].before : knots.End();
    std::optional<KnotCut> to;
    if (end < knots.End()) {
      to = FindCut(knots, end);
      if (!to) return false;
    }
    const bool has_length = start < end;
    if (has_length) {
      OwnedCurve piece = SplinePart(spline, from, to);
      if (!piece.curve().data) return false;
      if (joined) ShareJoint<kDim>(pieces[i - 1], piece);
      pieces[i] = Finished<kDim>(std::move(piece), g.epsilon);
    } else {
      pieces[i] = PointCurve(curve, i < n ? end : start, g);
    }
    if (i == n) break;
    joined = has_length && to && to->multiplicity() < spline.order &&
             places[i].before == places[i].after;
    start = places[i].after;
    from = start == places[i].before ? to : FindCut(knots, start);
    if (!(start > knots.Start())) from.reset();
  }
  return true;
}

template std::optional<CutPlace> DivisionPlace(const SplineView<3>&, double, const GlobalVar&);
template std::optional<CutPlace> DivisionPlace(const SplineView<4>&, double, const GlobalVar&);
template bool CutSpline(const Curve&, const SplineView<3>&, const CutPlace*, int32_t, OwnedCurve*,
                        GlobalVar&);
template bool CutSpline(const Curve&, const SplineView<4>&, const CutPlace*, int32_t, OwnedCurve*,
                        GlobalVar&);

}  // namespace kurvo
