// The parts of curves that a loop of a result is made of.
#pragma once

#include <span>

#include "sweep/arrangement.h"
#include "sweep/scene.h"

namespace kurvo::outline {

// A stretch of one curve, or a line.
struct Part {
  int32_t operand, loop, curve;  // of the input; curve Source::kNone: a line
  double from, to;               // its parameters; from > to: it runs against the curve
  Vec2 start, end;               // in the caller's coordinates

  bool IsLine() const { return curve == Source::kNone; }
  bool IsReversed() const { return from > to; }
};

// The loops of a result.
struct ResultLoop {
  std::size_t first_part = 0, parts = 0;  // among those of all loops
  bool is_outer = false;
  int32_t parent = -1;  // of a hole: the loop around it, -1 where that was dropped
  bool is_dropped = false;
};
struct ResultLoops {
  Array<ResultLoop> loops;
  Array<Part> parts;

  std::span<const Part> PartsOf(const ResultLoop& loop) const {
    return {parts.data() + loop.first_part, loop.parts};
  }
};

struct LoopOfParts {
  Array<Part> parts;
  double moved = 0;  // length in the frame: the farthest that an end lies from its source
};

// Joins edges of one loop that go on along one curve, and begins where the input does: with the
// earliest curve of all. Gaps up to `closed` (caller's unit) that bridges fill go again: the ends
// beside them are moved together.
void CollectParts(const Scene& scene, const Arrangement& arrangement,
                  std::span<const int32_t> edges, double closed, LoopOfParts& loop);

// Appends those of a loop of whole sources, which stays as it is but for its sense.
void AppendWhole(const Scene& scene, std::span<const Source> sources, bool is_turned,
                 Array<Part>& parts);

}  // namespace kurvo::outline
