// Evaluators of Bezier curves, plain and rational.
#pragma once

#include "eval/bezier_queries.h"
#include "eval/pcurve2d.h"
#include "records/views.h"

namespace kurvo {

template <std::size_t kDim>
class BezierEvaluator final : public EvaluatorBase<kDim> {
 public:
  BezierEvaluator(const BezierView<kDim>& bezier, GlobalVar& g);

  Vec3 Position(double t) const override;
  bool ProjectToCarrier(Vec3& p) const override;
  Incidence Parameter(Vec3 p, double& t) const override;
  bool Offset(Vec3 normal, double distance, double tolerance, OwnedSequence& pieces) const override;
  NearestOnCurve NearestPoint(Vec3 p) const override;

  bool HasFootPoints() const {
    return bezier_.degree <= (polynomial_ ? kMaxPlainFootDegree : kMaxRationalFootDegree);
  }
  Segment ToSegment(Vec2 origin) const;
  RootList FirstFootRoots(Vec2 p) const;
  BezierEnds Ends() const;
  using PCurve2D::tol;

 private:
  const BezierView<kDim> bezier_;
  const bool polynomial_;  // plain, or every weight is 1 within the tolerance
};

extern template class BezierEvaluator<3>;
extern template class BezierEvaluator<4>;

using PBezCurve = BezierEvaluator<3>;
using PRationalBezCurve = BezierEvaluator<4>;

}  // namespace kurvo
