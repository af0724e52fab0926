// The start and the end point of a curve.
#include <optional>

#include "calc/circles.h"
#include "calc/directions.h"
#include "control/spline_point.h"
#include "foundation/error_codes.h"
#include "foundation/guard.h"
#include "records/pieces.h"

namespace kurvo {
namespace {

// A stored end off the circle is moved onto it radially; one at the centre has no direction to move
// in.
Vec3 EndOfArc(const KurvoArc& arc, End end, GlobalVar& g) {
  const Vec3 p = Spatial(end == End::kStart ? arc.start : arc.end);
  if (OnCircle(p, arc, g.epsilon)) return p;
  const Vec3 centre = Spatial(arc.centre);
  if (SamePoint(p, centre, g.epsilon)) return p;
  const Vec3 u = UnitVector(p - centre, g);
  return {centre.x + arc.radius * u.x, centre.y + arc.radius * u.y, 0.0};
}

template <std::size_t kDim>
std::optional<Vec3> EndOfSplineRecord(const SplineView<kDim>& spline, End end, GlobalVar& g) {
  const bool at_start = end == End::kStart;
  if (spline.order > kMaxSplineOrder &&
      (at_start ? EvaluatedStart(spline) : EvaluatedEnd(spline))) {
    return Refuse(g, KURVO_ERR_CURVE, std::nullopt);
  }
  return at_start ? StartOfSpline(spline) : EndOfSpline(spline);
}

// The end point; nothing, with the error recorded, for a bad record, and nothing for a composite
// without pieces.
std::optional<Vec3> EndPoint(const Curve& cv, End end, GlobalVar& g) {
  using Result = std::optional<Vec3>;
  const Curve* leaf = EndLeaf(cv, end);
  const auto refuse = [&](Refused) -> Result { return Refuse(g, KURVO_ERR_CURVE, std::nullopt); };
  if (!leaf) return refuse({});
  const bool start = end == End::kStart;
  return VisitCurve(
      *leaf, Overloaded{[&](const KurvoLine& line) -> Result {
                          return Spatial(start ? line.start : line.end);
                        },
                        [&](const KurvoArc& arc) -> Result { return EndOfArc(arc, end, g); },
                        [&]<std::size_t kDim>(const BezierView<kDim>& bezier) -> Result {
                          return Spatial(bezier.points[start ? 0 : bezier.degree]);
                        },
                        [&]<std::size_t kDim>(const SplineView<kDim>& spline) -> Result {
                          return EndOfSplineRecord(spline, end, g);
                        },
                        [](const CompositeView&) -> Result { return std::nullopt; }, refuse});
}

void StoreEndPoint(const Curve* cv, End end, double* out, GlobalVar& g) {
  if (!cv) return Fail(g, KURVO_ERR_CURVE);
  const auto point = Guard(g, std::optional<Vec3>(), [&] { return EndPoint(*cv, end, g); });
  if (point) Store(*point, out);
}

}  // namespace
}  // namespace kurvo

extern "C" {

void KurvocvStartPoint(const Curve* cv, Coord out, GlobalVar* g) noexcept {
  kurvo::StoreEndPoint(cv, kurvo::End::kStart, out, *g);
}

void KurvocvEndPoint(const Curve* cv, Coord out, GlobalVar* g) noexcept {
  kurvo::StoreEndPoint(cv, kurvo::End::kEnd, out, *g);
}

}  // extern "C"
