// Offsets of regions.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "region/check_region.h"
#include "region/raw_result.h"
#include "strand/check.h"

using namespace kurvo::outline;

extern "C" int KurvoRegionOffset(const KurvoRegion* region, double distance,
                                 const KurvoOptions* options, KurvoRegion* out, KurvoReport* report,
                                 GlobalVar* g) noexcept {
  if (out && out != region) KurvoRegionInit(out);
  if (report) *report = {};
  return Answer(g, [&] {
    Require(out && out != region, KURVO_ERR_OPTION);
    Bounds box;
    CheckRegion(region, box);
    RequireFinite(distance);
    const double reach = std::fabs(distance);
    Require(kGreatestCoordinate >= reach, KURVO_ERR_NOT_FINITE);
    Composition work(options, box.LongerSide(), reach, *g);
    const PenOptions pen = ReadPenOptions(options);
    KeptRegion result;
    if (distance == 0) {
      work.Simplify(*region, work.settings().gap, 0, 1, result);
    } else {
      KeptRegion made_simple;
      const bool is_new =
          work.SimplifyUnlessSimple(*region, work.settings().gap, 0, 0.4, made_simple);
      const KurvoRegion& simple = is_new ? *made_simple : *region;
      const Frame frame = FrameFor(box, reach);
      RawRegion raw;
      Progress progress = work.ProgressOver(0.4, 0.5);
      const Made made = AppendOffsetLoops(simple, frame, frame.LengthInwards(distance),
                                          frame.LengthInwards(work.raw_tol()), pen, progress, raw);
      work.Finish(raw, made, frame, is_new ? &simple : nullptr, result);
    }
    *out = result.Release();
    if (report) *report = work.report();
  });
}
