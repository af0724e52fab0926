// Chains whose wide joints are closed by lines.
#pragma once

#include "base/memory.h"
#include "base/owned.h"

namespace kurvo::outline {

// How many joints of a checked chain are wider than epsilon, of a loop the last one too. Throws
// KURVO_ERR_CHAIN_ENDS for one that is wider than `gap`.
int32_t WideJoints(const Cvseq& chain, double epsilon, double gap, bool is_loop);

// A copy of a checked chain in which lines close the joints wider than epsilon, of a loop the last
// one too. `sources`: of each curve of the copy which one of the chain it is, of those lines -1.
// Throws KURVO_ERR_CHAIN_ENDS for a joint that is wider than `gap`.
OwnedChain Bridged(const Cvseq& chain, double epsilon, double gap, bool is_loop,
                   Array<int32_t>* sources = nullptr);

}  // namespace kurvo::outline
