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

struct LoopOfParts {
  Array<Part> parts;
  double moved = 0;  // length in the frame: the farthest that an end lies from its source
};

// Joins edges of one loop that go on along one curve, and begins where the input does: with the
// earliest curve of all. Gaps up to `closed` (caller's unit) that bridges fill go again: the ends
// beside them are moved together.
void CollectParts(const Scene& scene, const Arrangement& arrangement,
                  std::span<const int32_t> edges, double closed, LoopOfParts& loop);

// Whether the loop is no wider than tol: its area is at most tol times its length. `area` is in the
// frame.
bool IsSliver(const Scene& scene, const Arrangement& arrangement, std::span<const int32_t> edges,
              double& area);

}  // namespace kurvo::outline
