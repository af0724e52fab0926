// Offsets of regions.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "region/check_region.h"
#include "region/raw_result.h"
#include "region/strip_union.h"
#include "strand/check.h"

namespace kurvo::outline {
namespace {

// Grows or shrinks a simple region that is rough.
void JoinStrips(const KurvoRegion& simple, double distance, const Frame& frame,
                const PenOptions& options, const GlobalVar& g, Composition& work,
                KeptRegion& result) {
  const double reach = frame.LengthInwards(std::fabs(distance));
  const PenOptions shape = {options.join, KURVO_CAP_BUTT, options.miter_limit, 0, 0, nullptr};
  const bool grows = distance > 0;
  const Pen pen = {grows ? 0 : reach,
                   grows ? reach : 0,
                   shape,
                   shape.cap,
                   shape.cap,
                   {},
                   frame.LengthInwards(work.raw_tol())};
  StripUnion strips(work, frame, pen, g);
  for (int i = 0; i < simple.count; ++i) {
    const double step = 0.5 / simple.count;
    Progress progress = work.ProgressOver(0.4 + i * step, 0.4 + (i + 1) * step);
    strips.Add(simple.loops[i], i, {GetEpsilon(&g), 0, true}, true, progress);
  }
  KeptRegion all;
  strips.Finish(all);
  work.Join(simple, *all, grows, result);
}

}  // namespace
}  // namespace kurvo::outline

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
      const KurvoRegion* const source = is_new ? &simple : nullptr;
      const Frame frame = FrameFor(box, reach);
      if (pen.join != KURVO_JOIN_ROUND && IsRough(simple, distance)) {
        JoinStrips(simple, distance, frame, pen, *g, work, result);
        if (source) NameThrough(*result.Get(), {&source, 1});
      } else {
        RawRegion raw;
        Progress progress = work.ProgressOver(0.4, 0.5);
        const Made made =
            AppendOffsetLoops(simple, frame, frame.LengthInwards(distance),
                              frame.LengthInwards(work.raw_tol()), pen, progress, raw);
        work.Finish(raw, made, frame, source, result);
      }
    }
    *out = result.Release();
    if (report) *report = work.report();
  });
}
