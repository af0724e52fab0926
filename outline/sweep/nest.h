// Which loops are holes, and in which others these lie.
#pragma once

#include "sweep/parts.h"
#include "sweep/strand.h"

namespace kurvo::outline {

// Part of a strand that bounds a result.
struct NestSide {
  int32_t strand, loop;
  int32_t up;        // 1: the inside lies to the left, -1: to the right, 0: of a level one
  double low, high;  // heights
};

// Tells outer loops from holes, and the innermost outer loop around each hole, by a ray to the left
// from half-way up the highest side of each loop. Loops may touch in corners and do not cross.
// False where a loop has no height or a hole lies in nothing, or where it would cost too much: it
// is O(n) for n sides, and some looks for each hole at those as high as it.
bool Nest(const Array<Strand>& strands, const Array<NestSide>& sides, Array<ResultLoop>& loops);

}  // namespace kurvo::outline
