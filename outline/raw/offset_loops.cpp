#include "raw/offset_loops.h"

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "raw/pockets.h"
#include "raw/side.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

// The spans of one loop.
struct LoopSpans {
  Array<Span> spans;
  Arena arena;
  Bounds box;  // of their hulls
};

void Collect(const Cvseq& chain, const Frame& frame, LoopSpans& loop) {
  loop.spans.clear();
  loop.arena.Clear();
  loop.box = Bounds();
  loop.spans.reserve(static_cast<std::size_t>(chain.count));
  ForEachSpan(chain, frame, [&](const Span& span) {
    if (!(HullOf(span).LongerSide() > 0)) return;
    loop.spans.push_back(Kept(span, loop.arena));
    loop.box.Join(HullOf(span));
  });
}

// Whether a loop grows, or shrinks, to nothing: a hole by this distance outwards, an outer loop
// inwards. No point within is farther from it than half the shorter side of its box.
bool IsUsedUp(const Bounds& box, double distance) {
  const double shorter = std::min(box.high.x - box.low.x, box.high.y - box.low.y);
  return 2 * distance > shorter;
}

double AreaOf(const Cvseq& chain) {
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  KurvoMoments moments;
  Require(KurvoChainMoments(&chain, &moments, &g) != 0, KURVO_ERR_CURVE);
  return moments.area;
}

}  // namespace

// With round joins all is known of what lies within the distance of a loop: holes that it fills and
// outer loops that it uses up, with their holes, which come after them, need no sweep.
Made AppendOffsetLoops(const KurvoRegion& region, const Frame& frame, double distance, double tol,
                       const PenOptions& pen, Progress& progress, RawRegion& raw) {
  const bool is_round = pen.join == KURVO_JOIN_ROUND;
  const Corners corners = {pen.join, pen.miter_limit, tol, true, is_round};
  StripList list;
  LoopSpans loop;
  bool skips_holes = false;
  for (int i = 0; i < region.count; ++i) {
    const Cvseq& chain = region.loops[i];
    progress.Tell(static_cast<double>(i) / region.count);
    Collect(chain, frame, loop);
    if (loop.spans.empty()) continue;
    const bool is_small = is_round && IsUsedUp(loop.box, std::fabs(distance));
    if (is_small || skips_holes) {
      const double area = AreaOf(chain);
      if (area > 0) skips_holes = is_small && distance < 0;
      if (skips_holes || (area < 0 && is_small && distance > 0)) continue;
    }
    list.strips.clear();
    list.pieces.clear();
    list.strips.reserve(loop.spans.size());
    list.pieces.reserve(loop.spans.size());
    if (is_round) {
      AppendStripsAlong(loop.spans, distance, tol, list);
    } else {
      for (const Span& span : loop.spans) AppendStrips(span, distance, tol, list);
    }
    if (list.strips.empty()) continue;
    RawLoop out(frame, chain, i);
    constexpr std::size_t kUsualCurves = 2;  // of a strip
    out.Reserve(kUsualCurves * list.strips.size());
    Side(list, distance, true, corners).AppendTo(out);
    out.Close(raw);
  }
  return {list.capped, list.off, list.extra};
}

}  // namespace kurvo::outline
