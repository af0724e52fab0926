// What the evaluators of curves with weights share.
#pragma once

#include <cstdint>

#include "eval/pcurve2d.h"

namespace kurvo {

// True when all weights lie within `tol` of 1: then the curve is evaluated as the plain curve of
// the same points, without a division.
inline bool WeightsAreOne(const double (*points)[4], int32_t count, double tol) {
  for (int32_t i = 0; i < count; ++i)
    if (!(points[i][3] >= 1.0 - tol && 1.0 + tol >= points[i][3])) return false;
  return true;
}

// Rational curves store Cartesian control points and weights, and are evaluated in homogeneous
// form.
class PRationalCurve2D : public PCurve2D {
 protected:
  explicit PRationalCurve2D(GlobalVar& g) : PCurve2D(g) {}
  ~PRationalCurve2D() = default;
};

}  // namespace kurvo
