// The spans of curves and chains.
#pragma once

#include <kurvo.h>

#include "base/function_ref.h"
#include "base/memory.h"
#include "strand/frame.h"
#include "strand/span.h"

namespace kurvo::outline {

using SpanVisitor = FunctionRef<void(const Span&)>;

// Calls `visit` for each span of a checked curve, in order; its arrays live until the next one.
// Composites are walked to their ends, splines cut at their knots, arcs whose ends are the same or
// nearly so are full circles (SweepBetween). Throws Refusal: KURVO_ERR_WEIGHT for a rational curve
// that is not finite. Cost: O(degree^2) a span.
void ForEachSpan(const Curve& curve, int32_t index, const Frame& frame, SpanVisitor visit);
void ForEachSpan(const Cvseq& chain, const Frame& frame, SpanVisitor visit);

// What one span is made from, or a few: looked at before the work of making them.
struct Stretch {
  double from, to;     // parameters of the curve of the chain
  const Curve& piece;  // of a composite; else that curve
  int first, count;    // which of its control points, of a spline

  // A box that holds the stretch, in the caller's coordinates: the whole plane where weights of
  // both signs let it leave its polygon, the circle of an arc.
  Bounds Box() const;
};
using StretchFilter = FunctionRef<bool(const Stretch&)>;

// The same for those stretches alone that `wanted` says yes to. A span of a spline whose neighbour
// was left out may start a rounding beside where that ends.
void ForEachSpan(const Curve& curve, int32_t index, const Frame& frame, StretchFilter wanted,
                 SpanVisitor visit);

// All spans of a chain, kept. `spans` ascends by curve and parameter.
struct SpanList {
  Frame frame;
  Array<Span> spans;
  Arena arena;
};

// Checks the chain, puts a frame around it and collects its spans. Throws Refusal.
void CollectSpans(const Cvseq* chain, SpanList& list);

// HullOf each of them.
Array<Bounds> HullsOf(const Array<Span>& spans);

// The frame of a chain that is checked here. Throws Refusal.
Frame FrameOf(const Cvseq* chain);

}  // namespace kurvo::outline
