// Numbers and points as text, in the "C" locale.
#pragma once

#include <string>

#include "geometry/affine.h"
#include "geometry/library.h"

namespace kurvo::tools {

// Six significant digits at most, for people.
std::string ShortNumber(double value);

// The fewest digits that read back as the same double; never "-0".
std::string ExactNumber(double value);

// At most `decimals` digits after the point, trailing zeros dropped, never "-0".
std::string FixedNumber(double value, int decimals);

// "(1, 2)", and "(0, 0) - (1, 2)" for a box, which is nothing when it is empty; for people.
std::string PointText(Point p);
std::string BoundsText(const Bounds& box);

}  // namespace kurvo::tools
