// Regions as records: made, copied, grown, freed.
#include <kurvo_outline.h>

#include <algorithm>
#include <utility>

#include "base/memory.h"
#include "base/owned.h"
#include "base/refusal.h"
#include "region/bridged.h"
#include "region/check_region.h"
#include "strand/check.h"

namespace kurvo::outline {
namespace {

// Origins have one entry for each curve, loop after loop.
KurvoOrigin* CopyOfOrigins(const KurvoRegion& region) {
  if (!region.origins) return nullptr;
  std::size_t count = 0;
  for (int i = 0; i < region.count; ++i) count += static_cast<std::size_t>(region.loops[i].count);
  return Handed<KurvoOrigin>(Array<KurvoOrigin>(region.origins, region.origins + count)).Release();
}

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" {

int32_t KurvoOutlineVersion() noexcept {
  return 10000 * KURVO_OUTLINE_MAJOR + 100 * KURVO_OUTLINE_MINOR + KURVO_OUTLINE_PATCH;
}

void KurvoRegionInit(KurvoRegion* region) noexcept {
  if (region) *region = {};
}

void KurvoRegionFree(KurvoRegion* region) noexcept {
  if (region) FreeRegion(*region);
}

int KurvoRegionCopy(const KurvoRegion* from, KurvoRegion* to, GlobalVar* g) noexcept {
  if (to && to != from) KurvoRegionInit(to);
  return Answer(g, [&] {
    Require(to && to != from, KURVO_ERR_OPTION);
    CheckRegionRecord(from);
    OwnedRegion copy;
    for (int i = 0; i < from->count; ++i) {
      Bounds unused;
      CheckChain(&from->loops[i], unused);
      copy.Add(CopyOf(from->loops[i]));
    }
    std::unique_ptr<KurvoOrigin, FreeBlock> origins(CopyOfOrigins(*from));
    *to = copy.Release(from->rule);
    to->origins = origins.release();
  });
}

int KurvoRegionAdd(KurvoRegion* region, const Cvseq* loop, double gap, GlobalVar* g) noexcept {
  return Answer(g, [&] {
    CheckRegionRecord(region);
    Require(gap >= 0, KURVO_ERR_TOLERANCE);
    Require(!(loop >= region->loops && loop < region->loops + region->count), KURVO_ERR_OPTION);
    Bounds box;
    CheckChain(loop, box);
    const double epsilon = GetEpsilon(g);
    OwnedChain closed = Bridged(*loop, epsilon, std::max(gap, epsilon), true);

    const auto count = static_cast<std::size_t>(region->count);
    auto* loops = static_cast<Cvseq*>(Allocate((count + 1) * sizeof(Cvseq)));
    std::unique_ptr<Cvseq, FreeBlock> owner(loops);
    CountOf(count + 1);
    loops[count] = closed.Release();
    std::copy(region->loops, region->loops + count, loops);
    KurvoFree(std::exchange(region->loops, owner.release()));
    KurvoFree(std::exchange(region->origins, nullptr));
    ++region->count;
  });
}

}  // extern "C"
