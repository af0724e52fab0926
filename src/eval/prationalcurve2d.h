// What the evaluators of curves with weights share.
#pragma once

#include "eval/pcurve2d.h"

namespace kurvo {

// Rational curves store Cartesian control points and weights, and are evaluated in homogeneous
// form.
class PRationalCurve2D : public PCurve2D {
 protected:
  explicit PRationalCurve2D(GlobalVar& g) : PCurve2D(g) {}
  ~PRationalCurve2D() = default;
};

}  // namespace kurvo
