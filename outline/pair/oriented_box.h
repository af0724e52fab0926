// Boxes along the chords of pieces, which are narrow where a piece is nearly straight.
#pragma once

#include "base/memory.h"
#include "pair/piece.h"

namespace kurvo::outline {

struct OrientedBox {
  Vec2 centre;
  Vec2 along;                      // unit vector
  double half_length, half_width;  // along it and across
};

OrientedBox OrientedBoxOf(const Span& span);
Array<OrientedBox> OrientedBoxesOf(const Array<Piece>& pieces);

// Whether the boxes are farther apart than `margin`, and a side of one of them shows it (separating
// axes: Gottschalk, Lin and Manocha, OBBTree, 1996).
bool AreApart(const OrientedBox& a, const OrientedBox& b, double margin);

}  // namespace kurvo::outline
