// The curves that a curve is made of when composites are taken apart.
#pragma once

#include "foundation/error_codes.h"
#include "records/views.h"

namespace kurvo {

// Calls visit(leaf, view) for the curve itself or, when it is a composite, for its pieces in order
// and theirs. Records the bad-curve error for a record that cannot be right.
template <class Visit>
void ForEachLeafView(const Curve& curve, GlobalVar& g, const Visit& visit, int level = 0) {
  VisitCurve(curve, Overloaded{[&](const auto& view) { visit(curve, view); },
                               [&](const CompositeView& composite) {
                                 if (level >= kMaxNesting) return Fail(g, KURVO_ERR_CURVE);
                                 for (int32_t i = 0; i < composite.count; ++i)
                                   ForEachLeafView(composite.curves[i], g, visit, level + 1);
                               },
                               [&](Refused) { Fail(g, KURVO_ERR_CURVE); }});
}

// The same for those who need the record alone: visit(leaf).
template <class Visit>
void ForEachLeaf(const Curve& curve, GlobalVar& g, const Visit& visit) {
  ForEachLeafView(curve, g, [&](const Curve& leaf, const auto&) { visit(leaf); });
}

}  // namespace kurvo
