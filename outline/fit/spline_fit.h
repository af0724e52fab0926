// Runs of cubics as fewer quadratics or cubics.
#pragma once

#include "base/function_ref.h"
#include "fit/cell_run.h"
#include "fit/pieces.h"

namespace kurvo::outline {

// Calls take(Bezier points, parameter of the run where they end) for cubics that keep the deviation
// from the run and have its tangents where they join.
void FitCubics(const CellRun& run, double deviation, FunctionRef<void(const Vec2*, double)> take);

// Appends Bezier curves of degree 2 or 3 that keep the deviation from the run and have its tangents
// where they join; the last one ends at `end` (caller's coordinates).
void FitBeziers(const CellRun& run, int degree, double deviation, Vec2 end, Pieces& pieces);

// Equal parts of an arc as quadratics.
void AddArcAsQuadratics(const Span& arc, double deviation, Vec2 end, Pieces& pieces);

}  // namespace kurvo::outline
