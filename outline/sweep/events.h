// Where two strands meet: advice for the sweep on where to look. Order itself is told by the
// strands alone.
#pragma once

#include "base/memory.h"
#include "base/options.h"
#include "sweep/strand.h"

namespace kurvo::outline {

// Two strands cross or touch.
struct Crossing {
  double height, side;
  int32_t a, b;
  int32_t sense = 0;  // going up b crosses to the right of a (1) or to the left (-1); 0: none
};

// Two strands run together, within tol, between two heights.
struct Together {
  double low, high;
  int32_t a, b;
};

// A level strand, of which no other events are told, and a strand beside it. Of two level ones each
// is the other's.
struct LevelPair {
  int32_t level, other;
};

struct Events {
  Array<Crossing> crossings;
  Array<Together> together;
  Array<LevelPair> beside_level;
  int64_t unclear = 0;  // places where strands come near each other and do not cross
  int32_t capped = 0;   // pairs that met the limit of work

  // Whether strands cross where they come near each other but at vertices where they join.
  bool AreClear() const { return unclear == 0 && capped == 0 && together.empty(); }
};

// The events of all pairs whose boxes are near. Cost: O(n log n) and that of the pairs.
void FindEvents(const Scene& scene, const Array<Strand>& strands, Progress& progress,
                Events& events);

}  // namespace kurvo::outline
