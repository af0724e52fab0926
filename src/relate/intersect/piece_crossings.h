// The common points of two Bezier pieces.
#pragma once

#include "foundation/work_budget.h"
#include "relate/bezier_piece.h"
#include "relate/intersect/crossing.h"

namespace kurvo {

// Appends the common points of two pieces as parameters in [0, 1] of each: crossings, and contacts
// within `tol` in length, each once. kStretch when the pieces run together along a stretch; the
// list is then of no use. Pieces must be finite. `work` is in pairs of parts of low degree; nothing
// more is found when none is left. Throws
// std::bad_alloc.
Common FindPieceCrossings(const BezierPiece& a, const BezierPiece& b, double tol, WorkBudget& work,
                          Crossings& found);

}  // namespace kurvo
