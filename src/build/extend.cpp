// Extension of a curve at its ends.
#include <cmath>

#include "build/extend_rules.h"
#include "build/point_curve.h"
#include "control/casteljau_split.h"
#include "control/reparametrise.h"
#include "control/weights.h"
#include "eval/parc2d.h"
#include "eval/pline2d.h"
#include "foundation/guard.h"
#include "foundation/rounded_compare.h"
#include "records/copied_curve.h"
#include "records/domain.h"
#include "records/new_records.h"
#include "records/well_formed.h"

namespace kurvo {
namespace {

// The extended range in a curve's own parameter, that of a B-spline taken to be [0, 1].
Domain RangeOf(const Curve& curve, Extension by) {
  const double end = curve.type == CV_SEGCV ? DomainOf(curve).end : 1.0;
  return {-by.start, end + by.end};
}

OwnedCurve Extend(const Curve& curve, const KurvoLine& line, Extension by, GlobalVar& g) {
  const Domain range = RangeOf(curve, by);
  const PLine2D evaluator(line, g);
  OwnedCurve result = CopyOf(curve, g);
  Store(evaluator.Position(range.start), result.block<KurvoLine>().start);
  Store(evaluator.Position(range.end), result.block<KurvoLine>().end);
  return result;
}

// Fixed behaviour: less than half a turn comes out, also where the arc is only trimmed, so that the
// result can always be written as one rational quadratic.
OwnedCurve Extend(const Curve& curve, const KurvoArc& arc, Extension by, GlobalVar& g) {
  const Domain range = RangeOf(curve, by);
  if (CompareRounded(range.width() * SpanOf(arc, g.epsilon).sweep, kPi) >= 0)
    return Refuse<OwnedCurve>(g, KURVO_ERR_RANGE);
  const PArc2D evaluator(arc, g);
  OwnedCurve result = CopyOf(curve, g);
  Store(evaluator.Position(range.start), result.block<KurvoArc>().start);
  Store(evaluator.Position(range.end), result.block<KurvoArc>().end);
  return result;
}

template <std::size_t kDim>
OwnedCurve Extend(const Curve& curve, const BezierView<kDim>& bezier, Extension by, GlobalVar& g) {
  if (bezier.degree > kMaxSplitDegree) return Refuse<OwnedCurve>(g, KURVO_ERR_CURVE);
  const Domain range = RangeOf(curve, by);
  OwnedCurve result = CopiedBezier<kDim>(bezier.points, bezier.degree);
  const auto& points = result.block<BezierBlock<kDim>>().points;
  Reparametrise(points, bezier.degree, range.start, range.end);
  if (!HasPositiveWeights(points, bezier.degree + 1))
    return Refuse<OwnedCurve>(g, KURVO_ERR_WEIGHT);
  return result;
}

template <std::size_t kDim>
OwnedCurve Extend(const Curve&, const SplineView<kDim>& spline, Extension by, GlobalVar& g) {
  return ExtendSpline(spline, by, g);
}

OwnedCurve Extend(const Curve& curve, const CompositeView& composite, Extension by, GlobalVar& g) {
  return ExtendComposite(curve, composite, by, g);
}

OwnedCurve Extend(const Curve&, Refused, Extension, GlobalVar& g) {
  return Refuse<OwnedCurve>(g, KURVO_ERR_CURVE);
}

// The point that an empty range [s, s] stands for.
OwnedCurve PointOfRange(const Curve& curve, double s, GlobalVar& g) {
  const Domain domain = DomainOf(curve);
  return PointCurve(curve, curve.type == CV_SEGCV ? s : domain.start + s * domain.width(), g);
}

}  // namespace

OwnedCurve Extended(const Curve& curve, Extension by, GlobalVar& g) {
  if (CompareRounded(by.start, 0.0) == 0 && CompareRounded(by.end, 0.0) == 0)
    return CopyOf(curve, g);
  const Domain range = RangeOf(curve, by);
  if (!(std::isfinite(range.start) && std::isfinite(range.end)))
    return Refuse<OwnedCurve>(g, KURVO_ERR_RANGE);
  const int order = CompareRounded(range.start, range.end);
  if (order >= 0) {
    OwnedCurve point = order == 0 ? PointOfRange(curve, range.start, g) : OwnedCurve();
    Fail(g, KURVO_ERR_RANGE);  // also when the point is given
    return point;
  }
  return VisitCurve(curve, [&](const auto& view) { return Extend(curve, view, by, g); });
}

}  // namespace kurvo

extern "C" void KurvocvExtendCurve(const Curve* curve, double a, double b, Curve* result,
                                   GlobalVar* g) noexcept {
  if (result) *result = Curve{};
  if (kurvo::ErrorPending(*g) || !curve || !curve->data || !result) return;
  if (!kurvo::WellFormed(*curve)) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  const auto extend = [&] { return kurvo::Extended(*curve, {a, b}, *g).Release(); };
  *result = kurvo::Guard(*g, Curve{}, extend);
}
