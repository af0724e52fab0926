// The parameters that a curve runs over.
#pragma once

#include "records/views.h"

namespace kurvo {

// From the start of a curve to its end.
struct Domain {
  double start;
  double end;

  double width() const { return end - start; }
};

inline Domain DomainOf(const KurvoLine&) { return {0.0, 1.0}; }
inline Domain DomainOf(const KurvoArc&) { return {0.0, 1.0}; }
inline Domain DomainOf(Refused) { return {0.0, 1.0}; }

template <std::size_t kDim>
Domain DomainOf(const BezierView<kDim>&) {
  return {0.0, 1.0};
}

template <std::size_t kDim>
Domain DomainOf(const SplineView<kDim>& spline) {
  return {spline.knots[spline.order - 1], spline.knots[spline.count]};
}

inline Domain DomainOf(const CompositeView& composite) {
  double total = 0.0;
  for (int32_t i = 0; i < composite.count; ++i) total += composite.widths[i];
  return {0.0, total};
}

inline Domain DomainOf(const Curve& curve) {
  return VisitCurve(curve, [](const auto& view) { return DomainOf(view); });
}

}  // namespace kurvo
