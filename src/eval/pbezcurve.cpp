// Evaluator of a Bezier curve.
#include "eval/pbezcurve.h"

#include "control/bezier_point.h"
#include "eval/offset_free_form.h"

namespace kurvo {

Segment PBezCurve::ToSegment(Vec2 origin) const {
  Segment segment;
  SetPowerBasis<2>(static_cast<std::size_t>(bezier_.degree), LoadPlanar(bezier_.points, origin),
                   {&segment.x, &segment.y});
  return segment;
}

BezierEnds PBezCurve::Ends() const {
  return {Spatial(bezier_.points[0]), Spatial(bezier_.points[bezier_.degree])};
}

Vec3 PBezCurve::Position(double t) const { return PointOnBezier(bezier_, t); }

bool PBezCurve::ProjectToCarrier(Vec3& p) const {
  if (HasFootPoints()) return ProjectToBezier(*this, p);
  return Refuse(g_, KURVO_ERR_CURVE, false);
}

Incidence PBezCurve::Parameter(Vec3 p, double& t) const {
  if (HasFootPoints()) return ParameterOnBezier(*this, p, t);
  return Refuse(g_, KURVO_ERR_CURVE, Incidence::kOn);
}

bool PBezCurve::Offset(Vec3 normal, double distance, double tolerance,
                       OwnedSequence& pieces) const {
  return OffsetFreeForm(bezier_, normal, distance, tolerance, pieces, g_);
}

NearestOnCurve PBezCurve::NearestPoint(Vec3 p) const {
  if (HasFootPoints()) return NearestOnBezier(*this, Planar(p));
  Fail(g_, KURVO_ERR_CURVE);
  return {};
}

}  // namespace kurvo
