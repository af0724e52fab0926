// Two curves of one degree that nearly run together.
#pragma once

#include "pair/alongside.h"

namespace kurvo::outline {

// What is known of them: as Alongside() says, of curves of one degree (at least 2) and one set of
// weights; of polynomials up to degree 5 more than that all of them is near.
inline constexpr int kMostOfOneDegree = 5;
Relation OfOneDegree(const Stretch& a, const Stretch& b, const SideReach& reach);

}  // namespace kurvo::outline
