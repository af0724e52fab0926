// Evaluator of a B-spline.
#pragma once

#include "eval/pcurve2d.h"
#include "records/views.h"

namespace kurvo {

// Works on the record's own knots and control points and keeps no table of spans: a span is found
// by binary search, and a walk over all of them needs nothing but the knots.
class PBSplineCurve final : public PCurve2D {
 public:
  PBSplineCurve(const SplineView<3>& spline, GlobalVar& g) : PCurve2D(g), spline_(spline) {}

  Vec3 Position(double t) const override;
  bool ProjectToCarrier(Vec3& p) const override;
  Incidence Parameter(Vec3 p, double& t) const override;
  bool Offset(Vec3 normal, double distance, double tolerance, OwnedSequence& pieces) const override;
  NearestOnCurve NearestPoint(Vec3 p) const override;

 private:
  const SplineView<3> spline_;
};

}  // namespace kurvo
