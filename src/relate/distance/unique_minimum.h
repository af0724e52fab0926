// Whether the distance between two short parts has a single minimum, so that a descent finds it.
#pragma once

#include "relate/bezier_piece.h"

namespace kurvo {

// True when the distance between a point of `a` and one of `b` has no minimum but one, on a side or
// inside: for either parameter it rises all the way, or falls, or stays as it is, or is convex.
// False when bounds on the derivatives do not tell. Both parts must lie in their hulls. Cost:
// linear in the degrees.
bool HaveOneMinimum(const BezierPiece& a, const BezierPiece& b);

}  // namespace kurvo
