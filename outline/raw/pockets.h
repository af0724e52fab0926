// Offsets by discs that do not get everywhere.
#pragma once

#include "fit/offset_fit.h"

namespace kurvo::outline {

// Appends strips of a loop of spans for round joins, of those only that may have a part in the
// result: what lies in pockets that no disc of the radius |distance| gets into is passed over by an
// arc of that radius, whose offset is a point. So corners deep within do not reach out, each of
// them across all the others. Cost: n log n for the usual loop of n spans.
void AppendStripsAlong(const Array<Span>& spans, double distance, double tol, StripList& list);

}  // namespace kurvo::outline
