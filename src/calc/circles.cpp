// Points on circles and arcs, and the circle through two points.
#include "calc/circles.h"

#include "calc/arc_span.h"
#include "calc/directions.h"

namespace kurvo {
namespace {

// The centre of the circle of radius r through p1 and p2, which are at most 2 r apart. It lies at
// the height h = sqrt(r^2 - |m - p1|^2) above the midpoint m of the chord.
Vec2 CentreThrough(double r, Vec2 p1, Vec2 p2, bool right, GlobalVar& g) {
  const Vec2 middle = {(p1.x + p2.x) / 2, (p1.y + p2.y) / 2};
  if (Length(p1 - p2) >= 2 * r - g.epsilon) return middle;  // the chord is a diameter
  const Vec2 half = middle - p1;
  const double height2 = r * r - Dot(half, half);
  const double height = std::sqrt(height2 < 0 ? 0.0 : height2);  // rounding of a huge r
  const Vec2 aside = right ? Vec2{half.y, -half.x} : Vec2{-half.y, half.x};
  return middle + height * Planar(UnitVector(OnPlane(aside), g));
}

}  // namespace
}  // namespace kurvo

using kurvo::Planar;
using kurvo::Spatial;

extern "C" {

int KurvoclOnCirc(const Coord p, const KurvoArc* arc, const GlobalVar* g) noexcept {
  return int{arc && kurvo::OnCircle(Spatial(p), *arc, g->epsilon)};
}

int KurvoclOnArc(const Coord p, const KurvoArc* arc, double* t, GlobalVar* g) noexcept {
  const kurvo::Vec3 point = Spatial(p);
  *t = 0.0;
  if (!arc || !kurvo::OnCircle(point, *arc, g->epsilon)) return 0;
  return int{kurvo::ParameterOnArc(*arc, kurvo::SpanOf(*arc, g->epsilon), point, g->epsilon, *t)};
}

int KurvofcRPPcirc(double r, const Coord p1, const Coord p2, Coord centre, int side,
                   GlobalVar* g) noexcept {
  if (SamePoint(Spatial(p1), Spatial(p2), g->epsilon))
    return kurvo::Refuse(*g, KURVO_ERR_SAME_POINTS, 0);
  const double distance = Length(Planar(p1) - Planar(p2));
  if (!(2 * r + g->epsilon >= distance)) return kurvo::Refuse(*g, KURVO_ERR_RADIUS_TOO_SMALL, 0);
  const kurvo::Vec2 found = kurvo::CentreThrough(r, Planar(p1), Planar(p2), side != 0, *g);
  kurvo::Store(kurvo::OnPlane(found), centre);
  return 1;
}

}  // extern "C"
