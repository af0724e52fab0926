// Derivatives of a curve by its parameter.
#include <cmath>

#include "calc/arc_span.h"
#include "foundation/guard.h"
#include "query/bezier_derivatives.h"
#include "query/local_bezier.h"

namespace kurvo {
namespace {

// Every order costs a pass over the control points; far below this one the derivatives of rational
// curves overflow.
constexpr int kMaxDerivativeOrder = 1000;
// Control points passed over: all orders there are up to degree 33 554.
constexpr int64_t kMaxPassedPoints = int64_t{1} << 25;

// Derivative n of centre + r (cos a, sin a) with da/dt = the sweep, negative for a clockwise arc:
//   r sweep^n times the unit vector at a, turned by n quarter turns.
Vec2 ArcDerivative(const KurvoArc& arc, int n, double t, double tol) {
  const ArcSpan span = SpanOf(arc, tol);
  const double angle = AngleAt(span, t, tol);
  const double size = arc.radius * std::pow(span.reversed ? -span.sweep : span.sweep, n);
  const Vec2 along = {std::cos(angle), std::sin(angle)};
  switch (n % 4) {
    case 0:
      return size * along;
    case 1:
      return size * Vec2{-along.y, along.x};
    case 2:
      return -size * along;
    default:
      return size * Vec2{along.y, -along.x};
  }
}

Vec2 LineDerivative(const KurvoLine& line) { return Planar(line.end) - Planar(line.start); }

// Nothing where the result is to stay as it is: on a composite, at a piece of another kind than
// Bezier and beyond the end.
MaybeVector FirstOf(const Curve& curve, double t, GlobalVar& g) {
  if (!std::isfinite(t)) return Refuse<Vec2>(g, KURVO_ERR_CURVE);
  const auto first_of_bezier = [&]<std::size_t kDim>(const LocalBezier<kDim>& local) {
    Vec2 d;
    if constexpr (kDim == 3)
      d = FirstDerivative(local.bezier, local.s);
    else
      d = LowDerivatives<1>(local.bezier, local.s, g.epsilon).first;
    return local.width != 0.0 ? (1.0 / local.width) * d : d;
  };
  return VisitCurve(
      curve,
      Overloaded{
          [](const KurvoLine& line) -> MaybeVector { return LineDerivative(line); },
          [&](const KurvoArc& arc) -> MaybeVector { return ArcDerivative(arc, 1, t, g.epsilon); },
          [&](const auto& view) { return WithLocalBezier(view, t, g, first_of_bezier); },
          [&](Refused) -> MaybeVector { return Refuse<Vec2>(g, KURVO_ERR_CURVE); }});
}

// True when a weight is 0 within the tolerance, wherever on the curve.
bool HasZeroWeight(const Curve& curve, double tol) {
  const auto any_zero = [tol](const double(*points)[4], int32_t count) {
    for (int32_t i = 0; i < count; ++i)
      if (tol >= std::fabs(points[i][3])) return true;
    return false;
  };
  return VisitCurve(
      curve,
      Overloaded{
          [&](const BezierView<4>& bezier) { return any_zero(bezier.points, bezier.degree + 1); },
          [&](const SplineView<4>& spline) { return any_zero(spline.points, spline.count); },
          [](const auto&) { return false; }});
}

// The code for a curve and an order that do not go together.
int32_t RefusalOf(const Curve& curve, int n, double t, double tol) {
  const bool spline = curve.type == CV_BSPLINE || curve.type == CV_RBSPLINE;
  if (!IsTypeCode(curve.type)) return KURVO_ERR_CURVE;
  if (n < 1) return KURVO_ERR_DERIVATIVE_ORDER;
  if (spline && n > 2) return KURVO_ERR_CURVE;
  if (n > kMaxDerivativeOrder) return KURVO_ERR_DERIVATIVE_ORDER;
  if (!std::isfinite(t)) return KURVO_ERR_CURVE;
  return HasZeroWeight(curve, tol) ? KURVO_ERR_ZERO_WEIGHT : KURVO_ERR_NONE;
}

Vec2 NthOf(const Curve& curve, int n, double t, GlobalVar& g) {
  const int32_t refusal = RefusalOf(curve, n, t, g.epsilon);
  if (refusal != KURVO_ERR_NONE) return Refuse<Vec2>(g, refusal);
  const auto nth_of_bezier = [&](const auto& local) {
    if (n * int64_t{local.bezier.degree} > kMaxPassedPoints)
      return Refuse<Vec2>(g, KURVO_ERR_DERIVATIVE_ORDER);
    const Vec2 d = NthDerivative(local.bezier, n, local.s, g.epsilon);
    // Fixed behaviour: a stretch of width 0 is divided by, unlike above. Do not unify.
    const double divisor = n == 1 ? local.width : local.width * local.width;
    return Vec2{d.x / divisor, d.y / divisor};
  };
  return VisitCurve(
      curve,
      Overloaded{[n](const KurvoLine& line) { return n == 1 ? LineDerivative(line) : Vec2{}; },
                 [&](const KurvoArc& arc) { return ArcDerivative(arc, n, t, g.epsilon); },
                 [&](const auto& view) {
                   return WithLocalBezier(view, t, g, nth_of_bezier).value_or(Vec2{});
                 },
                 [&](Refused) { return Refuse<Vec2>(g, KURVO_ERR_CURVE); }});
}

// Lines, quadratics and cubics, of which most outlines are made: a function of its own for all the
// others keeps the work areas of theirs off the stack here. False for those.
[[gnu::always_inline]] inline bool StoreOfCommon(const Curve& curve, double t, Coord out) {
  const auto store = [out](Vec2 derivative) {
    Store(OnPlane(derivative), out);
    return true;
  };
  if (!std::isfinite(t)) return false;
  return VisitCurve(curve,
                    Overloaded{[&](const KurvoLine& line) { return store(LineDerivative(line)); },
                               [&](const BezierView<3>& bezier) {
                                 if (bezier.degree == 3)
                                   return store(FirstDerivativeOf<3>(bezier.points, t));
                                 if (bezier.degree == 2)
                                   return store(FirstDerivativeOf<2>(bezier.points, t));
                                 return false;
                               },
                               [](const auto&) { return false; }});
}

[[gnu::noinline, gnu::flatten]] void StoreOfAny(const Curve* curve, double t, Coord out,
                                                GlobalVar& g) noexcept {
  const auto find = [&] {
    return curve ? FirstOf(*curve, t, g) : Refuse<Vec2>(g, KURVO_ERR_CURVE);
  };
  const auto derivative = Guard(g, MaybeVector(Vec2{}), find);
  if (derivative) Store(OnPlane(*derivative), out);
}

}  // namespace
}  // namespace kurvo

extern "C" {

void KurvocvDeriv(const Curve* curve, double t, Coord out, GlobalVar* g) noexcept {
  if (kurvo::ErrorPending(*g)) return;
  if (curve && kurvo::StoreOfCommon(*curve, t, out)) return;
  kurvo::StoreOfAny(curve, t, out, *g);
}

void KurvocvNDeriv(const Curve* curve, double t, Coord out, int n, GlobalVar* g) noexcept {
  kurvo::Store({}, out);
  if (kurvo::ErrorPending(*g) || !curve || !curve->data) return;
  const auto derivative = [&] { return kurvo::NthOf(*curve, n, t, *g); };
  kurvo::Store(kurvo::OnPlane(kurvo::Guard(*g, kurvo::Vec2{}, derivative)), out);
}

}  // extern "C"
