// From the edges of an arrangement to loops.
#pragma once

#include <kurvo_outline.h>

#include "sweep/parts.h"

namespace kurvo::outline {

// Loops no wider than tol are dropped and counted in the report, which also tells how far ends were
// moved. Gaps up to `closed` (caller's unit) are closed by moving ends together.
void GatherLoops(const Scene& scene, const Arrangement& arrangement, double closed,
                 KurvoReport& report, ResultLoops& result);

}  // namespace kurvo::outline
