// Conversion of Bezier and rational Bezier curves.
#include "build/arc_recognition.h"
#include "build/convert_from.h"
#include "control/weights.h"
#include "records/new_records.h"

namespace kurvo {

OwnedCurve ConvertFrom(const BezierView<3>& bezier, int32_t type) {
  switch (type) {
    case CV_RBEZIER:
      return FlatBezier<4>(bezier.points, bezier.degree);
    case CV_BSPLINE:
      return FlatSingleSpan<3>(bezier.points, bezier.degree);
    case CV_RBSPLINE:
      return FlatSingleSpan<4>(bezier.points, bezier.degree);
    case CV_SEGCV:
      return NewComposite(CopiedBezier(bezier.points, bezier.degree));
    default:
      return {};
  }
}

OwnedCurve ConvertFrom(const BezierView<4>& bezier, int32_t type, const Curve& source,
                       GlobalVar& g) {
  const int32_t count = bezier.degree + 1;
  switch (type) {
    case CV_ARC:
      return NewArc(RecogniseArc(source, 0.0, 1.0, g));
    case CV_BEZIER:  // Fixed behaviour: any common weight will do here, only 1 below. Do not unify.
      if (!WeightsAreEqual(bezier.points, count)) return {};
      return FlatBezier<3>(bezier.points, bezier.degree);
    case CV_BSPLINE:
      if (!WeightsRoundToOne(bezier.points, count)) return {};
      return FlatSingleSpan<3>(bezier.points, bezier.degree);
    case CV_RBSPLINE:
      return CopiedSingleSpan(bezier.points, bezier.degree);
    case CV_SEGCV:
      return NewComposite(CopiedBezier(bezier.points, bezier.degree));
    default:
      return {};
  }
}

}  // namespace kurvo
