// Feet of points on lines, and points on lines, segments and rays.
#include "calc/lines.h"

#include "calc/directions.h"

namespace kurvo {
namespace {

// A line from its six doubles: start x, y, z and end x, y, z.
struct Ends {
  explicit Ends(const double* line) : start(Spatial(line)), end(Spatial(line + 3)) {}
  Vec3 start;
  Vec3 end;
};

double PlanarDistance(Vec3 a, Vec3 b) { return Length(Planar(a) - Planar(b)); }

// The foot of p on the unbounded line through `start` along `unit`.
Vec3 Foot(Vec3 p, Vec3 start, Vec3 unit) { return start + Dot(p - start, unit) * unit; }

Vec3 FootOnLine(Vec3 p, const Ends& line, GlobalVar& g) {
  if (SamePoint(line.start, line.end, g.epsilon)) return line.start;
  return Foot(p, line.start, UnitVector(line.end - line.start, g));
}

bool OnLine(Vec3 p, const Ends& line, GlobalVar& g) {
  const Vec3 unit = UnitVector(line.end - line.start, g);
  return g.epsilon >= PlanarDistance(p, Foot(p, line.start, unit));
}

struct SegmentFoot {
  double t;  // 0 at the start, 1 at the end
  Vec3 point;
};

SegmentFoot FootOnSegment(Vec3 p, const Ends& seg, GlobalVar& g) {
  const Vec3 along = seg.end - seg.start;
  const Vec3 unit = UnitVector(along, g);
  // The same test as in UnitVector, for which a segment this short is its start point.
  if (Within(along, g.epsilon)) return {0.0, seg.start};
  return {Dot(p - seg.start, unit) / Length(along), Foot(p, seg.start, unit)};
}

// Fixed behaviour: epsilon, a length, bounds the dimensionless t as well. Do not unify.
bool OnSegment(Vec3 p, const SegmentFoot& foot, double tol) {
  return tol >= PlanarDistance(p, foot.point) && foot.t >= -tol && 1 + tol >= foot.t;
}

}  // namespace

bool OnOneRay(Vec3 p0, Vec3 p1, Vec3 p2, const GlobalVar& g) {
  if (SamePoint(p0, p1, g.epsilon) || SamePoint(p1, p2, g.epsilon) || SamePoint(p0, p2, g.epsilon))
    return true;
  const Vec2 unit = Planar(UnitOrZero(OnPlane(Planar(p2) - Planar(p0)), g.epsilon));
  const Vec2 to_p1 = Planar(p1) - Planar(p0);
  // Fixed behaviour: a distance of exactly epsilon is off the ray, unlike in every other test here.
  // Do not unify.
  const double off_ray = to_p1.y * unit.x - to_p1.x * unit.y;
  if (!(g.epsilon > std::fabs(off_ray))) return false;
  return g.epsilon0 >= OneTurn(AngleOf(to_p1) - AngleOf(unit), g.epsilon0);
}

}  // namespace kurvo

using kurvo::Ends;
using kurvo::Spatial;

extern "C" {

void KurvoclProjLine(const Coord p, const double line[6], Coord out, GlobalVar* g) noexcept {
  kurvo::Store(kurvo::FootOnLine(Spatial(p), Ends(line), *g), out);
}

int KurvoclOnLine(const Coord p, const double line[6], GlobalVar* g) noexcept {
  return int{kurvo::OnLine(Spatial(p), Ends(line), *g)};
}

int KurvoclOnLineSeg(const Coord p, const double seg[6], double* t, GlobalVar* g) noexcept {
  const kurvo::Vec3 point = Spatial(p);
  const kurvo::SegmentFoot foot = kurvo::FootOnSegment(point, Ends(seg), *g);
  *t = foot.t;
  return int{kurvo::OnSegment(point, foot, g->epsilon)};
}

int KurvoclIsLine(const Coord p0, const Coord p1, const Coord p2, GlobalVar* g) noexcept {
  return int{kurvo::OnOneRay(Spatial(p0), Spatial(p1), Spatial(p2), *g)};
}

}  // extern "C"
