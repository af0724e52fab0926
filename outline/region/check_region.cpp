#include "region/check_region.h"

#include "base/refusal.h"
#include "strand/check.h"
#include "strand/glance.h"

namespace kurvo::outline {

void CheckRegionRecord(const KurvoRegion* region) {
  Require(region && region->count >= 0 && (region->count == 0 || region->loops), KURVO_ERR_OPTION);
  Require(region->rule >= KURVO_FILL_NONZERO && region->rule <= KURVO_FILL_NEGATIVE,
          KURVO_ERR_OPTION);
}

void CheckRegion(const KurvoRegion* region, Bounds& box) {
  CheckRegionRecord(region);
  for (int i = 0; i < region->count; ++i) CheckChain(&region->loops[i], box);
}

Bounds CheckLoops(const KurvoRegion& region, double epsilon) {
  Glances glances(epsilon);
  for (const Cvseq& loop : LoopsOf(region)) {
    RequireChain(&loop);
    glances.ForEach(loop, [](int, const Glance&) {});
    Require(glances.IsClosed(), KURVO_ERR_CHAIN_ENDS);
  }
  return glances.box();
}

}  // namespace kurvo::outline
