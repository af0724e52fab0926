// Functions of the interface that are not there yet: they refuse, and empty what they would make,
// unless that is one of their inputs.
#include <kurvo_outline.h>

#include <algorithm>
#include <span>

#include "base/refusal.h"

namespace {

int Refuse(GlobalVar* g) noexcept {
  return kurvo::outline::Answer(g, [] { throw kurvo::outline::Refusal{KURVO_ERR_OPTION}; });
}

using Inputs = std::span<const KurvoRegion* const>;

void Empty(KurvoRegion* out, Inputs inputs) noexcept {
  if (std::find(inputs.begin(), inputs.end(), out) == inputs.end()) KurvoRegionInit(out);
}

int Refuse(Inputs inputs, KurvoRegion* out, KurvoReport* report, GlobalVar* g) noexcept {
  Empty(out, inputs);
  if (report) *report = {};
  return Refuse(g);
}

}  // namespace

extern "C" {

int KurvoRegionClip(const KurvoRegion* region, const Cvseq*, int32_t, const KurvoOptions*,
                    KurvoRegion* inside, KurvoRegion* outside, KurvoReport* report,
                    GlobalVar* g) noexcept {
  Empty(inside, {&region, 1});
  return Refuse({&region, 1}, outside, report, g);
}

}  // extern "C"
