// Evaluator of a rational Bezier curve.
#pragma once

#include "eval/bezier_queries.h"
#include "eval/prationalcurve2d.h"
#include "records/views.h"

namespace kurvo {

class PRationalBezCurve final : public PRationalCurve2D {
 public:
  PRationalBezCurve(const BezierView<4>& bezier, GlobalVar& g);

  Vec3 Position(double t) const override;
  bool ProjectToCarrier(Vec3& p) const override;
  Incidence Parameter(Vec3 p, double& t) const override;
  bool Offset(Vec3 normal, double distance, double tolerance, OwnedSequence& pieces) const override;
  NearestOnCurve NearestPoint(Vec3 p) const override;

  bool HasFootPoints() const {
    return bezier_.degree <= (polynomial_ ? kMaxPlainFootDegree : kMaxRationalFootDegree);
  }
  Segment ToSegment(Vec2 origin) const;
  BezierEnds Ends() const;
  using PCurve2D::tol;

 private:
  const BezierView<4> bezier_;
  const bool polynomial_;  // every weight is 1 within the tolerance
};

}  // namespace kurvo
