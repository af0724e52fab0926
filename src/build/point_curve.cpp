// Curves that are a single point.
#include "build/point_curve.h"

#include "foundation/point.h"
#include "records/copied_curve.h"
#include "records/new_records.h"
#include "records/pieces.h"

namespace kurvo {
namespace {

Vec3 PointAt(const Curve& curve, double s, GlobalVar& g) {
  Coord p;
  KurvocvPosition(&curve, s, p, &g);
  if (g.error == KURVO_ERR_MEMORY) throw std::bad_alloc();
  return Spatial(p);
}

// Writes degree + 1 control points, all of them p.
auto Repeated(Vec3 p, int32_t degree) {
  return [p, degree]<std::size_t kDim>(double(*points)[kDim]) {
    const double point[4] = {p.x, p.y, 0.0, 1.0};
    for (int64_t i = 0; i <= degree; ++i) std::copy_n(point, kDim, points[i]);
  };
}

OwnedCurve PointOfPiece(const Curve* piece, Vec3 p) {
  if (!piece) return {};
  return VisitCurve(*piece, Overloaded{[](const auto&) { return OwnedCurve(); },
                                       [&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                                         // Fixed behaviour: one degree more than the piece has.
                                         const int32_t degree = bezier.degree + 1;
                                         return NewBezier<kDim>(degree, Repeated(p, degree));
                                       }});
}

}  // namespace

OwnedCurve PointCurve(const Curve& curve, double s, GlobalVar& g) {
  const Vec3 p = PointAt(curve, s, g);
  return VisitCurve(
      curve,
      Overloaded{[&](const KurvoLine&) {
                   OwnedCurve point = CopyOf(curve, g);
                   Store(p, point.block<KurvoLine>().start);
                   Store(p, point.block<KurvoLine>().end);
                   return point;
                 },
                 [&](const KurvoArc&) {
                   OwnedCurve point = CopyOf(curve, g);
                   Store(p, point.block<KurvoArc>().start);
                   Store(p, point.block<KurvoArc>().end);
                   return point;
                 },
                 [&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                   return NewBezier<kDim>(bezier.degree, Repeated(p, bezier.degree));
                 },
                 [&]<std::size_t kDim>(const SplineView<kDim>& spline) {
                   return NewSingleSpan<kDim>(spline.order - 1, Repeated(p, spline.order - 1));
                 },
                 [&](const CompositeView& composite) {
                   return PointOfPiece(PieceAt(composite, s, Boundary::kEarlierPiece).piece, p);
                 },
                 [](Refused) { return OwnedCurve(); }});
}

}  // namespace kurvo
