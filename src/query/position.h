// The point of a curve at a parameter, for the other queries.
#pragma once

#include "foundation/point.h"

namespace kurvo {

// As KurvocvPosition, but whatever error is pending; `level` counts the composites around the
// curve. Throws when a B-spline of high order finds no memory for its work area.
Vec3 PointOfCurve(const Curve& curve, double t, int level, GlobalVar& g);

}  // namespace kurvo
