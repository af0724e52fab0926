// The degree of a curve.
#include <algorithm>

#include "foundation/error_codes.h"
#include "records/pieces.h"

namespace kurvo {
namespace {

int DegreeOf(const KurvoLine&) { return 1; }
int DegreeOf(const KurvoArc&) { return 2; }
template <std::size_t kDim>
int DegreeOf(const BezierView<kDim>& bezier) {
  return bezier.degree;
}
template <std::size_t kDim>
int DegreeOf(const SplineView<kDim>& spline) {
  return spline.order - 1;
}

// The largest among the pieces.
int Degree(const Curve& cv, GlobalVar& g) {
  int degree = 0;
  ForEachLeafView(
      cv, g, [&](const Curve&, const auto& view) { degree = std::max(degree, DegreeOf(view)); });
  return degree;
}

}  // namespace
}  // namespace kurvo

extern "C" int KurvocvDegree(const Curve* cv, GlobalVar* g) noexcept {
  if (!cv) return kurvo::Refuse(*g, KURVO_ERR_CURVE, 0);
  return kurvo::Degree(*cv, *g);
}
