// The loops of an arrangement.
#pragma once

#include <span>

#include "base/function_ref.h"
#include "sweep/arrangement.h"

namespace kurvo::outline {

// Calls visit(edges) for each loop, in the order in which edges follow each other; each edge is in
// one loop, and no loop comes to a corner twice. At a corner an edge that arrives goes on by the
// next ray clockwise: of all ways that keeps the inside together.
void ForEachLoop(const Arrangement& arrangement, FunctionRef<void(std::span<const int32_t>)> visit);

}  // namespace kurvo::outline
