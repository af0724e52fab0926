// Length, area and moments of a region.
#include "chain/moments.h"

#include "base/refusal.h"
#include "region/check_region.h"

using namespace kurvo::outline;

extern "C" int KurvoRegionMoments(const KurvoRegion* region, KurvoMoments* moments,
                                  GlobalVar* g) noexcept {
  if (moments) *moments = {};
  return Answer(g, [&] {
    Require(moments, KURVO_ERR_OPTION);
    CheckRegionRecord(region);
    const Frame frame(CheckLoops(*region, GetEpsilon(g)));
    *moments = MomentsOf(LoopsOf(*region), frame);
  });
}
