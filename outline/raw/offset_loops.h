// Raw loops of offsets.
#pragma once

#include "base/options.h"
#include "raw/raw_loop.h"

namespace kurvo::outline {

// What a raw loop was made with.
struct Made {
  int capped = 0;         // pieces taken at a limit of work
  double off = 0;         // the farthest that a curve may be off, in the frame's unit
  std::size_t extra = 0;  // of the strips: as StripList counts it
};

// One raw loop for each loop of a region that is simple: outer loops counter-clockwise, holes
// clockwise. Both lengths are the frame's. Throws Refusal.
Made AppendOffsetLoops(const KurvoRegion& region, const Frame& frame, double distance, double tol,
                       const PenOptions& pen, Progress& progress, RawRegion& raw);

}  // namespace kurvo::outline
