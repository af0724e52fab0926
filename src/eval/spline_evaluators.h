// Evaluators of B-splines, plain and rational.
#pragma once

#include "eval/pcurve2d.h"
#include "records/views.h"

namespace kurvo {

// Works on the record's own knots and control points and keeps no table of spans: a span is found
// by binary search, and a walk over all of them needs nothing but the knots.
template <std::size_t kDim>
class SplineEvaluator final : public EvaluatorBase<kDim> {
 public:
  SplineEvaluator(const SplineView<kDim>& spline, GlobalVar& g)
      : EvaluatorBase<kDim>(g), spline_(spline) {}

  Vec3 Position(double t) const override;
  bool ProjectToCarrier(Vec3& p) const override;
  Incidence Parameter(Vec3 p, double& t) const override;
  bool Offset(Vec3 normal, double distance, double tolerance, OwnedSequence& pieces) const override;
  NearestOnCurve NearestPoint(Vec3 p) const override;

 private:
  using PCurve2D::tol;

  const SplineView<kDim> spline_;
};

extern template class SplineEvaluator<3>;
extern template class SplineEvaluator<4>;

using PBSplineCurve = SplineEvaluator<3>;
using PRationalBSplineCurve = SplineEvaluator<4>;

}  // namespace kurvo
