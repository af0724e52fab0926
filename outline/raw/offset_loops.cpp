#include "raw/offset_loops.h"

#include <algorithm>

#include "raw/side.h"
#include "strand/spans.h"

namespace kurvo::outline {

Made AppendOffsetLoops(const KurvoRegion& region, const Frame& frame, double distance, double tol,
                       const PenOptions& pen, Progress& progress, RawRegion& raw) {
  const Corners corners = {pen.join, pen.miter_limit, tol};
  Made made;
  StripList list;
  for (int i = 0; i < region.count; ++i) {
    progress.Tell(static_cast<double>(i) / region.count);
    list.strips.clear();
    list.pieces.clear();
    ForEachSpan(region.loops[i], frame,
                [&](const Span& span) { AppendStrips(span, distance, tol, list); });
    if (list.strips.empty()) continue;
    RawLoop loop(frame, region.loops[i], i);
    Side(list, distance, true, corners).AppendTo(loop);
    loop.Close(raw);
  }
  made.capped = list.capped;
  made.off = list.off;
  return made;
}

}  // namespace kurvo::outline
