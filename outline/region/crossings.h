// How a span goes around a point.
#pragma once

#include <optional>

#include "base/vec2.h"
#include "strand/span.h"

namespace kurvo::outline {

// How often a span crosses the ray from q in the direction of x upwards, less how often downwards;
// nothing when q is no farther than `band` from it. A point counts as above the ray when its y is
// larger than that of q: so many crossings of a loop are counted as there are, whatever rounding
// does to its curves, if all that meet at a vertex agree on that of the vertex (`start_above`,
// `end_above`).
std::optional<int> CrossingsOf(const Span& span, Vec2 q, double band, bool start_above,
                               bool end_above);

}  // namespace kurvo::outline
