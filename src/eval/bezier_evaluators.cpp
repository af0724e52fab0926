// Evaluators of Bezier curves, plain and rational.
#include "eval/bezier_evaluators.h"

#include "control/bezier_point.h"
#include "control/weights.h"
#include "eval/first_foot.h"
#include "eval/offset_free_form.h"

namespace kurvo {
namespace {

bool IsPolynomial(const BezierView<3>&, double) { return true; }

bool IsPolynomial(const BezierView<4>& bezier, double tol) {
  return WeightsAreOne(bezier.points, bezier.degree + 1, tol);
}

Vec3 PointAt(const BezierView<3>& bezier, double t, bool) { return PointOnBezier(bezier, t); }

Vec3 PointAt(const BezierView<4>& bezier, double t, bool polynomial) {
  return PointOnBezier(bezier, t, polynomial);
}

}  // namespace

template <std::size_t kDim>
BezierEvaluator<kDim>::BezierEvaluator(const BezierView<kDim>& bezier, GlobalVar& g)
    : EvaluatorBase<kDim>(g), bezier_(bezier), polynomial_(IsPolynomial(bezier, tol())) {}

template <std::size_t kDim>
Segment BezierEvaluator<kDim>::ToSegment(Vec2 origin) const {
  const auto degree = static_cast<std::size_t>(bezier_.degree);
  Segment segment;
  if constexpr (kDim == 4) {
    segment.rational = !polynomial_;
    if (segment.rational) {
      SetPowerBasis<3>(degree, LoadHomogeneous(bezier_.points, origin),
                       {&segment.x, &segment.y, &segment.w});
      return segment;
    }
  }
  SetPowerBasis<2>(degree, LoadPlanar(bezier_.points, origin), {&segment.x, &segment.y});
  return segment;
}

template <std::size_t kDim>
RootList BezierEvaluator<kDim>::FirstFootRoots(Vec2 p) const {
  if constexpr (kDim == 3) {
    const FirstFoot first = FirstFootOn(bezier_, p);
    if (first.found != FirstFoot::kInDoubt) {
      RootList roots;
      if (first.found == FirstFoot::kAt) roots.Append(first.t);
      return roots;
    }
  }
  return FootRoots(ToSegment(p));
}

template <std::size_t kDim>
BezierEnds BezierEvaluator<kDim>::Ends() const {
  return {Spatial(bezier_.points[0]), Spatial(bezier_.points[bezier_.degree])};
}

template <std::size_t kDim>
Vec3 BezierEvaluator<kDim>::Position(double t) const {
  return PointAt(bezier_, t, polynomial_);
}

template <std::size_t kDim>
bool BezierEvaluator<kDim>::ProjectToCarrier(Vec3& p) const {
  if (HasFootPoints()) return ProjectToBezier(*this, p);
  return Refuse(this->g_, KURVO_ERR_CURVE, false);
}

template <std::size_t kDim>
Incidence BezierEvaluator<kDim>::Parameter(Vec3 p, double& t) const {
  if (HasFootPoints()) return ParameterOnBezier(*this, p, t);
  return Refuse(this->g_, KURVO_ERR_CURVE, Incidence::kOn);
}

template <std::size_t kDim>
bool BezierEvaluator<kDim>::Offset(Vec3 normal, double distance, double tolerance,
                                   OwnedSequence& pieces) const {
  return OffsetFreeForm(bezier_, normal, distance, tolerance, pieces, this->g_);
}

template <std::size_t kDim>
NearestOnCurve BezierEvaluator<kDim>::NearestPoint(Vec3 p) const {
  if (HasFootPoints()) return NearestOnBezier(*this, Planar(p));
  return Refuse(this->g_, KURVO_ERR_CURVE, NearestOnCurve{});
}

template class BezierEvaluator<3>;
template class BezierEvaluator<4>;

}  // namespace kurvo
