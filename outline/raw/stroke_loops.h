// Raw loops of strokes.
#pragma once

#include "base/options.h"
#include "raw/dashes.h"
#include "raw/offset_loops.h"
#include "raw/raw_loop.h"

namespace kurvo::outline {

// What a pen covers. Lengths are the frame's.
struct Pen {
  double left, right;  // how far it reaches
  PenOptions shape;
  int32_t start_cap, end_cap;  // KURVO_CAP_*, in place of those of the shape
  DashPattern dashes;
  double tol;
  std::size_t extra = 0;  // pieces that were made before on the way, as StripList counts them
};

// Appends the raw loops of a checked chain, the one with this index: of an open one, and of each
// dash, a loop with caps; of a closed one a loop on either side; of a point a dot. Gaps between
// curves wider than `epsilon` (length in the caller's unit, as `gap` is) are bridged and counted;
// throws Refusal with KURVO_ERR_CHAIN_ENDS for those wider than `gap`.
struct StrokeJoints {
  double epsilon, gap;
  bool is_closed;
};
Made AppendStrokeLoops(const Cvseq& chain, int32_t index, const Frame& frame,
                       const StrokeJoints& joints, const Pen& pen, int32_t& gaps, RawRegion& raw);

}  // namespace kurvo::outline
