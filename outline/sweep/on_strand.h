// Places on strands.
#pragma once

#include "sweep/strand.h"

namespace kurvo::outline {

// The parameter on its source of a point beside a strand: that of a vertex where it is one, else
// that of the point nearest among heights within tol of it.
double SourceParameter(const Strand& strand, double tol, int32_t vertex, Vec2 point);

}  // namespace kurvo::outline
