#include "region/check_region.h"

#include "base/refusal.h"
#include "strand/check.h"

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

}  // namespace kurvo::outline
