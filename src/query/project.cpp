// Projection of a point onto a curve.
#include <cmath>
#include <limits>

#include "eval/with_evaluator.h"
#include "query/far_pieces.h"

namespace kurvo {
namespace {

// Moves p onto the carrier of the curve; false, with p as it was, when that fails.
bool Project(const auto& view, Vec3& p, GlobalVar& g) {
  return WithEvaluator(view, g,
                       [&](const auto& evaluator) { return evaluator.ProjectToCarrier(p); });
}

bool ProjectToPiece(const Curve& piece, Vec3& p, GlobalVar& g) {
  return VisitCurve(piece, Overloaded{[&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                                        return Project(bezier, p, g);
                                      },
                                      [&](const auto&) {
                                        Fail(g, KURVO_ERR_CURVE);
                                        return false;
                                      }});
}

// Fixed behaviour: only Bezier pieces take part, of either kind; every other piece is passed over,
// nested composites included. So are those farther away than the nearest foot found.
bool Project(const CompositeView& composite, Vec3& p, GlobalVar& g) {
  double limit = std::numeric_limits<double>::infinity();
  const int32_t promising = MostPromisingPiece(composite, Planar(p));
  if (promising >= 0) {
    Vec3 foot = p;
    ProjectToPiece(composite.curves[promising], foot, g);
    limit = Length(Planar(p) - Planar(foot));
  }
  double nearest = std::numeric_limits<double>::infinity();
  Vec3 best = p;
  for (int32_t i = 0; i < composite.count; ++i) {
    const Curve& piece = composite.curves[i];
    if (piece.type != CV_BEZIER && piece.type != CV_RBEZIER) continue;
    if (DistanceBound(piece, Planar(p)) > std::fmin(limit, nearest)) continue;
    Vec3 foot = p;
    const bool found = ProjectToPiece(piece, foot, g);
    const double dist = Length(Planar(p) - Planar(foot));
    if (!found || !(dist < nearest)) continue;  // the earlier one of equals; a NaN never wins
    nearest = dist;
    best = foot;
  }
  p = best;
  return nearest < std::numeric_limits<double>::infinity();
}

bool Project(Refused, Vec3&, GlobalVar& g) { return Refuse(g, KURVO_ERR_CURVE, false); }

}  // namespace
}  // namespace kurvo

extern "C" void KurvofcPOntoCurve(const Curve* curve, Coord p, GlobalVar* g) noexcept {
  if (!curve) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  kurvo::Vec3 point = kurvo::Spatial(p);
  const bool found =
      kurvo::VisitCurve(*curve, [&](const auto& view) { return kurvo::Project(view, point, *g); });
  if (found) kurvo::Store(kurvo::OnPlane(kurvo::Planar(point)), p);
}
