// Which ends of loose curves belong together.
#pragma once

#include "base/memory.h"
#include "base/vec2.h"

namespace kurvo::outline {

// End 2 k is the start of curve k, end 2 k + 1 its end; `outwards` points along the curve and
// beyond it, (0, 0) of a point.
struct LooseEnds {
  Array<Vec2> points;
  Array<Vec2> outwards;
};

inline constexpr int32_t kNoEnd = -1;

// For each of the ends that are `free` the one that it is joined to, or kNoEnd. Ends no farther
// apart than `same` come first, those that go straight on before those that turn; then the nearest
// within `gap`, in rings that grow, so that of those left in one ring few lie near each other. An
// end joins one other at most. Cost: n log n for each ring.
Array<int32_t> MatchEnds(const LooseEnds& ends, const Array<bool>& is_free, double same,
                         double gap);

}  // namespace kurvo::outline
