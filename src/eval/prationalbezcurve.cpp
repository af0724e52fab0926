// Evaluator of a rational Bezier curve.
#include "eval/prationalbezcurve.h"

#include "control/bezier_point.h"
#include "control/weights.h"
#include "eval/offset_free_form.h"

namespace kurvo {

PRationalBezCurve::PRationalBezCurve(const BezierView<4>& bezier, GlobalVar& g)
    : PRationalCurve2D(g),
      bezier_(bezier),
      polynomial_(WeightsAreOne(bezier.points, bezier.degree + 1, tol())) {}

Segment PRationalBezCurve::ToSegment(Vec2 origin) const {
  const auto degree = static_cast<std::size_t>(bezier_.degree);
  Segment segment;
  segment.rational = !polynomial_;
  if (polynomial_)
    SetPowerBasis<2>(degree, LoadPlanar(bezier_.points, origin), {&segment.x, &segment.y});
  else
    SetPowerBasis<3>(degree, LoadHomogeneous(bezier_.points, origin),
                     {&segment.x, &segment.y, &segment.w});
  return segment;
}

BezierEnds PRationalBezCurve::Ends() const {
  return {Spatial(bezier_.points[0]), Spatial(bezier_.points[bezier_.degree])};
}

Vec3 PRationalBezCurve::Position(double t) const { return PointOnBezier(bezier_, t, polynomial_); }

bool PRationalBezCurve::ProjectToCarrier(Vec3& p) const {
  if (HasFootPoints()) return ProjectToBezier(*this, p);
  return Refuse(g_, KURVO_ERR_CURVE, false);
}

Incidence PRationalBezCurve::Parameter(Vec3 p, double& t) const {
  if (HasFootPoints()) return ParameterOnBezier(*this, p, t);
  return Refuse(g_, KURVO_ERR_CURVE, Incidence::kOn);
}

bool PRationalBezCurve::Offset(Vec3 normal, double distance, double tolerance,
                               OwnedSequence& pieces) const {
  return OffsetFreeForm(bezier_, normal, distance, tolerance, pieces, g_);
}

NearestOnCurve PRationalBezCurve::NearestPoint(Vec3 p) const {
  if (HasFootPoints()) return NearestOnBezier(*this, Planar(p));
  Fail(g_, KURVO_ERR_CURVE);
  return {};
}

}  // namespace kurvo
