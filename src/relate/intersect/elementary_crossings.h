// Common points of lines and arcs among themselves, by closed formulas.
#pragma once

#include "relate/intersect/crossing.h"

namespace kurvo {

// Each appends its points to `found`, extensions beyond the ends included; `bounded` only matters
// where the carriers coincide. Not for curves that have collapsed to a point.

Common CrossLines(const KurvoLine& a, const KurvoLine& b, Bounded bounded, GlobalVar& g,
                  Crossings& found);

// Ascending along the line.
Common CrossLineArc(const KurvoLine& line, const KurvoArc& arc, GlobalVar& g, Crossings& found);

Common CrossArcs(const KurvoArc& a, const KurvoArc& b, Bounded bounded, GlobalVar& g,
                 Crossings& found);

}  // namespace kurvo
