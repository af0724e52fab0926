// Whether two chains cross where they meet.
#pragma once

#include "chain/track.h"

namespace kurvo::outline {

// A part of a chain that is near the other one, in the sense of travel.
struct Passage {
  Position from, to;
};

// Whether `b` goes from one side of `a` to the other past a place where they meet. Each is followed
// to both sides, away from the part where they are near, until it is clearly away from the place: a
// circle around it cuts each twice, and they cross when the cuts of one separate those of the
// other. A chain that ends before does not cross.
bool CrossAt(const Track& a, const Passage& on_a, const Track& b, const Passage& on_b, Vec2 place,
             double tol);

}  // namespace kurvo::outline
