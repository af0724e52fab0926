// Evaluator of a circular arc.
#pragma once

#include "calc/arc_span.h"
#include "eval/pcurve2d.h"

namespace kurvo {

// t = 0 is the record's start point and t = 1 its end point, whichever way the arc runs.
class PArc2D final : public PCurve2D {
 public:
  PArc2D(const KurvoArc& arc, GlobalVar& g) : PCurve2D(g), arc_(arc), span_(SpanOf(arc, tol())) {}

  Vec3 Position(double t) const override;
  bool ProjectToCarrier(Vec3& p) const override;
  Incidence Parameter(Vec3 p, double& t) const override;
  bool Offset(Vec3 normal, double distance, double tolerance, OwnedSequence& pieces) const override;
  NearestOnCurve NearestPoint(Vec3 p) const override;

 private:
  const KurvoArc& arc_;
  const ArcSpan span_;
};

}  // namespace kurvo
