// Evaluator of a B-spline.
#include "eval/pbsplinecurve.h"

#include "control/spline_point.h"
#include "eval/offset_free_form.h"
#include "eval/spline_queries.h"

namespace kurvo {

Vec3 PBSplineCurve::Position(double t) const {
  if (spline_.order > kMaxSplineOrder) {
    Fail(g_, KURVO_ERR_CURVE);
    return {};
  }
  const int32_t span = FindSpan(KnotsOf(spline_), t);
  return OnPlane(Planar(PointOnSpan(spline_, span, t)));
}

bool PBSplineCurve::ProjectToCarrier(Vec3& p) const {
  if (HasFootPoints(spline_, tol())) {
    p = OnPlane(FootOnSpline(spline_, Planar(p), tol()).point);
    return true;
  }
  return Refuse(g_, KURVO_ERR_CURVE, false);
}

Incidence PBSplineCurve::Parameter(Vec3 p, double& t) const {
  if (HasFootPoints(spline_, tol())) return ParameterOnSpline(spline_, p, tol(), t);
  return Refuse(g_, KURVO_ERR_CURVE, Incidence::kOn);
}

bool PBSplineCurve::Offset(Vec3 normal, double distance, double tolerance,
                           OwnedSequence& pieces) const {
  return OffsetFreeForm(spline_, normal, distance, tolerance, pieces, g_);
}

NearestOnCurve PBSplineCurve::NearestPoint(Vec3 p) const {
  if (HasFootPoints(spline_, tol())) return NearestOnSpline(spline_, Planar(p), tol());
  Fail(g_, KURVO_ERR_CURVE);
  return {};
}

}  // namespace kurvo
