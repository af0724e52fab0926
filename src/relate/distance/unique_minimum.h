// Whether the distance between two short parts has a single minimum, so that a descent finds it.
#pragma once

#include "relate/piece_part.h"

namespace kurvo {

// A part of a plain or rational piece. The bounds are good for weights of one sign only.
struct PartOfPiece {
  const PiecePart& part;
  bool rational;
};

// True when the distance between a point of `a` and one of `b` has no minimum but one, on a side or
// inside: for either parameter it rises all the way, or falls, or stays as it is, or is convex.
// False when bounds on the derivatives do not tell. Cost: linear in the degrees.
bool HaveOneMinimum(const PartOfPiece& a, const PartOfPiece& b);

}  // namespace kurvo
