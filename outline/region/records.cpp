// Regions as records: made, copied, grown, freed.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/memory.h"
#include "base/owned.h"
#include "base/refusal.h"
#include "region/check_region.h"
#include "strand/check.h"
#include "strand/joints.h"

namespace kurvo::outline {
namespace {

// Origins have one entry for each curve, loop after loop.
KurvoOrigin* CopyOfOrigins(const KurvoRegion& region) {
  if (!region.origins) return nullptr;
  std::size_t count = 0;
  for (int i = 0; i < region.count; ++i) count += static_cast<std::size_t>(region.loops[i].count);
  return Handed<KurvoOrigin>(Array<KurvoOrigin>(region.origins, region.origins + count)).Release();
}

// A copy of a checked loop in which lines close the joints wider than epsilon, the last one too.
OwnedChain Closed(const Cvseq& loop, double epsilon, double gap) {
  OwnedChain closed;
  Ends whole;
  if (!EndsOf(loop, whole)) return CopyOf(loop);
  const auto bridge = [&](Vec2 from, Vec2 to) {
    if (Meet(from, to, epsilon)) return;
    Require(Meet(from, to, gap), KURVO_ERR_CHAIN_ENDS);
    closed.Add(LineBetween(from, to));
  };
  Vec2 last = whole.start;
  for (int i = 0; i < loop.count; ++i) {
    Ends ends;
    const bool has_ends = EndsOf(loop.curves[i], ends);
    if (has_ends) bridge(last, ends.start);
    closed.Add(CopyOf(loop.curves[i]));
    if (has_ends) last = ends.end;
  }
  bridge(last, whole.start);
  return closed;
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
    OwnedChain closed = Closed(*loop, epsilon, std::max(gap, epsilon));

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
