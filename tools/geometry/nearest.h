// The point of a curve that is nearest to a given one.
#pragma once

#include "geometry/library.h"

namespace kurvo::tools {

struct NearestPoint {
  double parameter;
  Point point;
  double distance;
};

// Of all points of the bounded curve; on a tie any one of the nearest.
NearestPoint NearestOn(Library& library, const OwnedCurve& curve, Point p);

}  // namespace kurvo::tools
