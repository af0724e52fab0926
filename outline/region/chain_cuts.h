// Where chains may go from the inside of a region to the outside.
#pragma once

#include "base/memory.h"
#include "base/options.h"
#include "chain/contact.h"
#include "chain/crossing.h"

namespace kurvo::outline {

// Of one chain. A position is named on the later curve at a joint.
struct ChainCuts {
  Array<Position> at;        // in order, farther apart than one place is wide, not at open ends
  Array<Passage> alongside;  // stretches that run along loops
};

// What a search met besides.
struct SearchLimit {
  bool is_used_up = false;  // the limit of work: some places may be missing
};

// The cuts of all chains of a track where they meet the loops of another: the places where they
// cross, touch or run alongside from and to, and the joints wider than the tolerance.
Array<ChainCuts> CutsOf(const Track& chains, int32_t count, const Track& loops,
                        const Nearness& nearness, Progress& progress, SearchLimit& limit);

}  // namespace kurvo::outline
