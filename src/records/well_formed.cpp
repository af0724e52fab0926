// The check of a whole curve before it is taken apart.
#include "records/well_formed.h"

#include <algorithm>

namespace kurvo {
namespace {

bool WellFormedAt(const Curve& curve, int level) {
  return VisitCurve(
      curve, Overloaded{[](const auto&) { return true; }, [](Refused) { return false; },
                        []<std::size_t kDim>(const SplineView<kDim>& spline) {
                          return spline.order <= kMaxSplineOrder;
                        },
                        [&](const CompositeView& composite) {
                          if (level >= kMaxNesting) return false;
                          return std::all_of(
                              composite.curves, composite.curves + composite.count,
                              [&](const Curve& piece) { return WellFormedAt(piece, level + 1); });
                        }});
}

}  // namespace

bool WellFormed(const Curve& curve) { return WellFormedAt(curve, 0); }

}  // namespace kurvo
