// Curves that are given twice.
#pragma once

#include <kurvo.h>

#include "base/memory.h"
#include "strand/frame.h"

namespace kurvo::outline {

// For each of the checked curves whether an earlier one is the same, forwards or backwards: a
// record of the same type and sizes whose numbers agree within `tol` (length, in the coordinates of
// the frame; knots, weights and widths within 2^-30 of their range).
Array<bool> FindDuplicates(const Curve* curves, int32_t count, const Frame& frame, double tol);

}  // namespace kurvo::outline
