// Evaluator of a circular arc.
#include "eval/parc2d.h"

#include <cmath>
#include <utility>

#include "calc/directions.h"

namespace kurvo {

Vec3 PArc2D::Position(double t) const {
  const double angle = AngleAt(span_, t, tol());
  const Vec3 centre = Spatial(arc_.centre);
  return {centre.x + arc_.radius * std::cos(angle), centre.y + arc_.radius * std::sin(angle),
          centre.z};
}

bool PArc2D::ProjectToCarrier(Vec3& p) const {
  const Vec2 centre = Planar(arc_.centre);
  const Vec2 u = Planar(UnitVector(OnPlane(Planar(p) - centre), g_));
  p = OnPlane(centre + arc_.radius * u);
  return true;
}

Incidence PArc2D::Parameter(Vec3 p, double& t) const {
  return ParameterOnArc(arc_, span_, p, tol(), t) ? Incidence::kOn : Incidence::kOff;
}

// An arc whose ends lie on its centre has no radial directions: it gives nothing.
bool PArc2D::Offset(Vec3 normal, double distance, double /*tolerance*/,
                    OwnedSequence& pieces) const {
  const Vec2 centre = Planar(arc_.centre);
  const Vec2 to_start = Planar(arc_.start) - centre;
  const Vec2 to_end = Planar(arc_.end) - centre;
  if (Within(OnPlane(to_start), tol()) || Within(OnPlane(to_end), tol())) return true;
  const Vec2 u_start = Planar(UnitVector(OnPlane(to_start), g_));
  const Vec2 u_end = Planar(UnitVector(OnPlane(to_end), g_));
  const double sense = arc_.normal[2] < 0.0 ? -1.0 : 1.0;
  const Vec2 tangent = sense * Vec2{-u_start.y, u_start.x};
  const bool outwards = Dot(normal.z * Vec2{-tangent.y, tangent.x}, u_start) > 0.0;
  const double radius = outwards ? arc_.radius + distance : arc_.radius - distance;
  if (!(radius > 0.0)) return true;
  OwnedCurve moved(CV_ARC, {});
  auto& arc = moved.block<KurvoArc>();
  arc = arc_;
  arc.radius = radius;
  Store(OnPlane(centre + radius * u_start), arc.start);
  Store(OnPlane(centre + radius * u_end), arc.end);
  pieces.push_back(std::move(moved));
  return true;
}

NearestOnCurve PArc2D::NearestPoint(Vec3 p) const {
  const Vec3 from_centre = p - Spatial(arc_.centre);
  if (Within(from_centre, tol())) return {0.0, arc_.radius};  // every point of the arc is as near
  if (Sweeps(span_, Planar(from_centre))) {
    Vec3 foot = p;
    ProjectToCarrier(foot);
    NearestOnCurve nearest{0.0, Length(Planar(p) - Planar(foot))};
    Parameter(foot, nearest.t);
    return nearest;
  }
  const double to_start = Length(Planar(arc_.start) - Planar(p));
  const double to_end = Length(Planar(arc_.end) - Planar(p));
  return to_end > to_start ? NearestOnCurve{0.0, to_start} : NearestOnCurve{1.0, to_end};
}

}  // namespace kurvo
