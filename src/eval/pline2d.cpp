// Evaluator of a line segment.
#include "eval/pline2d.h"

#include <cmath>
#include <utility>

#include "calc/directions.h"

namespace kurvo {

Vec3 PLine2D::Position(double t) const {
  const Vec2 start = Planar(line_.start);
  if (t == 0.0) return OnPlane(start);
  return OnPlane(start + t * (Planar(line_.end) - start));
}

bool PLine2D::ProjectToCarrier(Vec3& p) const {
  const Vec2 start = Planar(line_.start);
  const Vec2 u = Planar(UnitVector(OnPlane(Planar(line_.end) - start), g_));
  p = OnPlane(start + Dot(Planar(p) - start, u) * u);
  return true;
}

Incidence PLine2D::Parameter(Vec3 p, double& t) const {
  const Vec3 start = Spatial(line_.start);
  const Vec3 along = Spatial(line_.end) - start;
  const double length = Length(along);
  const Vec3 u = UnitVector(along, g_);
  const double ahead = Dot(u, p - start);
  t = ahead == 0.0 || length == 0.0 ? 0.0 : ahead / length;
  // Fixed behaviour: the length tolerance also bounds t, a parameter, at both ends. Do not unify.
  const bool within = t >= -tol() && 1.0 + tol() >= t;
  const double aside = u.x * (p.y - start.y) - u.y * (p.x - start.x);
  return within && tol() >= std::fabs(aside) ? Incidence::kOn : Incidence::kOff;
}

// The normal counts as it is given: a longer one moves the line further. A line that is a point has
// no side to move to, gives nothing and leaves the warning.
bool PLine2D::Offset(Vec3 normal, double distance, double /*tolerance*/,
                     OwnedSequence& pieces) const {
  const Vec2 start = Planar(line_.start);
  const Vec2 end = Planar(line_.end);
  const Vec3 along = OnPlane(end - start);
  const Vec2 t = Planar(UnitVector(along, g_));
  if (Within(along, tol())) return true;
  const Vec2 move = distance * (normal.z * Vec2{-t.y, t.x});
  OwnedCurve moved(CV_LINE, {});
  auto& line = moved.block<KurvoLine>();
  Store(OnPlane(start + move), line.start);
  Store(OnPlane(end + move), line.end);
  pieces.push_back(std::move(moved));
  return true;
}

NearestOnCurve PLine2D::NearestPoint(Vec3 p) const {
  Vec3 foot = p;
  ProjectToCarrier(foot);
  double t;
  Parameter(foot, t);
  if (0.0 <= t && t <= 1.0) return {t, Length(Planar(p) - Planar(foot))};
  const bool before = t < 0.0;
  return {before ? 0.0 : 1.0, Length(Planar(before ? line_.start : line_.end) - Planar(p))};
}

}  // namespace kurvo
