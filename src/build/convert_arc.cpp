// Conversion of circular arcs, as rational quadratic Bezier curves.
#include <optional>

#include "build/convert_from.h"
#include "calc/directions.h"
#include "records/new_records.h"

namespace kurvo {
namespace {

constexpr double kFullCircleSlack = 0.0001;  // radians by which a sweep may miss a full turn
constexpr double kParallelTangents = 1e-12;  // their determinant, in units of the radius squared
constexpr double kSameLength = 1e-9;         // relative: rounding of ends on one circle

// True when the sweep, counted counter-clockwise whichever way the arc runs, misses a full turn, or
// none, by the slack at most.
bool IsFullCircle(Vec2 to_start, Vec2 to_end) {
  const double sweep = OneTurn(AngleOf(to_end) - AngleOf(to_start), kFullCircleSlack);
  // A sweep just short of a full turn folds to just below 0.
  return !(sweep >= 0.0 && kTwoPi > sweep + kFullCircleSlack);
}

// The intersection of the tangents, from the centre, and its weight |cos(sweep / 2)|.
struct MiddlePoint {
  Vec2 from_centre;
  double weight;
};

// The solution v of v . s = |S|, v . e = |E| for unit vectors s and e to the ends. Of two formulas
// each is used where it does not cancel: along m = s + e and across it, s - e, with the sum and the
// difference of the lengths; and Cramer's rule. Weight and distance divide and multiply by the same
// determinant, so that its rounding near a half circle moves the point along the bisector but not
// the curve.
MiddlePoint MiddleOf(Vec2 to_start, Vec2 to_end) {
  const double start_length = Length(to_start);
  const double end_length = Length(to_end);
  const Vec2 s = (1.0 / start_length) * to_start;
  const Vec2 e = (1.0 / end_length) * to_end;
  if (Dot(s, e) > 0.0) {
    const Vec2 m = s + e;
    const Vec2 across = s - e;
    const Vec2 v = ((start_length + end_length) / Dot(m, m)) * m;
    // On a short arc the rounding of equal lengths would carry v aside.
    if (kSameLength * start_length >= std::fabs(start_length - end_length))
      return {v, 0.5 * Length(m)};
    return {v + ((start_length - end_length) / Dot(across, across)) * across, 0.5 * Length(m)};
  }
  const double det = Cross(s, e);
  const Vec2 v = {start_length * e.y - end_length * s.y, end_length * s.x - start_length * e.x};
  return {(1.0 / det) * v, std::fabs(det) / Length(e - s)};
}

struct RationalQuadratic {
  HCoord points[3];
};

// The arc as one rational quadratic. Nothing for a full circle and for a half circle, whose
// tangents meet nowhere. The sense of travel is not consulted and the weight is never negative: an
// arc that sweeps more than half a turn comes out as the shorter arc between the same ends.
std::optional<RationalQuadratic> QuadraticOfArc(const KurvoArc& arc) {
  const Vec2 centre = Planar(arc.centre);
  const Vec2 to_start = Planar(arc.start) - centre;
  const Vec2 to_end = Planar(arc.end) - centre;
  if (IsFullCircle(to_start, to_end)) return std::nullopt;
  const double det = Cross(to_start, to_end);
  if (!(std::fabs(det) > kParallelTangents * arc.radius * arc.radius)) return std::nullopt;

  const MiddlePoint middle = MiddleOf(to_start, to_end);
  const Vec2 m = centre + middle.from_centre;
  RationalQuadratic quadratic;
  KurvoclSetHCoord(quadratic.points[0], arc.start[0], arc.start[1], 0.0, 1.0);
  KurvoclSetHCoord(quadratic.points[1], m.x, m.y, 0.0, middle.weight);
  KurvoclSetHCoord(quadratic.points[2], arc.end[0], arc.end[1], 0.0, 1.0);
  return quadratic;
}

}  // namespace

OwnedCurve ConvertFrom(const KurvoArc& arc, int32_t type) {
  const auto quadratic = QuadraticOfArc(arc);
  if (!quadratic) return {};
  switch (type) {
    case CV_RBEZIER:
      return CopiedBezier(quadratic->points, 2);
    case CV_RBSPLINE:
      return CopiedSingleSpan(quadratic->points, 2);
    case CV_SEGCV:
      return NewComposite(CopiedBezier(quadratic->points, 2));
    default:
      return {};
  }
}

}  // namespace kurvo
