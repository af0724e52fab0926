// Whether two parameters of a curve stand for one of its points.
#pragma once

#include "foundation/point.h"

namespace kurvo {

constexpr int kExcursionSteps = 8;  // of the way between; its middle is looked at first

// True when the curve does not leave its points p and q, which are the same within the tolerance,
// on the way from one parameter to another: then it does not pass the place twice.
template <class PointOf>
bool StaysAtPoint(const PointOf& point_of, double from, double to, Vec2 p, Vec2 q, double tol) {
  for (int stride = kExcursionSteps / 2; stride >= 1; stride /= 2) {
    for (int i = stride; i < kExcursionSteps; i += 2 * stride) {
      const double share = static_cast<double>(i) / kExcursionSteps;
      const Vec2 at = point_of(from + share * (to - from));
      if (!Within(OnPlane(at - p), tol) && !Within(OnPlane(at - q), tol)) return false;
    }
  }
  return true;
}

}  // namespace kurvo
