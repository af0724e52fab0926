// The point of a curve at a parameter.
#include "query/position.h"

#include "control/bezier_point.h"
#include "control/spline_point.h"
#include "control/weights.h"
#include "eval/with_evaluator.h"
#include "foundation/guard.h"
#include "foundation/rounded_compare.h"
#include "records/pieces.h"

namespace kurvo {
namespace {

Vec3 PointAt(const auto& view, double t, GlobalVar& g) {
  return WithEvaluator(view, g, [t](const auto& evaluator) { return evaluator.Position(t); });
}

Vec3 PointAt(const BezierView<3>& bezier, double t, GlobalVar&) { return PointOnBezier(bezier, t); }

Vec3 PointAt(const BezierView<4>& bezier, double t, GlobalVar& g) {
  return PointOnBezier(bezier, t, WeightsAreOne(bezier.points, bezier.degree + 1, g.epsilon));
}

// The ends of the domain give the end points themselves; beyond them the evaluator continues the
// curve.
template <std::size_t kDim>
Vec3 PointAt(const SplineView<kDim>& spline, double t, GlobalVar& g) {
  const KnotVector knots = KnotsOf(spline);
  const bool evaluable = spline.order <= kMaxSplineOrder;
  const int after_start = CompareRounded(t, knots.Start());
  const int after_end = CompareRounded(t, knots.End());
  if (after_start == 0 && (evaluable || !EvaluatedStart(spline))) return StartOfSpline(spline);
  if (after_end == 0 && (evaluable || !EvaluatedEnd(spline))) return EndOfSpline(spline);
  if (!evaluable) {
    Fail(g, KURVO_ERR_CURVE);
    return {};
  }
  if (after_start < 0 || after_end > 0)
    return WithEvaluator(spline, g, [t](const auto& evaluator) { return evaluator.Position(t); });
  return OnPlane(Planar(PointOnSpan(spline, FindSpan(knots, t), t)));
}

}  // namespace

// Every layer inlined: a position takes a few nanoseconds, of which calls and results that pass
// through memory would be half.
[[gnu::flatten]] Vec3 PointOfCurve(const Curve& curve, double t, int level, GlobalVar& g) {
  Vec3 point;
  const Curve* rest = &curve;
  for (; rest; ++level) {
    const Curve* piece = nullptr;
    VisitCurve(*rest, Overloaded{[&](const auto& view) { point = PointAt(view, t, g); },
                                 [&](const CompositeView& composite) {
                                   if (level >= kMaxNesting) return Fail(g, KURVO_ERR_CURVE);
                                   const PieceParameter at =
                                       PieceAt(composite, t, Boundary::kEarlierPiece);
                                   piece = at.piece;
                                   t = at.t;
                                 },
                                 [&](Refused) { Fail(g, KURVO_ERR_CURVE); }});
    rest = piece;
  }
  return point;
}

namespace {

// Lines, quadratics and cubics, of which most outlines are made: a function of its own for all the
// others keeps the work areas of theirs off the stack here. False for those.
[[gnu::always_inline]] inline bool StoreCommon(const Curve& curve, double t, Coord out,
                                               GlobalVar& g) {
  return VisitCurve(curve, Overloaded{[&](const KurvoLine& line) {
                                        Store(PointAt(line, t, g), out);
                                        return true;
                                      },
                                      [&](const BezierView<3>& bezier) {
                                        if (bezier.degree != 3 && bezier.degree != 2) return false;
                                        Store(bezier.degree == 3
                                                  ? PointOnBezier({3, bezier.points}, t)
                                                  : PointOnBezier({2, bezier.points}, t),
                                              out);
                                        return true;
                                      },
                                      [](const auto&) { return false; }});
}

[[gnu::noinline, gnu::flatten]] void StoreAny(const Curve& curve, double t, Coord out,
                                              GlobalVar& g) noexcept {
  Store(Guard(g, Vec3{}, [&] { return PointOfCurve(curve, t, 0, g); }), out);
}

}  // namespace
}  // namespace kurvo

extern "C" [[gnu::flatten]] void KurvocvPosition(const Curve* curve, double t, Coord out,
                                                 GlobalVar* g) noexcept {
  kurvo::Store({}, out);
  if (kurvo::ErrorPending(*g)) return;
  if (!curve) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  if (!kurvo::StoreCommon(*curve, t, out, *g)) kurvo::StoreAny(*curve, t, out, *g);
}
