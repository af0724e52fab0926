// The curves that a curve is made of when composites are taken apart.
#pragma once

#include "foundation/error_codes.h"
#include "records/views.h"

namespace kurvo {

// Calls visit(leaf) for the curve itself or, when it is a composite, for its pieces in order and
// theirs. Records the bad-curve error for a record that cannot be right.
template <class Visit>
void ForEachLeaf(const Curve& curve, GlobalVar& g, const Visit& visit, int level = 0) {
  VisitCurve(curve, Overloaded{[&](const auto&) { visit(curve); },
                               [&](const CompositeView& composite) {
                                 if (level >= kMaxNesting) return Fail(g, KURVO_ERR_CURVE);
                                 for (int32_t i = 0; i < composite.count; ++i)
                                   ForEachLeaf(composite.curves[i], g, visit, level + 1);
                               },
                               [&](Refused) { Fail(g, KURVO_ERR_CURVE); }});
}

}  // namespace kurvo
