// The picture of a spline and of the points it passes through, as SVG.
#pragma once

#include <string>
#include <vector>

#include "geometry/library.h"

namespace kurvo::tools {

struct FitPictureOptions {
  bool control = false;  // the control polygon
  double size = 1000;    // pixels along the longer side
};

// The curve as it is, with a ring around each point.
std::string FitPicture(Library& library, const std::vector<Point>& points, const OwnedCurve& spline,
                       const FitPictureOptions& options);

}  // namespace kurvo::tools
