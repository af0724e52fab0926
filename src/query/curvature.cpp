// The curvature vector of a curve.
#include <cmath>
#include <optional>

#include "calc/arc_span.h"
#include "foundation/guard.h"
#include "query/bezier_derivatives.h"
#include "query/local_bezier.h"

namespace kurvo {
namespace {

// 1 / r towards the centre, whichever way the arc runs; nothing when its tangent is too short.
std::optional<Vec2> CurvatureOfArc(const KurvoArc& arc, double t, double tol) {
  const ArcSpan span = SpanOf(arc, tol);
  if (!(std::fabs(arc.radius * span.sweep) >= tol)) return std::nullopt;
  const double angle = AngleAt(span, t, tol);
  return Vec2{-std::cos(angle) / arc.radius, -std::sin(angle) / arc.radius};
}

// kappa = C' x C'' / |C'|^3 along the normal to the left of C', so that it points to the concave
// side; nothing when the tangent is too short.
std::optional<Vec2> CurvatureOf(Vec2 d1, Vec2 d2, double tol) {
  const double length = Length(d1);
  if (!(length >= tol)) return std::nullopt;
  const double inverse = 1.0 / length;
  const Vec2 u = inverse * d1;
  const double kappa = Cross(u, d2) * inverse * inverse;
  return kappa * Vec2{-u.y, u.x};
}

// The curvature that has been found, or the error that there is none.
Vec2 OrRefuse(std::optional<Vec2> curvature, GlobalVar& g) {
  return curvature ? *curvature : Refuse<Vec2>(g, KURVO_ERR_SHORT_TANGENT);
}

// Nothing where the result is to stay as it is, as with KurvocvDeriv.
MaybeVector Curvature(const Curve& curve, double t, GlobalVar& g) {
  if (!std::isfinite(t)) return Refuse<Vec2>(g, KURVO_ERR_CURVE);
  const auto of_bezier = [&](const auto& local) {
    const double h = local.width;
    if (!(h > 0.0)) return Refuse<Vec2>(g, KURVO_ERR_SHORT_TANGENT);
    const auto [d1, d2] = LowDerivatives<2>(local.bezier, local.s, g.epsilon);
    return OrRefuse(CurvatureOf((1.0 / h) * d1, (1.0 / h / h) * d2, g.epsilon), g);
  };
  return VisitCurve(
      curve, Overloaded{[](const KurvoLine&) -> MaybeVector { return Vec2{}; },
                        [&](const KurvoArc& arc) -> MaybeVector {
                          return OrRefuse(CurvatureOfArc(arc, t, g.epsilon), g);
                        },
                        [&](const auto& view) { return WithLocalBezier(view, t, g, of_bezier); },
                        [&](Refused) -> MaybeVector { return Refuse<Vec2>(g, KURVO_ERR_CURVE); }});
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvCurvature(const Curve* curve, double t, Coord out, GlobalVar* g) noexcept {
  if (kurvo::ErrorPending(*g) || !curve || !curve->data) return;
  const auto find = [&] { return kurvo::Curvature(*curve, t, *g); };
  const auto curvature = kurvo::Guard(*g, kurvo::MaybeVector(kurvo::Vec2{}), find);
  if (curvature) kurvo::Store(kurvo::OnPlane(*curvature), out);
}
