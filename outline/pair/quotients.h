// Two curves of any degrees and weights that nearly run together, one perhaps the other written
// otherwise.
#pragma once

#include "pair/alongside.h"

namespace kurvo::outline {

// What is known of them: as Alongside() says, of curves of degree 2 to 16 with positive weights.
Relation OfQuotients(const Stretch& a, const Stretch& b, const SideReach& reach);

}  // namespace kurvo::outline
