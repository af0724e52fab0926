// Common points of a line or an arc with a free-form curve.
#pragma once

#include "relate/intersect/crossing.h"

namespace kurvo {

// Appends the points, the extension of the line or arc included, with its parameter first.
// `free_form` is of any type but line and arc; of a composite the Bezier and rational Bezier pieces
// take part and no others. kStretch when the curves run together along a stretch. Throws
// std::bad_alloc.
Common CrossLineFreeForm(const KurvoLine& line, const Curve& free_form, bool line_bounded,
                         GlobalVar& g, Crossings& found);
Common CrossArcFreeForm(const KurvoArc& arc, const Curve& free_form, bool arc_bounded, GlobalVar& g,
                        Crossings& found);

}  // namespace kurvo
