// Curves at a constant distance from a curve.
#include <algorithm>
#include <cmath>

#include "eval/with_evaluator.h"
#include "foundation/guard.h"
#include "records/well_formed.h"

namespace kurvo {
namespace {

// True when no value is infinite or NaN: 0 times those is NaN.
bool AllFinite(const double* values, std::size_t count) {
  double sum = 0.0;
  for (std::size_t i = 0; i < count; ++i) sum += 0.0 * values[i];
  return sum == 0.0;
}

template <std::size_t kDim>
bool AllFinite(const double (*points)[kDim], int32_t count) {
  return AllFinite(points[0], static_cast<std::size_t>(count) * kDim);
}

bool IsFinite(const KurvoLine& line) { return AllFinite(line.start, 3) && AllFinite(line.end, 3); }
bool IsFinite(const KurvoArc& arc) {
  return std::isfinite(arc.radius) && AllFinite(arc.centre, 3) && AllFinite(arc.normal, 3) &&
         AllFinite(arc.start, 3) && AllFinite(arc.end, 3);
}
template <std::size_t kDim>
bool IsFinite(const BezierView<kDim>& bezier) {
  return AllFinite(bezier.points, bezier.degree + 1);
}
template <std::size_t kDim>
bool IsFinite(const SplineView<kDim>& spline) {
  return AllFinite(spline.points, spline.count) &&
         AllFinite(spline.knots, static_cast<std::size_t>(spline.order + spline.count));
}

struct OffsetArguments {
  Vec3 normal;
  double distance;
  double tolerance;
};

// The normal must lie along z within epsilon, whatever its length.
bool AreValid(const OffsetArguments& a, double epsilon) {
  const bool along_z = epsilon >= std::fabs(a.normal.x) && epsilon >= std::fabs(a.normal.y) &&
                       std::fabs(a.normal.z) > epsilon;
  return along_z && std::isfinite(a.normal.z) && std::isfinite(a.distance) &&
         std::isfinite(a.tolerance) && a.tolerance >= 0.0;
}

template <class View>
bool AddOffset(const View& view, const OffsetArguments& a, OwnedSequence& pieces, GlobalVar& g) {
  if (!IsFinite(view)) return false;
  return WithEvaluator(view, g, [&](const PCurve2D& evaluator) {
    return evaluator.Offset(a.normal, a.distance, a.tolerance, pieces);
  });
}

// Fixed behaviour: of a composite, the Bezier and rational Bezier pieces before the first of any
// other type are offset; that one and those after it are left out.
bool AddOffset(const CompositeView& composite, const OffsetArguments& a, OwnedSequence& pieces,
               GlobalVar& g) {
  for (int32_t i = 0; i < composite.count; ++i) {
    const Curve& segment = composite.curves[i];
    if (segment.type != CV_BEZIER && segment.type != CV_RBEZIER) break;
    const bool added =
        VisitCurve(segment, Overloaded{[](const auto&) { return false; },
                                       [&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                                         return AddOffset(bezier, a, pieces, g);
                                       },
                                       [&](Refused) {
                                         Fail(g, KURVO_ERR_CURVE);
                                         return false;
                                       }});
    if (!added) return false;
  }
  return true;
}

bool AddOffset(Refused, const OffsetArguments&, OwnedSequence&, GlobalVar& g) {
  return Refuse(g, KURVO_ERR_CURVE, false);
}

// Finite input can give points beyond the largest numbers.
bool AllFinite(const OwnedSequence& pieces) {
  return std::all_of(pieces.begin(), pieces.end(), [](const OwnedCurve& piece) {
    return VisitCurve(piece.curve(), Overloaded{[](const auto& view) { return IsFinite(view); },
                                                [](const CompositeView&) { return false; },
                                                [](Refused) { return false; }});
  });
}

// Empty for what is refused.
Cvseq Offset(const Curve& curve, const OffsetArguments& a, GlobalVar& g) {
  // The pieces of a composite are looked at one by one.
  if (curve.type != CV_SEGCV && !WellFormed(curve)) {
    Fail(g, KURVO_ERR_CURVE);
    return {};
  }
  OwnedSequence pieces;
  const bool added =
      VisitCurve(curve, [&](const auto& view) { return AddOffset(view, a, pieces, g); });
  return added && AllFinite(pieces) ? ReleaseSequence(pieces) : Cvseq{};
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvOffsetCurve(const Curve* curve, const Coord normal, double distance,
                                   double tolerance, Cvseq* result, GlobalVar* g) noexcept {
  if (result) *result = Cvseq{};
  if (kurvo::ErrorPending(*g) || !curve || !curve->data || !normal || !result) return;
  const kurvo::OffsetArguments a{kurvo::Spatial(normal), distance, tolerance};
  if (!kurvo::AreValid(a, g->epsilon)) return;
  *result = kurvo::Guard(*g, Cvseq{}, [&] { return kurvo::Offset(*curve, a, *g); });
}
