// Regions put together, for calls that are made of others.
#pragma once

#include <kurvo_outline.h>

namespace kurvo::outline {

// What KurvoRegionSimplify does, into an empty `out`. Result: false, and nothing made, where that
// would be the region as it stands. Throws Refusal.
bool SimplifyUnlessSimple(const KurvoRegion& region, const KurvoOptions& options, double epsilon,
                          KurvoRegion& out, KurvoReport& report);

}  // namespace kurvo::outline
