// Loops that cross clearly, or do not meet at all, are told without a sweep.
#pragma once

#include <kurvo_outline.h>

#include "sweep/events.h"
#include "sweep/parts.h"
#include "sweep/winding.h"

namespace kurvo::outline {

// The loops of a result, where strands meet in clear crossings alone (FindCuts), no loop that stays
// whole is as narrow as the tolerance, and all hangs together but for a few parts. Else false, and
// nothing has changed. Strands are those of the sources, and events those of all strands; `closed`
// and report are as GatherLoops has them. Cost: O(n) for each part, and O(k log k) for k crossings.
bool FindClearLoops(const Scene& scene, const Array<Strand>& strands, const Events& events,
                    const Array<int32_t>& rules, const FillRule& fill, double closed,
                    KurvoReport& report, ResultLoops& result);

}  // namespace kurvo::outline
