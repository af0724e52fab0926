#include "curve_path.h"

#include <cmath>

#include "elliptical_arc.h"

namespace kurvo::tools {
namespace {

// Nearly straight: 1 - cosine of half the angle, of which rounding leaves no digit.
constexpr double kFlat = 1e-12;

std::string Pair(Point p, const SvgText& out) { return out.Number(p.x) + " " + out.Number(p.y); }

Point At(const double* p) { return {p[0], p[1]}; }

std::string ArcData(const EndpointArc& arc, const SvgText& out) {
  return "A" + Pair({arc.rx, arc.ry}, out) + " " + out.Number(arc.rotation) +
         (arc.large_arc ? " 1" : " 0") + (arc.positive_sweep ? " 1 " : " 0 ") + Pair(arc.to, out);
}

EndpointArc CircularArc(const KurvoArc& arc) {
  const bool positive = !(arc.normal[2] < 0);
  const Point start = At(arc.start) - At(arc.centre);
  const Point end = At(arc.end) - At(arc.centre);
  // At a half turn neither choice is wrong.
  const bool large = positive ? Cross(start, end) < 0 : Cross(start, end) > 0;
  return {arc.radius, arc.radius, 0, large, positive, At(arc.end)};
}

// The semi-axes of the ellipse with the conjugate half diameters u and v, by the singular value
// decomposition of the matrix with these columns (closed form for 2 by 2).
EndpointArc WithAxes(Point u, Point v, Point to) {
  const Point even = {(u.x + v.y) / 2, (u.y - v.x) / 2};
  const Point odd = {(u.x - v.y) / 2, (u.y + v.x) / 2};
  const double q = std::hypot(even.x, even.y);
  const double r = std::hypot(odd.x, odd.y);
  const double rotation = (std::atan2(even.y, even.x) + std::atan2(odd.y, odd.x)) / 2;
  return {q + r, std::fabs(q - r), Degrees(rotation), false, Cross(u, v) > 0, to};
}

// The affine image of the arc of the unit circle from angle -a to a, whose control points are
// (cos a, -sin a), (1 / cos a, 0) and (cos a, sin a) with the middle weight cos a: the images u and
// v of (1, 0) and (0, 1) follow from the chord and from its distance to the middle control point.
std::string EllipseData(const KurvoRBezier& bezier, const SvgText& out) {
  const auto& p = bezier.points;
  const double cosine = p[1][3] / std::sqrt(p[0][3] * p[2][3]);
  const Point to = At(p[2]);
  if (!(cosine < 1 - kFlat)) return "L" + Pair(to, out);
  const double sine2 = (1 - cosine) * (1 + cosine);
  const Point v = (0.5 / std::sqrt(sine2)) * (to - At(p[0]));
  const Point u = (cosine / sine2) * (At(p[1]) - 0.5 * (At(p[0]) + to));
  return ArcData(WithAxes(u, v, to), out);
}

std::string BezierData(const KurvoBezier& bezier, const SvgText& out) {
  std::string data = bezier.degree == 3 ? "C" : bezier.degree == 2 ? "Q" : "L";
  for (int i = 1; i <= bezier.degree; ++i)
    data += (i > 1 ? " " : "") + Pair(At(bezier.points[i]), out);
  return data;
}

// Without the point that it starts from.
std::string CurveData(const Curve& curve, const SvgText& out) {
  switch (curve.type) {
    case CV_LINE:
      return "L" + Pair(At(static_cast<const KurvoLine*>(curve.data)->end), out);
    case CV_ARC:
      return ArcData(CircularArc(*static_cast<const KurvoArc*>(curve.data)), out);
    case CV_BEZIER:
      return BezierData(*static_cast<const KurvoBezier*>(curve.data), out);
    default:
      return EllipseData(*static_cast<const KurvoRBezier*>(curve.data), out);
  }
}

}  // namespace

std::string PathData(const std::vector<OwnedCurve>& curves, Library& library, const SvgText& out) {
  std::string data = "M" + Pair(StartOf(library, curves.front()), out);
  for (const OwnedCurve& curve : curves) data += CurveData(*curve.Get(), out);
  return data;
}

}  // namespace kurvo::tools
