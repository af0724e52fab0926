// Which touches are contacts of their own.
#pragma once

#include "relate/crossing.h"
#include "relate/free_form_pieces.h"

namespace kurvo {

// Drops touches from which one can go on, along both curves within `tol` of each other, to a
// crossing, or to another touch where they are closer.
void DropRepeatedTouches(const FreeFormPieces& a, const FreeFormPieces& b, double tol,
                         Crossings& found);

}  // namespace kurvo
