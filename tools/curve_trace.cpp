#include "curve_trace.h"

#include <algorithm>

#include "sampling.h"

namespace kurvo::tools {
namespace {

std::vector<Point> ControlPoints(const OwnedCurve& curve) {
  std::vector<Point> points;
  if (curve.Type() == CV_BEZIER) {
    const auto* bezier = static_cast<const KurvoBezier*>(curve.Get()->data);
    for (int i = 0; i <= bezier->degree; ++i) {
      points.push_back({bezier->points[i][0], bezier->points[i][1]});
    }
  } else if (curve.Type() == CV_RBEZIER) {
    const auto* bezier = static_cast<const KurvoRBezier*>(curve.Get()->data);
    for (int i = 0; i <= bezier->degree; ++i) {
      points.push_back({bezier->points[i][0], bezier->points[i][1]});
    }
  } else if (curve.Type() == CV_ARC) {
    const auto* arc = static_cast<const KurvoArc*>(curve.Get()->data);
    points.push_back({arc->centre[0], arc->centre[1]});
  }
  return points;
}

}  // namespace

OutlineTrace TraceOutline(Library& library, const Outline& outline, double tolerance) {
  OutlineTrace trace = {{}, {}, outline.closed};
  for (const OwnedCurve& curve : outline.curves) {
    trace.curves.push_back(
        {curve.Type(), SampleCurve(library, curve, tolerance), ControlPoints(curve)});
    trace.box.Add(BoundsOf(library, curve));
  }
  return trace;
}

double Extent(Library& library, const std::vector<const Drawing*>& drawings) {
  Bounds box;
  for (const Drawing* drawing : drawings) {
    for (const Shape& shape : drawing->shapes) {
      for (const Outline& outline : shape.outlines) {
        for (const OwnedCurve& curve : outline.curves) box.Add(BoundsOf(library, curve));
      }
    }
  }
  return box.IsEmpty() ? 1 : std::max(box.Width(), box.Height());
}

}  // namespace kurvo::tools
