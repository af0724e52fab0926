// The parameter of a point on a curve.
#include <limits>

#include "eval/with_evaluator.h"
#include "query/position.h"
#include "records/pieces.h"

namespace kurvo {
namespace {

Incidence Parameter(const Curve& curve, Vec3 p, double& t, int level, GlobalVar& g);

// The first piece that contains p wins; without one the candidate of the nearest piece, the earlier
// one on a tie. A composite without pieces leaves t alone.
Incidence ParameterOnComposite(const CompositeView& composite, Vec3 p, double& t, int level,
                               GlobalVar& g) {
  double nearest = std::numeric_limits<double>::infinity();
  Incidence last = Incidence::kOn;
  for (const Piece piece : PiecesOf(composite)) {
    double local = 0.0;
    last = Parameter(piece.curve, p, local, level + 1, g);
    const double candidate = local * piece.width + piece.start;
    if (last == Incidence::kOn) {
      t = candidate;
      return last;
    }
    const double dist = Length(Planar(p) - Planar(PointOfCurve(piece.curve, local, level + 1, g)));
    if (piece.index == 0 || dist < nearest) t = candidate;
    if (dist < nearest) nearest = dist;
  }
  return last;
}

Incidence Parameter(const Curve& curve, Vec3 p, double& t, int level, GlobalVar& g) {
  const auto refuse = [&] { return Refuse(g, KURVO_ERR_CURVE, Incidence::kOn); };
  return VisitCurve(curve, Overloaded{[&](const auto& view) {
                                        return WithEvaluator(view, g, [&](const auto& evaluator) {
                                          return evaluator.Parameter(p, t);
                                        });
                                      },
                                      [&](const CompositeView& composite) {
                                        if (level >= kMaxNesting) return refuse();
                                        return ParameterOnComposite(composite, p, t, level, g);
                                      },
                                      [&](Refused) { return refuse(); }});
}

}  // namespace
}  // namespace kurvo

extern "C" int KurvocvParameter(const Curve* curve, const Coord point, double* t,
                                GlobalVar* g) noexcept {
  using kurvo::Incidence;
  if (kurvo::ErrorPending(*g)) return KURVO_ON_CURVE;
  if (!curve) {
    kurvo::Fail(*g, KURVO_ERR_CURVE);
    return KURVO_ON_CURVE;
  }
  return static_cast<int>(kurvo::Parameter(*curve, kurvo::Spatial(point), *t, 0, *g));
}
