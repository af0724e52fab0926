// Whether two Bezier pieces run together along a stretch.
#pragma once

#include "relate/bezier_piece.h"

namespace kurvo {

// True when a stretch of one piece lies within `tol` of the other. Two polynomial curves that share
// more points than the product of their degrees are parts of one curve (Bezout), so that a common
// stretch ends only at ends of the pieces: those that lie on the other piece are matched, and what
// lies between them is compared point by point.
bool RunTogether(const BezierPiece& a, const BezierPiece& b, double tol);

}  // namespace kurvo
