// Where a pen is down along a chain.
#pragma once

#include "base/function_ref.h"
#include "base/memory.h"
#include "strand/span.h"

namespace kurvo::outline {

// On, off, on ... by length along a chain, begun anew at its start. Lengths are the frame's.
struct DashPattern {
  Array<double> lengths;  // an even number, each >= 0, their sum > 0; empty: no dashes
  double phase = 0;       // how far into the pattern the chain starts
};

// Part of a chain: its spans, which lie in an arena, or where they are too short to go anywhere a
// point with a direction.
struct Dash {
  Array<Span> spans;
  Vec2 point, direction;
  int32_t curve;
  double parameter;  // of the point
};

// Calls `visit` for each dash along the spans, in order. Stretches shorter than `least` are left
// out. Throws Refusal with KURVO_ERR_TOO_LARGE when there are more than kMostDashes, or when a pen
// that reaches so far to both sides together makes them meet in more than kMostMeetings pairs.
inline constexpr double kMostDashes = 1 << 18;
inline constexpr double kMostMeetings = 1 << 20;
void ForEachDash(const Array<Span>& spans, const DashPattern& pattern, double least, double reach,
                 FunctionRef<void(const Dash&)> visit);

}  // namespace kurvo::outline
