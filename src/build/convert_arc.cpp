// Conversion of circular arcs.
#include "build/convert_from.h"
#include "control/rational_arc.h"
#include "records/new_records.h"

namespace kurvo {

OwnedCurve ConvertFrom(const KurvoArc& arc, int32_t type) {
  const auto quadratic = QuadraticOfArc(arc);
  if (!quadratic) return {};
  switch (type) {
    case CV_RBEZIER:
      return CopiedBezier(quadratic->points, 2);
    case CV_RBSPLINE:
      return CopiedSingleSpan(quadratic->points, 2);
    case CV_SEGCV:
      return NewComposite(CopiedBezier(quadratic->points, 2));
    default:
      return {};
  }
}

}  // namespace kurvo
