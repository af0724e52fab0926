// The curve of the centres of curvature of a cubic, its evolute.
#pragma once

#include "base/memory.h"
#include "fit/cubic_cells.h"
#include "fit/offset_breaks.h"

namespace kurvo::outline {

// Appends cubics along the centres of curvature of a cubic between two parameters, between which
// its curvature only grows or only falls: about within `tol` of them, with their directions where
// they join, which are the cubic's normals (Lockwood, A book of curves, 1961). Result: whether 64
// are enough; a chord serves for what is flat, and is none of them.
bool AppendCentres(const Vec2* points, const Hodograph3& hodograph, double from, double to,
                   double tol, Array<CubicCell>& cells);

}  // namespace kurvo::outline
