// The check of a whole curve before it is taken apart.
#include "records/well_formed.h"

#include "records/pieces.h"

namespace kurvo {
bool WellFormed(const Curve& curve) {
  return AllLeaves(curve,
                   Overloaded{[](const Curve&, const auto&) { return true; },
                              [](const Curve&, Refused) { return false; },
                              []<std::size_t kDim>(const Curve&, const SplineView<kDim>& spline) {
                                return spline.order <= kMaxSplineOrder;
                              }});
}

}  // namespace kurvo
