// Evaluator of a line segment.
#pragma once

#include "eval/pcurve2d.h"

namespace kurvo {

class PLine2D final : public PCurve2D {
 public:
  PLine2D(const KurvoLine& line, GlobalVar& g) : PCurve2D(g), line_(line) {}

  Vec3 Position(double t) const override;
  bool ProjectToCarrier(Vec3& p) const override;
  Incidence Parameter(Vec3 p, double& t) const override;
  bool Offset(Vec3 normal, double distance, double tolerance, OwnedSequence& pieces) const override;
  NearestOnCurve NearestPoint(Vec3 p) const override;

 private:
  const KurvoLine& line_;
};

}  // namespace kurvo
