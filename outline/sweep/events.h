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
};

// Two strands run together, within tol, between two heights.
struct Together {
  double low, high;
  int32_t a, b;
};

struct Events {
  Array<Crossing> crossings;
  Array<Together> together;
  int64_t near_pairs = 0;  // that have any of these, or two vertices at one point
  int32_t capped = 0;      // pairs that met the limit of work
};

// The events of all pairs whose boxes are near. Cost: O(n log n) and that of the pairs.
void FindEvents(const Scene& scene, const Array<Strand>& strands, Progress& progress,
                Events& events);

}  // namespace kurvo::outline
