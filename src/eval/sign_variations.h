// Descartes' rule of signs on an interval.
#pragma once

#include "eval/polynomial.h"

namespace kurvo {

enum class SignVariations {
  kNone,  // no root in the interval
  kOne,   // exactly one root, a simple one
  kOpen   // two or more variations, or too close to call in floating point
};

// Counts the sign variations of the coefficients of f in Bernstein form over [a, b]: no fewer than
// the roots inside, and different from them by an even number. Much cheaper than a Sturm chain, and
// decisive for most polynomials that curves give. Requires two coefficients or more.
SignVariations VariationsOn(const Polynomial& f, double a, double b);

}  // namespace kurvo
