// Runs of cubics as arcs.
#pragma once

#include "fit/cell_run.h"
#include "fit/pieces.h"

namespace kurvo::outline {

// Appends biarcs, and lines where the run is straight, that keep the deviation from the run and
// have its tangents where they join; the last one ends at `end` (caller's coordinates). Each arc is
// below half a turn.
void FitArcs(const CellRun& run, double deviation, Vec2 end, Pieces& pieces);

}  // namespace kurvo::outline
