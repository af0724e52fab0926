// Incidence of points and lines.
#pragma once

#include "foundation/point.h"

namespace kurvo {

// True when p1 and p2 lie on one ray from p0 (p1 may lie beyond p2), or two of the three points are
// the same.
bool OnOneRay(Vec3 p0, Vec3 p1, Vec3 p2, const GlobalVar& g);

}  // namespace kurvo
