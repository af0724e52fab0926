// What a pen covers.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "raw/stroke_loops.h"
#include "region/raw_result.h"
#include "strand/check.h"
#include "strand/joints.h"

namespace kurvo::outline {
namespace {

void CheckWidth(double width) {
  RequireFinite(width);
  Require(width >= 0, KURVO_ERR_RANGE);
  Require(kGreatestCoordinate >= width, KURVO_ERR_NOT_FINITE);
}

DashPattern PatternOf(const PenOptions& options, const Frame& frame) {
  DashPattern pattern;
  const int rounds = options.dash_count % 2 + 1;  // an odd count is taken twice
  for (int round = 0; round < rounds; ++round)
    for (int i = 0; i < options.dash_count; ++i)
      pattern.lengths.push_back(frame.LengthInwards(options.dashes[i]));
  pattern.phase = frame.LengthInwards(options.phase);
  return pattern;
}

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoChainStroke(const Cvseq* chains, int32_t n, double left, double right,
                                const KurvoOptions* options, KurvoRegion* out, KurvoReport* report,
                                GlobalVar* g) noexcept {
  KurvoRegionInit(out);
  if (report) *report = {};
  return Answer(g, [&] {
    Require(out && n >= 0 && (chains || n == 0), KURVO_ERR_OPTION);
    CheckWidth(left);
    CheckWidth(right);
    Bounds box;
    Array<double> sizes;
    for (int i = 0; i < n; ++i) {
      Bounds of_chain;
      CheckChain(&chains[i], of_chain);
      sizes.push_back(of_chain.LongerSide());
      if (!of_chain.IsEmpty()) box.Join(of_chain);
    }
    const double reach = std::max(left, right);
    Composition work(options, box.LongerSide(), reach, *g);
    const Frame frame = FrameFor(box, reach);
    const PenOptions shape = ReadPenOptions(options);
    const Pen pen = {frame.LengthInwards(left), frame.LengthInwards(right), shape,
                     PatternOf(shape, frame), frame.LengthInwards(work.raw_tol())};
    RawRegion raw;
    Made made;
    Progress progress = work.ProgressOver(0, 0.5);
    progress.Tell(0);
    int32_t gaps = 0;
    const double epsilon = GetEpsilon(g);
    for (int i = 0; i < n && reach > 0; ++i) {
      progress.Tell(static_cast<double>(i) / n);
      const bool is_closed = IsClosed(chains[i], sizes[static_cast<std::size_t>(i)], epsilon);
      const Made more = AppendStrokeLoops(
          chains[i], i, frame, {epsilon, work.settings().gap, is_closed}, pen, gaps, raw);
      made.capped += more.capped;
      made.off = std::max(made.off, more.off);
    }
    KeptRegion result;
    work.CountGaps(gaps);
    work.Finish(raw, made, frame, nullptr, result);
    *out = result.Release();
    if (report) *report = work.report();
  });
}
