// The distance of a point from a curve.
#include <cmath>
#include <limits>

#include "eval/with_evaluator.h"
#include "query/far_pieces.h"
#include "records/pieces.h"

namespace kurvo {
namespace {

// The point of a curve nearest to a given one; none when the curve has no points. When an error is
// recorded on the way the result means nothing.
struct Nearest {
  bool found = false;
  NearestOnCurve at;

  // Keeps the nearer one, the earlier one of equals; any number beats a NaN.
  void Consider(const NearestOnCurve& candidate) {
    const bool better =
        candidate.dist < at.dist || (std::isnan(at.dist) && !std::isnan(candidate.dist));
    if (!found || better) at = candidate;
    found = true;
  }
};

Nearest NearestOnCurveRecord(const Curve& curve, Vec3 p, int level, GlobalVar& g);

// Pieces that lie farther away than the nearest point found are passed over: an outline has many.
Nearest NearestOnComposite(const CompositeView& composite, Vec3 p, int level, GlobalVar& g) {
  const auto on = [&](int32_t i) {
    return NearestOnCurveRecord(composite.curves[i], p, level + 1, g);
  };
  const int32_t promising = MostPromisingPiece(composite, Planar(p));
  const Nearest on_promising = promising < 0 ? Nearest{} : on(promising);
  double limit = promising < 0 ? std::numeric_limits<double>::infinity() : on_promising.at.dist;
  Nearest nearest;
  for (const Piece piece : PiecesOf(composite)) {
    if (ErrorPending(g)) break;
    if (DistanceBound(piece.curve, Planar(p)) > limit) continue;
    const Nearest on_piece = piece.index == promising ? on_promising : on(piece.index);
    if (!on_piece.found) continue;
    nearest.Consider({on_piece.at.t * piece.width + piece.start, on_piece.at.dist});
    limit = std::fmin(limit, on_piece.at.dist);
  }
  return nearest;
}

Nearest NearestOnCurveRecord(const Curve& curve, Vec3 p, int level, GlobalVar& g) {
  const auto refuse = [&] { return Refuse(g, KURVO_ERR_CURVE, Nearest{}); };
  return VisitCurve(curve, Overloaded{[&](const auto& view) {
                                        return WithEvaluator(view, g, [&](const auto& evaluator) {
                                          return Nearest{true, evaluator.NearestPoint(p)};
                                        });
                                      },
                                      [&](const CompositeView& composite) {
                                        if (level >= kMaxNesting) return refuse();
                                        return NearestOnComposite(composite, p, level, g);
                                      },
                                      [&](Refused) { return refuse(); }});
}

}  // namespace
}  // namespace kurvo

extern "C" double KurvocvDistPoint(const Curve* curve, const Coord p, double* t,
                                   GlobalVar* g) noexcept {
  using kurvo::ErrorPending;
  if (ErrorPending(*g)) return 0.0;
  if (!curve) return kurvo::Refuse(*g, KURVO_ERR_CURVE, 0.0);
  const auto nearest = kurvo::NearestOnCurveRecord(*curve, kurvo::Spatial(p), 0, *g);
  if (!nearest.found || ErrorPending(*g)) return 0.0;
  *t = nearest.at.t;
  return nearest.at.dist;
}
