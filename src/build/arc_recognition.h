// Recognition of circular arcs in rational curves.
#pragma once

#include <optional>

#include "records/views.h"

namespace kurvo {

// The arc that the curve runs along over its domain [start, end]; nothing when it is none. Reports
// into `g` what evaluating the curve reports.
std::optional<KurvoArc> RecogniseArc(const Curve& curve, double start, double end, GlobalVar& g);

// The arc that a composite of rational Bezier curves runs along; nothing when there are other
// pieces, or pieces of different circles.
std::optional<KurvoArc> RecogniseArcs(const Curve& curve, const CompositeView& composite,
                                      GlobalVar& g);

}  // namespace kurvo
