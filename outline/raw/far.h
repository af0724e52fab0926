// Offsets by more than the size of what is offset.
#pragma once

#include <algorithm>

#include "base/bounds.h"
#include "fit/offset_fit.h"

namespace kurvo::outline {

// Whether a loop grows, or shrinks, to nothing: a hole by this distance outwards, an outer loop
// inwards. No point within is farther from it than half the shorter side of its box.
inline bool IsUsedUp(const Bounds& box, double distance) {
  const double shorter = std::min(box.high.x - box.low.x, box.high.y - box.low.y);
  return 2 * distance > shorter;
}

// Whether the distance to the right is so large that AppendFarStrips may be asked.
bool IsFar(const Bounds& box, double distance);

// Appends strips of a loop of spans for round joins, of those only that may have a part in the
// result: what lies in pockets that no disc of the radius `distance` gets into is passed over by an
// arc of that radius, whose offset is a point. So corners deep within do not reach out, each of
// them across all the others. Cost: n log n for the usual loop of n spans.
void AppendFarStrips(const Array<Span>& spans, double distance, double tol, StripList& list);

}  // namespace kurvo::outline
