// Common points of two free-form curves.
#pragma once

#include "relate/intersect/crossing.h"

namespace kurvo {

// Appends the common points of two curves of any types but line and arc, each once; kStretch when
// some of their pieces run together. Throws std::bad_alloc.
Common CrossFreeForms(const Curve& a, const Curve& b, GlobalVar& g, Crossings& found);

}  // namespace kurvo
