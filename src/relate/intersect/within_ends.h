// Which crossings lie on the bounded parts of curves.
#pragma once

#include "relate/intersect/crossing.h"

namespace kurvo {

constexpr double kEndSlack = 1e-6;  // of a parameter beyond an end

// Drops crossings that are not finite, and those beyond an end of a bounded curve, but for those
// whose point is that end within the tolerance; parameters stay as they are.
void KeepBounded(const Curve& a, const Curve& b, Bounded bounded, GlobalVar& g,
                 Crossings& crossings);

}  // namespace kurvo
