// Rotation, scaling and mirroring of points. What does not depend on the point is worked out once,
// so that a map applied to many points gives the bits of one that is made anew for each.
#pragma once

#include "foundation/point.h"

namespace kurvo {

// A 3 by 3 matrix by rows.
struct Matrix {
  Vec3 row1;
  Vec3 row2;
  Vec3 row3;
};

inline Vec3 operator*(const Matrix& m, Vec3 v) {
  return {Dot(m.row1, v), Dot(m.row2, v), Dot(m.row3, v)};
}

// The rotation by `angle` (radians) about the unit `axis` through `centre`: p becomes
// R p + (I - R) centre.
class Rotation {
 public:
  Rotation(Vec3 centre, Vec3 axis, double angle);
  Vec3 operator()(Vec3 p) const { return matrix_ * p + offset_; }

 private:
  Matrix matrix_;
  Vec3 offset_;
};

// Scales by s about `centre` in the plane; z = 0.
struct Scaling {
  Vec2 centre;
  double s;

  Vec3 operator()(Vec3 p) const { return OnPlane(Planar(p) - (1 - s) * (Planar(p) - centre)); }
};

// Scales along the unit vector `dir` only: the distance k of p from the line through `centre`
// across dir becomes s k. z = 0.
struct DirectionalScaling {
  Vec3 centre;
  Vec3 dir;
  double s;

  Vec3 operator()(Vec3 p) const {
    const double k = Dot(p - centre, dir);
    return {p.x - dir.x * k * (1 - s), p.y - dir.y * k * (1 - s), 0.0};
  }
};

// Mirrors in the line through `base` with the unit normal; z = 0.
struct Reflection {
  Vec3 base;
  Vec3 unit_normal;

  Vec3 operator()(Vec3 p) const {
    const double d = Dot(base - p, unit_normal);
    return {p.x + 2 * unit_normal.x * d, p.y + 2 * unit_normal.y * d, 0.0};
  }
};

}  // namespace kurvo
