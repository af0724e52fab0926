// Evaluators of B-splines, plain and rational.
#include "eval/spline_evaluators.h"

#include "control/spline_point.h"
#include "eval/offset_free_form.h"
#include "eval/spline_queries.h"

namespace kurvo {
namespace {

Vec3 PointAt(const SplineView<3>& spline, int32_t span, double t, double) {
  return OnPlane(Planar(PointOnSpan(spline, span, t)));
}

Vec3 PointAt(const SplineView<4>& spline, int32_t span, double t, double tol) {
  const bool aside = SpanIsPolynomial(spline, span, EvaluatesPlain(spline, tol));
  return PointOnSpan(spline, span, t, aside ? Weights::kAside : Weights::kCount);
}

}  // namespace

template <std::size_t kDim>
Vec3 SplineEvaluator<kDim>::Position(double t) const {
  if (spline_.order > kMaxSplineOrder) return Refuse(this->g_, KURVO_ERR_CURVE, Vec3{});
  return PointAt(spline_, FindSpan(KnotsOf(spline_), t), t, tol());
}

template <std::size_t kDim>
bool SplineEvaluator<kDim>::ProjectToCarrier(Vec3& p) const {
  if (!HasFootPoints(spline_, tol())) return Refuse(this->g_, KURVO_ERR_CURVE, false);
  p = OnPlane(FootOnSpline(spline_, Planar(p), tol()).point);
  return true;
}

template <std::size_t kDim>
Incidence SplineEvaluator<kDim>::Parameter(Vec3 p, double& t) const {
  if (HasFootPoints(spline_, tol())) return ParameterOnSpline(spline_, p, tol(), t);
  return Refuse(this->g_, KURVO_ERR_CURVE, Incidence::kOn);
}

template <std::size_t kDim>
bool SplineEvaluator<kDim>::Offset(Vec3 normal, double distance, double tolerance,
                                   OwnedSequence& pieces) const {
  return OffsetFreeForm(spline_, normal, distance, tolerance, pieces, this->g_);
}

template <std::size_t kDim>
NearestOnCurve SplineEvaluator<kDim>::NearestPoint(Vec3 p) const {
  if (HasFootPoints(spline_, tol())) return NearestOnSpline(spline_, Planar(p), tol());
  return Refuse(this->g_, KURVO_ERR_CURVE, NearestOnCurve{});
}

template class SplineEvaluator<3>;
template class SplineEvaluator<4>;

}  // namespace kurvo
