// Drawings as DXF files (docs/dxf.md).
#pragma once

#include <string>

#include "geometry/result.h"
#include "svg/curve_path.h"

namespace kurvo::tools {

enum class DxfVersion { kR12, kR2000 };

// The chains as LINE, ARC, CIRCLE, polylines with bulges and, in R2000, SPLINE, all of which are
// exact; R12 has no splines: other curves are arcs there, as accurate as wanted. y points up: of a
// drawing where it points down its sign is turned. In units of the drawing where DXF has them, or
// else in millimetres.
std::string DxfText(Context& context, const Result& result, DxfVersion version,
                    const PathAccuracy& accuracy);

}  // namespace kurvo::tools
