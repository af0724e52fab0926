// Evaluator of a rational B-spline.
#pragma once

#include "eval/prationalcurve2d.h"
#include "records/views.h"

namespace kurvo {

// The rational counterpart of PBSplineCurve.
class PRationalBSplineCurve final : public PRationalCurve2D {
 public:
  PRationalBSplineCurve(const SplineView<4>& spline, GlobalVar& g)
      : PRationalCurve2D(g), spline_(spline) {}

  Vec3 Position(double t) const override;
  bool ProjectToCarrier(Vec3& p) const override;
  Incidence Parameter(Vec3 p, double& t) const override;
  bool Offset(Vec3 normal, double distance, double tolerance, OwnedSequence& pieces) const override;
  NearestOnCurve NearestPoint(Vec3 p) const override;

 private:
  const SplineView<4> spline_;
};

}  // namespace kurvo
