// Evaluator of a B-spline.
#include "eval/pbsplinecurve.h"

#include "eval/spline_point.h"
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
  Fail(g_, KURVO_ERR_CURVE);
  return false;
}

Incidence PBSplineCurve::Parameter(Vec3 p, double& t) const {
  if (HasFootPoints(spline_, tol())) return ParameterOnSpline(spline_, p, tol(), t);
  Fail(g_, KURVO_ERR_CURVE);
  return Incidence::kOn;
}

NearestOnCurve PBSplineCurve::NearestPoint(Vec3 p) const {
  if (HasFootPoints(spline_, tol())) return NearestOnSpline(spline_, Planar(p), tol());
  Fail(g_, KURVO_ERR_CURVE);
  return {};
}

}  // namespace kurvo
