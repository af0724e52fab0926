#include "picture/curve_trace.h"

#include <algorithm>

#include "geometry/sampling.h"
#include "svg/curve_path.h"

namespace kurvo::tools {
namespace {

template <class Block>
void Append(const Block& bezier, std::vector<Point>& points) {
  for (int i = 0; i <= bezier.degree; ++i) {
    points.push_back({bezier.points[i][0], bezier.points[i][1]});
  }
}

std::vector<Point> ControlPoints(const OwnedCurve& curve) {
  std::vector<Point> points;
  if (curve.Type() == CV_BEZIER) {
    Append(curve.Block<KurvoBezier>(), points);
  } else if (curve.Type() == CV_RBEZIER) {
    Append(curve.Block<KurvoRBezier>(), points);
  } else if (curve.Type() == CV_ARC) {
    const auto& arc = curve.Block<KurvoArc>();
    points.push_back({arc.centre[0], arc.centre[1]});
  }
  return points;
}

}  // namespace

void DrawnCurves::Add(Library& library, const OwnedCurve& curve, double tolerance) {
  data += PathData(library, curve);
  for (const Point p : SampleCurve(library, curve, tolerance)) box.Add(p);
  ++count;
}

OutlineTrace TraceOutline(Library& library, const Outline& outline, double tolerance) {
  OutlineTrace trace = {{}, {}, outline.closed};
  for (const OwnedCurve& curve : outline.curves) {
    trace.curves.push_back(
        {curve.Type(), {}, StartOf(library, curve), EndOf(library, curve), ControlPoints(curve)});
    trace.curves.back().drawn.Add(library, curve, tolerance);
    trace.box.Add(BoundsOf(library, curve));
  }
  return trace;
}

double Extent(Library& library, const std::vector<const Drawing*>& drawings) {
  Bounds box;
  for (const Drawing* drawing : drawings) box.Add(BoundsOf(library, *drawing));
  return box.IsEmpty() ? 1 : std::max(box.Width(), box.Height());
}

}  // namespace kurvo::tools
