// Rotation, scaling, mirroring and general linear transformation of points and vectors.
#include "calc/directions.h"

namespace kurvo {
namespace {

// A 3 by 3 matrix by rows.
struct Matrix {
  Vec3 row1;
  Vec3 row2;
  Vec3 row3;
};

Vec3 operator*(const Matrix& m, Vec3 v) { return {Dot(m.row1, v), Dot(m.row2, v), Dot(m.row3, v)}; }

Matrix IdentityMinus(const Matrix& m) {
  return {Vec3{1, 0, 0} - m.row1, Vec3{0, 1, 0} - m.row2, Vec3{0, 0, 1} - m.row3};
}

// Rodrigues' rotation by `angle` about the unit vector (x, y, z), with c = cos, s = sin, t = 1 - c.
Matrix Rotation(Vec3 axis, double angle) {
  const auto [x, y, z] = axis;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const double t = 1 - c;
  return {{x * x * t + c, x * y * t - z * s, x * z * t + y * s},
          {x * y * t + z * s, y * y * t + c, y * z * t - x * s},
          {x * z * t - y * s, y * z * t + x * s, z * z * t + c}};
}

Vec3 Scaled(Vec2 p, Vec2 centre, double s) { return OnPlane(p - (1 - s) * (p - centre)); }

// Moves p along `dir` only, by the factor s of its distance k from the line through `centre` across
// dir.
Vec3 ScaledAlong(Vec3 p, Vec3 centre, Vec3 dir, double s) {
  const double k = Dot(p - centre, dir);
  return {p.x - dir.x * k * (1 - s), p.y - dir.y * k * (1 - s), 0.0};
}

Vec3 Mirrored(Vec3 p, Vec3 base, Vec3 unit_normal) {
  const double d = Dot(base - p, unit_normal);
  return {p.x + 2 * unit_normal.x * d, p.y + 2 * unit_normal.y * d, 0.0};
}

}  // namespace
}  // namespace kurvo

using kurvo::Planar;
using kurvo::Spatial;
using kurvo::Store;

extern "C" {

void KurvoclRotateVector(const Coord axis, double angle, const Coord v, Coord out) noexcept {
  Store(kurvo::Rotation(Spatial(axis), angle) * Spatial(v), out);
}

void KurvofcRotateVector(const Coord v, double angle, Coord out) noexcept {
  Store(kurvo::Rotation({0, 0, 1}, angle) * Spatial(v), out);
}

void KurvoclTransPoint(const double matrix[16], const Coord p, Coord out) noexcept {
  const double* m = matrix;
  const auto [x, y, z] = Spatial(p);
  Store({m[0] * x + m[4] * y + m[8] * z + m[12], m[1] * x + m[5] * y + m[9] * z + m[13],
         m[2] * x + m[6] * y + m[10] * z + m[14]},
        out);
}

double* KurvoclRotatePoint(const Coord centre, const Coord axis, double angle, const Coord p,
                           Coord out) noexcept {
  const kurvo::Matrix r = kurvo::Rotation(Spatial(axis), angle);
  Store(r * Spatial(p) + IdentityMinus(r) * Spatial(centre), out);
  return out;
}

double* KurvoclScalePoint(const Coord centre, const Coord dir, double s, const Coord p, Coord out,
                          const GlobalVar* g) noexcept {
  const kurvo::Vec3 direction = Spatial(dir);
  Store(Within(direction, g->epsilon)
            ? kurvo::Scaled(Planar(p), Planar(centre), s)
            : kurvo::ScaledAlong(Spatial(p), Spatial(centre), direction, s),
        out);
  return out;
}

void KurvoclMirrorPoint(const Coord base, const Coord normal, const Coord p, Coord out,
                        GlobalVar* g) noexcept {
  const kurvo::Vec3 unit_normal = kurvo::UnitVector(Spatial(normal), *g);
  Store(kurvo::Mirrored(Spatial(p), Spatial(base), unit_normal), out);
}

}  // extern "C"
