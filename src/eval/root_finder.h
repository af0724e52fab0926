// Real roots of a polynomial in an interval.
#pragma once

#include "eval/root_list.h"

namespace kurvo {

constexpr double kRootMargin = 0.001;        // the search goes this far beyond both ends
constexpr double kMultipleRootValue = 1e-6;  // |f| at a root of f' that counts as a root of f
constexpr double kSameRoot = 1e-5;           // roots closer than this are one

// The real roots of f in [a - 0.001, b + 0.001], ascending, none twice within 1e-5. Simple roots
// are isolated by Sturm chains and refined by Newton's method; multiple ones are also found as
// roots of the derivative where |f| <= 1e-6. Callers pass f normalised (see Normalised). Allocates
// nothing; ends for any input, NaN and infinities included; the zero polynomial has no roots.
RootList FindRoots(const Polynomial& f, double a, double b);

}  // namespace kurvo
