// Conversion of a curve to another type.
#pragma once

#include "records/owned_curve.h"

namespace kurvo {

// The Bezier curve that stands for a line in a composite.
enum class LinePiece { kCubic, kLinear };

// The curve as one of the given type, in a new record; an empty handle when that type cannot
// represent it exactly or when it is a record that cannot be right. Leaves the error state as it
// was. Throws std::bad_alloc.
OwnedCurve Converted(const Curve& source, int32_t type, GlobalVar& g,
                     LinePiece line_piece = LinePiece::kCubic);

}  // namespace kurvo
