// Reversal of a curve's direction of travel.
#pragma once

#include "kurvo.h"

namespace kurvo {

// Reverses the curve in place: its parameter s becomes 1 - s. Returns false, with the curve
// untouched, when it or one of its pieces is a record that cannot be right.
bool Reverse(Curve& curve);

}  // namespace kurvo
