// Where the bundles of a row pass a beam.
#pragma once

#include "sweep/beams.h"
#include "sweep/marks.h"
#include "sweep/slab.h"

namespace kurvo::outline {

// What a sweep stands on.
struct Stage {
  const Scene& scene;
  const Array<Strand>& strands;
  Beams& beams;
  Marks& marks;

  const Strand& strand(int32_t i) const { return strands[static_cast<std::size_t>(i)]; }
  double tol() const { return scene.tol; }
};

// Two bundles of a row that stand the wrong way round, and how far.
struct Misfit {
  double by = 0;
  std::size_t left = 0, right = 0;
};

// Gives every bundle of a row its place on beam k, which is the upper end of the row (`is_top`) or
// the lower one. A bundle may pass where its strands do between the beam's two heights; of places
// that do not fall from left to right, those nearest to what is preferred are taken: a vertex of
// the input, another one, a crossing, the middle. (Averages of neighbours would move verticals
// along long horizontals.) Result: what does not fit.
Misfit Attach(const Stage& stage, int32_t k, bool is_top, Row& row);

}  // namespace kurvo::outline
