// Curves that are a single point.
#pragma once

#include "records/owned_curve.h"

namespace kurvo {

// A curve of the same type as `curve`, all of it the point at parameter s: an arc keeps its circle,
// a Bezier curve its degree, a B-spline its order, with as many control points; weights are 1. Of a
// composite it is a Bezier curve of the kind of the piece that s falls on, or nothing when that
// is of another kind. `curve` is well formed and no error is pending. Throws std::bad_alloc.
OwnedCurve PointCurve(const Curve& curve, double s, GlobalVar& g);

}  // namespace kurvo
