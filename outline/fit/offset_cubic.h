// A cubic alongside a stretch of a cubic.
#pragma once

#include "base/vec2.h"

namespace kurvo::outline {

// One side of a cubic: its points, at a distance along the normals to the right.
class CubicSide {
 public:
  CubicSide(const Vec2* points, double distance);

  const Vec2* points() const { return points_; }
  double distance() const { return distance_; }

  struct At {
    Vec2 point, tangent;  // of the cubic; the latter a unit vector
    double stretch;       // by how much the side is longer: 1 + distance x curvature
    double run;           // the speed of the side: that of the cubic times the stretch
    bool halts = false;   // an end whose handle has no length: the speed is 0
  };
  At LookAt(double u) const;

 private:
  const Vec2* points_;
  double distance_;
  double noise_;  // of velocity x bend
};

// How near the cubic is to the side: a bound, or where that is beyond `tol` what it is at least.
struct SideFit {
  Vec2 points[4];
  double off;
};

// The cubic with the ends and the directions of the side over [u0, u1] that sweeps the same area
// with the same first moment (Tiller and Hanson, Offsets of two-dimensional profiles, 1984, for the
// first guess; Levien, Parallel curves of cubic Beziers, 2022). `stretch` is positive inside and
// the direction turns by no more than a right angle.
SideFit FitSide(const CubicSide& side, const CubicSide::At& start, double u0,
                const CubicSide::At& end, double u1, double tol);

// A cubic with those ends and directions that strays nowhere, with handles of a third of its chord,
// and a bound of how far from the side it may be: no farther than the side and its chord are long.
SideFit PlainSide(const CubicSide& side, const CubicSide::At& start, double u0,
                  const CubicSide::At& end, double u1);

}  // namespace kurvo::outline
