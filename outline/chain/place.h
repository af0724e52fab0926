// Places on a chain.
#pragma once

#include <kurvo_outline.h>

#include "base/memory.h"
#include "strand/frame.h"
#include "strand/span.h"

namespace kurvo::outline {

// The place at u of a span, in the caller's coordinates.
KurvoPlace PlaceAt(const Frame& frame, const Span& span, double u);

// A span of a chain, and a parameter on it.
struct OnSpan {
  std::size_t span;
  double u;
};

// Where a place of the caller lies among the spans of its chain: on the later of two that meet
// there. Only its index and t are read. A t beyond the domain of its curve by no more than
// kPlaceSlack of it is at the end. Throws Refusal: KURVO_ERR_RANGE for others and for an index of
// no curve, KURVO_ERR_NOT_FINITE.
OnSpan Find(const Array<Span>& spans, const KurvoPlace& place);
inline constexpr double kPlaceSlack = 1e-9;

}  // namespace kurvo::outline
