// Loops that nothing crosses or touches stay as they are, without a sweep.
#pragma once

#include "sweep/events.h"
#include "sweep/parts.h"
#include "sweep/winding.h"

namespace kurvo::outline {

// Whether no two sources of a scene come near each other but where they join, no loop is as narrow
// as the tolerance, and there are few enough loops to look at each pair. Then the result has those
// that lie between inside and outside. Strands are those of the sources, and events those of all
// strands. Cost: O(n) for each loop and each level strand, of which there may be a few.
bool FindApartLoops(const Scene& scene, const Array<Strand>& strands, const Events& events,
                    const Array<int32_t>& rules, const FillRule& fill, ResultLoops& result);

}  // namespace kurvo::outline
