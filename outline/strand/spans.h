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

// All spans of a chain, kept. `spans` ascends by curve and parameter.
struct SpanList {
  Frame frame;
  Array<Span> spans;
  Arena arena;
};

// Checks the chain, puts a frame around it and collects its spans. Throws Refusal.
void CollectSpans(const Cvseq* chain, SpanList& list);

// The frame of a chain that is checked here. Throws Refusal.
Frame FrameOf(const Cvseq* chain);

}  // namespace kurvo::outline
