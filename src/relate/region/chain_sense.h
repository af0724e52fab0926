// The shape of a chain of curves as a whole.
#pragma once

#include "kurvo.h"

namespace kurvo {

// True when all curves of a chain, and any three vertices that follow each other, lie on one line,
// so that the chain has no sense. Records the bad-curve error for a record that cannot be right.
bool IsStraight(const Cvseq& seq, GlobalVar& g);

}  // namespace kurvo
