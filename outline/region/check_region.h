// Regions and options of the caller, looked at before anything reads them.
#pragma once

#include <kurvo_outline.h>

#include <cstddef>
#include <span>

#include "base/bounds.h"

namespace kurvo::outline {

// Throws Refusal: KURVO_ERR_OPTION for a null region, a negative count, loops without an array and
// an unknown rule.
void CheckRegionRecord(const KurvoRegion* region);

// The same, and every curve of it (CheckChain). Adds all control points to the box.
void CheckRegion(const KurvoRegion* region, Bounds& box);

// Every curve of a region whose record is checked, its joints and that every loop closes, to
// epsilon. Result: the box of all control points. Throws KURVO_ERR_CHAIN_ENDS besides.
Bounds CheckLoops(const KurvoRegion& region, double epsilon);

// The loops of a checked record.
inline std::span<const Cvseq> LoopsOf(const KurvoRegion& region) {
  return {region.loops, static_cast<std::size_t>(region.count)};
}

}  // namespace kurvo::outline
