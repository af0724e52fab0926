// Functions of the interface that are not there yet: they refuse, and empty what they would make.
#include <kurvo_outline.h>

#include "base/refusal.h"

namespace {

int Refuse(GlobalVar* g) noexcept {
  return kurvo::outline::Answer(g, [] { throw kurvo::outline::Refusal{KURVO_ERR_OPTION}; });
}

int Refuse(KurvoRegion* out, KurvoReport* report, GlobalVar* g) noexcept {
  KurvoRegionInit(out);
  if (report) *report = {};
  return Refuse(g);
}

}  // namespace

extern "C" {

int KurvoRegionCombine(int32_t, const KurvoRegion*, const KurvoRegion*, const KurvoOptions*,
                       KurvoRegion* out, KurvoReport* report, GlobalVar* g) noexcept {
  return Refuse(out, report, g);
}

int KurvoRegionCombineMany(int32_t, const KurvoRegion* const*, int32_t, const KurvoOptions*,
                           KurvoRegion* out, KurvoReport* report, GlobalVar* g) noexcept {
  return Refuse(out, report, g);
}

int KurvoRegionSimplify(const KurvoRegion*, const KurvoOptions*, KurvoRegion* out,
                        KurvoReport* report, GlobalVar* g) noexcept {
  return Refuse(out, report, g);
}

int KurvoRegionOffset(const KurvoRegion*, double, const KurvoOptions*, KurvoRegion* out,
                      KurvoReport* report, GlobalVar* g) noexcept {
  return Refuse(out, report, g);
}

int KurvoRegionClip(const KurvoRegion*, const Cvseq*, int32_t, const KurvoOptions*,
                    KurvoRegion* inside, KurvoRegion* outside, KurvoReport* report,
                    GlobalVar* g) noexcept {
  KurvoRegionInit(inside);
  return Refuse(outside, report, g);
}

int KurvoChainStroke(const Cvseq*, int32_t, double, double, const KurvoOptions*, KurvoRegion* out,
                     KurvoReport* report, GlobalVar* g) noexcept {
  return Refuse(out, report, g);
}

int KurvoRegionNesting(const KurvoRegion*, int32_t*, GlobalVar* g) noexcept { return Refuse(g); }

int KurvoRegionMoments(const KurvoRegion*, KurvoMoments*, GlobalVar* g) noexcept {
  return Refuse(g);
}

}  // extern "C"
