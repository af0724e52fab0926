// The degree of a curve.
#include <algorithm>

#include "foundation/error_codes.h"
#include "records/views.h"

namespace kurvo {
namespace {

int Degree(const Curve& cv, int level, GlobalVar& g) {
  return VisitCurve(
      cv,
      Overloaded{[](const KurvoLine&) { return 1; }, [](const KurvoArc&) { return 2; },
                 []<std::size_t kDim>(const BezierView<kDim>& bezier) { return bezier.degree; },
                 []<std::size_t kDim>(const SplineView<kDim>& spline) { return spline.order - 1; },
                 [&](const CompositeView& composite) {
                   if (level >= kMaxNesting) {
                     Fail(g, KURVO_ERR_CURVE);
                     return 0;
                   }
                   int degree = 0;
                   for (int32_t i = 0; i < composite.count; ++i)
                     degree = std::max(degree, Degree(composite.curves[i], level + 1, g));
                   return degree;
                 },
                 [&](Refused) {
                   Fail(g, KURVO_ERR_CURVE);
                   return 0;
                 }});
}

}  // namespace
}  // namespace kurvo

extern "C" int KurvocvDegree(const Curve* cv, GlobalVar* g) noexcept {
  if (!cv) {
    kurvo::Fail(*g, KURVO_ERR_CURVE);
    return 0;
  }
  return kurvo::Degree(*cv, 0, *g);
}
