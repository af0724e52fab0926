// Whether two parameters of a curve stand for one of its points.
#pragma once

#include "foundation/point.h"

namespace kurvo {

// Of the way between two of a curve's points, where it is looked at. Not at regular steps, which
// would all hit the centre of a star.
constexpr double kExcursionShares[] = {.47, .23, .73, .11, .88, .36, .61, .04};

// True when the curve does not leave its points p and q, which are the same within the tolerance,
// on the way from one parameter to another: then it does not pass the place twice.
template <class PointOf>
bool StaysAtPoint(const PointOf& point_of, double from, double to, Vec2 p, Vec2 q, double tol) {
  for (const double share : kExcursionShares) {
    const Vec2 at = point_of(from + share * (to - from));
    if (!Within(OnPlane(at - p), tol) && !Within(OnPlane(at - q), tol)) return false;
  }
  return true;
}

}  // namespace kurvo
