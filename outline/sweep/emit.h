// The loops of a result as records of the kernel.
#pragma once

#include <kurvo_outline.h>

#include "base/owned.h"
#include "sweep/parts.h"

namespace kurvo::outline {

struct Emitted {
  OwnedRegion loops;
  Array<KurvoOrigin> origins;  // one a curve, loop after loop
  bool is_given = false;       // nothing was made, as it would be the operand to the bit
};

// Outer loops run counter-clockwise and holes clockwise; each outer loop is followed by its holes,
// and both stand in the order of the earliest curve that they come from. Whole curves are copied,
// parts cut; neighbours share their ends bit for bit. `keeps_given`: as Request has it.
Emitted Emit(const Scene& scene, const Array<Operand>& operands, const ResultLoops& result,
             bool keeps_given);

}  // namespace kurvo::outline
