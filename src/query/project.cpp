// Projection of a point onto a curve.
#include <limits>

#include "eval/with_evaluator.h"

namespace kurvo {
namespace {

// Moves p onto the carrier of the curve; false, with p as it was, when that fails.
bool Project(const auto& view, Vec3& p, GlobalVar& g) {
  return WithEvaluator(view, g,
                       [&](const auto& evaluator) { return evaluator.ProjectToCarrier(p); });
}

// Fixed behaviour: only Bezier pieces take part, of either kind; every other piece is passed over,
// nested composites included.
bool Project(const CompositeView& composite, Vec3& p, GlobalVar& g) {
  double nearest = std::numeric_limits<double>::infinity();
  Vec3 best = p;
  for (int32_t i = 0; i < composite.count; ++i) {
    const Curve& piece = composite.curves[i];
    if (piece.type != CV_BEZIER && piece.type != CV_RBEZIER) continue;
    Vec3 foot = p;
    const bool found =
        VisitCurve(piece, Overloaded{[&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                                       return Project(bezier, foot, g);
                                     },
                                     [&](const auto&) {
                                       Fail(g, KURVO_ERR_CURVE);
                                       return false;
                                     }});
    const double dist = Length(Planar(p) - Planar(foot));
    if (!found || !(dist < nearest)) continue;  // the earlier one of equals; a NaN never wins
    nearest = dist;
    best = foot;
  }
  p = best;
  return nearest < std::numeric_limits<double>::infinity();
}

bool Project(Refused, Vec3&, GlobalVar& g) {
  Fail(g, KURVO_ERR_CURVE);
  return false;
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvofcPOntoCurve(const Curve* curve, Coord p, GlobalVar* g) noexcept {
  if (!curve) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  kurvo::Vec3 point = kurvo::Spatial(p);
  const bool found =
      kurvo::VisitCurve(*curve, [&](const auto& view) { return kurvo::Project(view, point, *g); });
  if (found) kurvo::Store(kurvo::OnPlane(kurvo::Planar(point)), p);
}
