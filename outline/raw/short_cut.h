// Where the sides of two strips cross at an inner corner.
#pragma once

#include <optional>

#include "fit/offset_fit.h"

namespace kurvo::outline {

// What is left of the sides: `before` of the piece of the first strip up to the crossing, `after`
// of that of the second one from there on, as shares of their lengths.
struct ShortCut {
  Vec2 meet;
  double before, after;
};

// The strips of a line or an arc each, at the full distance, that turn at a vertex towards the side
// of the distance by a right angle at most. Nothing where it is not sure that what the sides go
// around beyond their crossing lies within the nearer half of both strips, but for `slack` (length
// in the frame): then it is encircled twice, and once without. No point loses all that encircles
// it: halves of strips are not shared by corners.
std::optional<ShortCut> FindShortCut(const StripList& list, const Strip& before, const Strip& after,
                                     double distance, double slack);

}  // namespace kurvo::outline
