#include "geometry/nearest.h"

namespace kurvo::tools {
namespace {

NearestPoint NearestByLibrary(Library& library, const OwnedCurve& curve, Point p) {
  const Coord point = {p.x, p.y, 0};
  double t = 0;
  const double distance = KurvocvDistPoint(curve.Get(), point, &t, library.State());
  library.Check();
  return {t, PositionOf(library, curve, t), distance};
}

}  // namespace

// The distance of a point from a Bezier curve is, in the library, that of the first foot point,
// which need not be the nearest one. On a B-spline it is the least of all foot points and ends. So
// a Bezier curve is asked as the B-spline of one span that it also is: the same points at the same
// parameters.
NearestPoint NearestOn(Library& library, const OwnedCurve& curve, Point p) {
  if (curve.Type() == CV_LINE || curve.Type() == CV_ARC) return NearestByLibrary(library, curve, p);
  const int spline_type = curve.Type() == CV_BEZIER ? CV_BSPLINE : CV_RBSPLINE;
  const OwnedCurve spline = OwnedCurve::Converted(library, curve, spline_type);
  return NearestByLibrary(library, spline, p);
}

}  // namespace kurvo::tools
