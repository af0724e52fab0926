// Incidence of points and circles.
#pragma once

#include "foundation/point.h"

namespace kurvo {

// True when p lies on the full circle of the arc; z is ignored.
inline bool OnCircle(Vec3 p, const KurvoArc& arc, double length_tol) {
  const double distance = Length(Planar(p) - Planar(arc.centre));
  return length_tol >= std::fabs(distance - arc.radius);
}

}  // namespace kurvo
