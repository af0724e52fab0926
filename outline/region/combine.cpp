// Regions put together, and cleaned of what crosses.
#include "region/combine.h"

#include <kurvo_outline.h>

#include <algorithm>
#include <span>

#include "base/refusal.h"
#include "region/check_region.h"
#include "sweep/combine.h"

namespace kurvo::outline {
namespace {

using Regions = std::span<const KurvoRegion* const>;

// Result: false where nothing was made, as `keeps_given` of a Request allows it.
bool Combine(int32_t operation, Regions regions, const KurvoOptions* options, KurvoRegion* out,
             KurvoReport& report, double epsilon, bool keeps_given) {
  Require(operation >= KURVO_UNION && operation <= KURVO_XOR, KURVO_ERR_OPTION);
  Bounds box;
  Array<Operand> operands;
  operands.reserve(regions.size());
  for (const KurvoRegion* region : regions) {
    CheckRegion(region, box);
    operands.push_back({region->loops, region->count, region->rule});
  }
  const Settings settings = ReadOptions(options, box.LongerSide(), epsilon);
  const bool has_origins = (settings.flags & KURVO_WITH_ORIGINS) != 0;
  Request request = {operation, operands, box, settings, epsilon, keeps_given};
  Emitted result = Combine(request, report);
  if (result.is_given) return false;
  std::unique_ptr<KurvoOrigin, FreeBlock> origins;
  if (has_origins && !result.origins.empty())
    origins.reset(Handed<KurvoOrigin>(result.origins).Release());
  *out = result.loops.Release(KURVO_FILL_NONZERO);
  out->origins = origins.release();
  return true;
}

// Refusals leave the outputs empty, but an output that is an input, which is refused untouched.
int Answer(int32_t operation, Regions regions, const KurvoOptions* options, KurvoRegion* out,
           KurvoReport* report, GlobalVar* g) noexcept {
  const bool is_input = std::find(regions.begin(), regions.end(), out) != regions.end();
  if (!is_input) KurvoRegionInit(out);
  if (report) *report = {};
  return outline::Answer(g, [&] {
    Require(out && !is_input, KURVO_ERR_OPTION);
    KurvoReport made = {};
    Combine(operation, regions, options, out, made, GetEpsilon(g), false);
    if (report) *report = made;
  });
}

}  // namespace

bool SimplifyUnlessSimple(const KurvoRegion& region, const KurvoOptions& options, double epsilon,
                          KurvoRegion& out, KurvoReport& report) {
  const KurvoRegion* const regions[] = {&region};
  return Combine(KURVO_UNION, regions, &options, &out, report, epsilon, true);
}

}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" {

int KurvoRegionCombine(int32_t operation, const KurvoRegion* a, const KurvoRegion* b,
                       const KurvoOptions* options, KurvoRegion* out, KurvoReport* report,
                       GlobalVar* g) noexcept {
  const KurvoRegion* const regions[] = {a, b};
  return Answer(operation, regions, options, out, report, g);
}

int KurvoRegionCombineMany(int32_t operation, const KurvoRegion* const* regions, int32_t n,
                           const KurvoOptions* options, KurvoRegion* out, KurvoReport* report,
                           GlobalVar* g) noexcept {
  const bool is_sound = n == 0 || (n > 0 && regions);
  const Regions all(regions, is_sound ? static_cast<std::size_t>(n) : 0);
  return Answer(is_sound ? operation : -1, all, options, out, report, g);
}

int KurvoRegionSimplify(const KurvoRegion* region, const KurvoOptions* options, KurvoRegion* out,
                        KurvoReport* report, GlobalVar* g) noexcept {
  return Answer(KURVO_UNION, {&region, 1}, options, out, report, g);
}

}  // extern "C"
