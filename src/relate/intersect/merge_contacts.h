// Which touches are contacts of their own.
#pragma once

#include "relate/intersect/crossing.h"
#include "relate/intersect/free_form_pieces.h"

namespace kurvo {

// Keeps one of the touches that lie on one run, along which both curves stay within `tol` of each
// other, where they are closest, and none when the run holds a crossing. Sorts by the first curve.
void DropRepeatedTouches(const FreeFormPieces& a, const FreeFormPieces& b, double tol,
                         Crossings& found);

}  // namespace kurvo
