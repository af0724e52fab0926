// Arcs that nearly run together with others, or with curves.
#pragma once

#include "pair/alongside.h"

namespace kurvo::outline {

// What is known of them: as Alongside() says, of curves of degree 2 to 15 and, in closed form, of
// two arcs.
Relation OfCircleAndCurve(const Circle& arc, const Stretch& curve, const SideReach& reach);
Relation OfTwoCircles(const Circle& a, const Stretch& part, const Circle& b,
                      const SideReach& reach);

}  // namespace kurvo::outline
