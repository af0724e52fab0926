// The loops of a result as records of the kernel.
#pragma once

#include <kurvo_outline.h>

#include "base/owned.h"
#include "sweep/arrangement.h"
#include "sweep/scene.h"

namespace kurvo::outline {

struct Emitted {
  OwnedRegion loops;
  Array<KurvoOrigin> origins;  // one a curve, loop after loop
};

// Outer loops run counter-clockwise and holes clockwise; each outer loop is followed by its holes,
// and both stand in the order of the earliest curve that they come from. Whole curves are copied,
// parts cut; neighbours share their ends bit for bit. Loops no wider than tol are dropped and
// counted in the report, which also tells how far ends were moved. Gaps up to `closed` (caller's
// unit) are closed by moving ends together.
Emitted Emit(const Scene& scene, const Array<Operand>& operands, const Arrangement& arrangement,
             double closed, KurvoReport& report);

}  // namespace kurvo::outline
