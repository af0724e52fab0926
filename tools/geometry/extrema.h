// Curves cut where they are farthest to a side, and where they change their bend.
#pragma once

#include "geometry/drawing.h"

namespace kurvo::tools {

// What outlines are cut at, besides where they are cut already.
struct CutPlaces {
  bool extrema = false;      // of x and of y
  bool inflections = false;  // of curves, not of joints
};

// The drawing with its curves cut, and its outlines as whole as before. Curves stay what they are,
// but splines and composites become their spans; the handles of quadratics and cubics at an
// extremum are horizontal or vertical to the last bit. `done` is called for each curve.
Drawing Cut(Context& context, const Drawing& drawing, CutPlaces places, const CurveDone& done);

}  // namespace kurvo::tools
