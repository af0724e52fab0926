// The control points of a B-spline that passes through given points.
#pragma once

#include <cstdint>

#include "control/knot_spans.h"

namespace kurvo {

// Writes the control points, multiplied by 1 / scale, of the B-spline whose point at t[i] is point
// i times `scale`: the first and the last are those of the data. `t` ascends from one end of the
// clamped domain to the other, with knots by averaging; order > 2. False, with the result of no
// use, when a pivot is not positive or a coordinate, before the division, larger than `limit` or
// not a number. Throws std::bad_alloc.
bool SolveInterpolation(const KnotVector& knots, const double* t, const double* points,
                        double scale, double limit, double (*out)[3]);

}  // namespace kurvo
