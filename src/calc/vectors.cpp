// Vector arithmetic, and comparison of points and vectors by component.
#include "foundation/point.h"

using kurvo::Planar;
using kurvo::Spatial;
using kurvo::Store;

extern "C" {

void KurvoclCopyVector(const Coord src, Coord dst) noexcept { Store(Spatial(src), dst); }

void KurvoclSubVector(const Coord a, const Coord b, Coord out) noexcept {
  Store(Spatial(a) - Spatial(b), out);
}

void KurvoclSclVector(double s, const Coord v, Coord out) noexcept { Store(s * Spatial(v), out); }

double KurvoclInnerProduct(const Coord a, const Coord b) noexcept {
  return Dot(Spatial(a), Spatial(b));
}

void KurvoclOuterProduct(const Coord a, const Coord b, Coord out) noexcept {
  const kurvo::Vec3 u = Spatial(a);
  const kurvo::Vec3 v = Spatial(b);
  Store({u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - v.x * u.y}, out);
}

double KurvoclVectorSize(const Coord v) noexcept { return Length(Spatial(v)); }

double KurvoclDistPoint(const Coord p, const Coord q) noexcept {
  return Length(Planar(p) - Planar(q));
}

void KurvoclSetCoord(Coord out, double x, double y, double z) noexcept { Store({x, y, z}, out); }

void KurvoclSetHCoord(HCoord out, double x, double y, double z, double w) noexcept {
  Store({x, y, z}, out);
  out[3] = w;
}

int KurvoclZeroVector(const Coord v, const GlobalVar* g) noexcept {
  return int{Within(Spatial(v), g->epsilon)};
}

int KurvoclZeroVector2(const Coord v, const GlobalVar* g) noexcept {
  return int{Within(Spatial(v), g->epsilon2)};
}

int KurvoclSameCoord(const Coord a, const Coord b, const GlobalVar* g) noexcept {
  return int{SamePoint(Spatial(a), Spatial(b), g->epsilon)};
}

int KurvoclSameHCoord(const HCoord a, const HCoord b, const GlobalVar* g) noexcept {
  return int{SamePoint(Spatial(a), Spatial(b), g->epsilon) &&
             g->epsilon0 >= std::fabs(a[3] - b[3])};
}

}  // extern "C"
