// Curves that run alongside each other, compared as formulas.
#pragma once

#include "pair/graph.h"

namespace kurvo::outline {

enum class Verdict { kUnknown, kApart, kNear };

// Whether two graphs are near everywhere between two heights (their sides differ by at most twice
// the reach), or nowhere (by more than the reach): without flattening them, which near curves would
// need to the square root of the tolerance. Known for curves of one degree, for two arcs, and for
// an arc and another curve.
Verdict Alongside(const Graph& a, const Stretch& part_a, const Graph& b, const Stretch& part_b,
                  double reach);

}  // namespace kurvo::outline
