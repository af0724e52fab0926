// Common points of two curves, by their kinds.
#pragma once

#include "relate/intersect/crossing.h"

namespace kurvo {

// Each appends its points to `found`, not for curves that have collapsed to a point.

// Lines and arcs among themselves, extensions beyond the ends included. `bounded` only matters
// where the carriers coincide.

Common CrossLines(const KurvoLine& a, const KurvoLine& b, Bounded bounded, GlobalVar& g,
                  Crossings& found);

// Ascending along the line.
Common CrossLineArc(const KurvoLine& line, const KurvoArc& arc, GlobalVar& g, Crossings& found);

Common CrossArcs(const KurvoArc& a, const KurvoArc& b, Bounded bounded, GlobalVar& g,
                 Crossings& found);

// A line or an arc, its extension included, with a free-form curve, that is one of any other type;
// of a composite the Bezier and rational Bezier pieces take part and no others. kStretch when the
// curves run together along a stretch. Throw std::bad_alloc.
Common CrossLineFreeForm(const KurvoLine& line, const Curve& free_form, bool line_bounded,
                         GlobalVar& g, Crossings& found);
Common CrossArcFreeForm(const KurvoArc& arc, const Curve& free_form, bool arc_bounded, GlobalVar& g,
                        Crossings& found);

// Two free-form curves, each point once; kStretch when some of their pieces run together. Throws
// std::bad_alloc.
Common CrossFreeForms(const Curve& a, const Curve& b, GlobalVar& g, Crossings& found);

}  // namespace kurvo
