// Evaluator of a Bezier curve.
#pragma once

#include "eval/bezier_queries.h"
#include "eval/pcurve2d.h"
#include "records/views.h"

namespace kurvo {

class PBezCurve final : public PCurve2D {
 public:
  PBezCurve(const BezierView<3>& bezier, GlobalVar& g) : PCurve2D(g), bezier_(bezier) {}

  Vec3 Position(double t) const override;
  bool ProjectToCarrier(Vec3& p) const override;
  Incidence Parameter(Vec3 p, double& t) const override;
  bool Offset(Vec3 normal, double distance, double tolerance, OwnedSequence& pieces) const override;
  NearestOnCurve NearestPoint(Vec3 p) const override;

  bool HasFootPoints() const { return bezier_.degree <= kMaxPlainFootDegree; }
  Segment ToSegment(Vec2 origin) const;
  BezierEnds Ends() const;
  using PCurve2D::tol;

 private:
  const BezierView<3> bezier_;
};

}  // namespace kurvo
