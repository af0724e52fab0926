// One polynomial or rational piece over [0, 1] in power basis, and the questions asked of it. A
// Bezier curve is one such piece, a B-spline has one for each knot span.
#pragma once

#include <array>
#include <cmath>

#include "control/bernstein.h"
#include "eval/polynomial.h"
#include "eval/root_finder.h"
#include "foundation/point.h"

namespace kurvo {

// Largest degrees whose foot-point polynomials, of degree 2n - 1 and 3n - 2, fit 40 coefficients.
constexpr int32_t kMaxPlainFootDegree = 20;
constexpr int32_t kMaxRationalFootDegree = 13;

// x(t) / w(t), y(t) / w(t) when rational, else x(t), y(t). What is asked about a point p is asked
// of the segment relative to p: its control points have p subtracted before they are turned into
// power basis, so that far from the origin no digits are lost.
struct Segment {
  Polynomial x;
  Polynomial y;
  Polynomial w;
  bool rational = false;
};

// Makes each of `results` the power basis of one component of the Bezier function of degree n < 40
// whose coefficient vectors are written by load(i, vector).
template <std::size_t kSize, class Load>
void SetPowerBasis(std::size_t n, Load&& load, const std::array<Polynomial*, kSize>& results) {
  static_assert(kMaxTabledDegree < Polynomial::kCapacity);
  for (Polynomial* result : results) result->Truncate(n + 1);
  ToPowerBasis<kSize>(n, load, [&](std::size_t j, const std::array<double, kSize>& sum) {
    for (std::size_t c = 0; c < kSize; ++c) (*results[c])[j] = sum[c];
  });
}

// A parameter within [-slack, 1 + slack]; NaN is not.
inline bool OnUnitInterval(double t, double slack) { return t >= -slack && 1.0 + slack >= t; }

// Roots of the foot-point polynomial of p: parameters where the vector to p is normal to the curve,
// in ascending order, also a little beyond [0, 1]. With X and Y relative to p:
//   plain:    F = X X' + Y Y'
//   rational: F = X (X'W - X W') + Y (Y'W - Y W'), the same times W^3
RootList FootRoots(const Segment& relative);

// Those of them in [0, 1]. Roots up to `slack` beyond an end count and are moved onto it.
RootList FootPoints(const RootList& roots, double slack);

// Roots of X and of Y relative to p: where the curve has the abscissa resp. ordinate of p.
struct CoordinateRoots {
  RootList x;
  RootList y;
};
CoordinateRoots RootsOfCoordinates(const Segment& relative);

// The parameter t at which the curve passes through p; false when none is found. First choice are
// the roots in x that agree with one in y within `tol`; only when there is none, every root in x,
// then in y, whose point position(t) agrees with p within tol in each coordinate, pz with 0
// included.
template <class PositionAt>
bool FindParameter(const Segment& relative, Vec3 p, double tol, PositionAt&& position, double& t) {
  const auto on_curve = [&](double r) {
    const Vec2 q = position(r);
    return tol >= std::fabs(p.x - q.x) && tol >= std::fabs(p.y - q.y);
  };
  const CoordinateRoots roots = RootsOfCoordinates(relative);
  for (const double rx : roots.x) {
    if (!OnUnitInterval(rx, tol)) continue;
    // A root of exactly 0 may be one that the finder did not settle: the curve must start at p
    // then.
    if (rx == 0.0 && !on_curve(rx)) continue;
    for (const double ry : roots.y) {
      if (OnUnitInterval(ry, tol) && tol >= std::fabs(rx - ry)) {
        t = rx;
        return true;
      }
    }
  }
  if (!(tol >= std::fabs(p.z))) return false;
  for (const RootList* list : {&roots.x, &roots.y}) {
    for (const double r : *list) {
      if (OnUnitInterval(r, tol) && on_curve(r)) {
        t = r;
        return true;
      }
    }
  }
  return false;
}

}  // namespace kurvo
