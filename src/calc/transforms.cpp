// Rotation, scaling, mirroring and general linear transformation of points and vectors.
#include "calc/transforms.h"

#include "calc/directions.h"

namespace kurvo {
namespace {

Matrix IdentityMinus(const Matrix& m) {
  return {Vec3{1, 0, 0} - m.row1, Vec3{0, 1, 0} - m.row2, Vec3{0, 0, 1} - m.row3};
}

// Rodrigues' rotation: with (x, y, z) the axis, c = cos, s = sin and t = 1 - c.
Matrix RotationMatrix(Vec3 axis, double angle) {
  const auto [x, y, z] = axis;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const double t = 1 - c;
  return {{x * x * t + c, x * y * t - z * s, x * z * t + y * s},
          {x * y * t + z * s, y * y * t + c, y * z * t - x * s},
          {x * z * t - y * s, y * z * t + x * s, z * z * t + c}};
}

}  // namespace

Rotation::Rotation(Vec3 centre, Vec3 axis, double angle)
    : matrix_(RotationMatrix(axis, angle)), offset_(IdentityMinus(matrix_) * centre) {}

}  // namespace kurvo

using kurvo::Planar;
using kurvo::Spatial;
using kurvo::Store;

extern "C" {

void KurvoclRotateVector(const Coord axis, double angle, const Coord v, Coord out) noexcept {
  Store(kurvo::RotationMatrix(Spatial(axis), angle) * Spatial(v), out);
}

void KurvofcRotateVector(const Coord v, double angle, Coord out) noexcept {
  Store(kurvo::RotationMatrix({0, 0, 1}, angle) * Spatial(v), out);
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
  Store(kurvo::Rotation(Spatial(centre), Spatial(axis), angle)(Spatial(p)), out);
  return out;
}

double* KurvoclScalePoint(const Coord centre, const Coord dir, double s, const Coord p, Coord out,
                          const GlobalVar* g) noexcept {
  const kurvo::Vec3 direction = Spatial(dir);
  Store(Within(direction, g->epsilon)
            ? kurvo::Scaling{Planar(centre), s}(Spatial(p))
            : kurvo::DirectionalScaling{Spatial(centre), direction, s}(Spatial(p)),
        out);
  return out;
}

void KurvoclMirrorPoint(const Coord base, const Coord normal, const Coord p, Coord out,
                        GlobalVar* g) noexcept {
  const kurvo::Vec3 unit_normal = kurvo::UnitVector(Spatial(normal), *g);
  Store(kurvo::Reflection{Spatial(base), unit_normal}(Spatial(p)), out);
}

}  // extern "C"
