// Regions and options of the caller, looked at before anything reads them.
#pragma once

#include <kurvo_outline.h>

#include "base/bounds.h"

namespace kurvo::outline {

// Throws Refusal: KURVO_ERR_OPTION for a null region, a negative count, loops without an array and
// an unknown rule.
void CheckRegionRecord(const KurvoRegion* region);

// The same, and every curve of it (CheckChain). Adds all control points to the box.
void CheckRegion(const KurvoRegion* region, Bounds& box);

}  // namespace kurvo::outline
