// The turning points of a polynomial in [0, 1], and its roots between them.
#pragma once

#include "eval/root_list.h"

namespace kurvo {

// Where f changes its sign in (0, 1), ascending. Found from the highest derivative down: between
// neighbouring turning points of one derivative it is monotone, so that each sign change brackets
// one root. Nothing is missed but what rounding hides, at the price of degree^2 evaluations.
RootList SignChanges(const Polynomial& f);

// Where the derivative of f changes its sign in (0, 1).
RootList TurningPoints(const Polynomial& f);

// The root of f in [a, b], where f changes its sign once. Newton's method kept inside the bracket
// by bisection, to the last bits.
double BracketedRoot(const Polynomial& f, const Polynomial& derivative, double a, double b);

}  // namespace kurvo
