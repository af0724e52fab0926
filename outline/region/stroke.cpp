// What a pen covers.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "raw/stroke_loops.h"
#include "region/strip_union.h"
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

// Chains, what a pen does along them, and the call that this is for.
struct Strokes {
  std::span<const Cvseq> chains;
  const Array<double>& sizes;  // of their boxes
  const Frame& frame;
  const Pen& pen;
  double epsilon;
  Composition& work;

  StrokeJoints JointsOf(std::size_t i) const {
    return {epsilon, work.settings().gap, IsClosed(chains[i], sizes[i], epsilon)};
  }
  double Done(std::size_t i) const {
    return static_cast<double>(i) / static_cast<double>(chains.size());
  }
};

void AppendPlain(const Strokes& strokes, KeptRegion& result) {
  RawRegion raw;
  Made made;
  Progress progress = strokes.work.ProgressOver(0, 0.5);
  progress.Tell(0);
  int32_t gaps = 0;
  for (std::size_t i = 0; i < strokes.chains.size(); ++i) {
    progress.Tell(strokes.Done(i));
    const Made more = AppendStrokeLoops(strokes.chains[i], static_cast<int32_t>(i), strokes.frame,
                                        strokes.JointsOf(i), strokes.pen, gaps, raw);
    made.capped += more.capped;
    made.off = std::max(made.off, more.off);
  }
  strokes.work.CountGaps(gaps);
  strokes.work.Finish(raw, made, strokes.frame, nullptr, result);
}

void AppendRough(const Strokes& strokes, const Array<uint8_t>& is_rough, const GlobalVar& g,
                 KeptRegion& result) {
  StripUnion strips(strokes.work, strokes.frame, strokes.pen, g);
  for (std::size_t i = 0; i < strokes.chains.size(); ++i) {
    Progress progress = strokes.work.ProgressOver(strokes.Done(i), strokes.Done(i + 1));
    strips.Add(strokes.chains[i], static_cast<int32_t>(i), strokes.JointsOf(i), is_rough[i] != 0,
               progress);
  }
  strokes.work.CountGaps(strips.gaps());
  strips.Finish(result);
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
    const Pen pen = {
        frame.LengthInwards(left), frame.LengthInwards(right),         shape, shape.cap, shape.cap,
        PatternOf(shape, frame),   frame.LengthInwards(work.raw_tol())};
    const std::size_t count = reach > 0 ? static_cast<std::size_t>(n) : 0;
    const Strokes strokes = {{chains, count}, sizes, frame, pen, GetEpsilon(g), work};
    Array<uint8_t> is_rough;
    for (std::size_t i = 0; i < count && shape.dash_count == 0; ++i)
      is_rough.push_back(IsRough(chains[i], reach));
    KeptRegion result;
    if (std::find(is_rough.begin(), is_rough.end(), 1) != is_rough.end())
      AppendRough(strokes, is_rough, *g, result);
    else
      AppendPlain(strokes, result);
    *out = result.Release();
    if (report) *report = work.report();
  });
}
