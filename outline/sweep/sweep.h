// The sweep: from beam to beam upwards, which strands stand where and what lies between them.
#pragma once

#include "base/options.h"
#include "sweep/arrangement.h"
#include "sweep/events.h"
#include "sweep/winding.h"

namespace kurvo::outline {

struct Counts {
  int32_t unresolved = 0;  // places where order was settled by bisection and could not be bettered
};

// The edges between inside and outside. Strands are put in order by where they are, and nothing
// else: events only say where to look. Where the order in a slab does not agree with where its
// strands are at the ends, an event was missed; it is found by bisection, added, and the sweep runs
// again. (Smith, Towards robust inexact geometric computation, 2009, ch. 7: a sweep that cannot
// contradict itself in approximate arithmetic.)
void RunSweep(Scene& scene, const Array<Strand>& strands, const Array<int32_t>& rules,
              const FillRule& fill, Progress& progress, Events& events, Arrangement& out,
              Counts& counts);

}  // namespace kurvo::outline
