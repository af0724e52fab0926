#include "fit/centres.h"

#include <cmath>

#include "fit/cubic.h"

namespace kurvo::outline {
namespace {

constexpr double kShare =
    0.5;  // of the tolerance: how far a cubic may be off where it is looked at
constexpr int kMostHalvings = 6;

class Centres {
 public:
  Centres(const Vec2* points, const Hodograph3& hodograph)
      : points_(points), hodograph_(hodograph) {}

  // |v|^2 / (v x a) along the normal.
  Vec2 At(double u) const {
    const Vec2 v = hodograph_.VelocityAt(u);
    return CubicAt(points_, u) + (SquaredLength(v) / Cross(v, hodograph_.BendAt(u))) * Left(v);
  }
  // Along the normal: the derivative of the radius |v|^3 / (v x a).
  Vec2 VelocityAt(double u) const {
    const Vec2 v = hodograph_.VelocityAt(u), a = hodograph_.BendAt(u);
    const double cross = Cross(v, a);
    const double growth = 3 * Dot(v, a) * cross - SquaredLength(v) * Cross(v, hodograph_.j);
    return (growth / (cross * cross)) * Left(v);
  }

  // Cubics that have the points and velocities of the curve at their ends.
  bool Append(double from, double to, double tol, int halvings_left,
              Array<CubicCell>& cells) const {
    const double third = (to - from) / 3;
    const Vec2 start = At(from), end = At(to);
    const CubicCell cell = {
        {start, start + third * VelocityAt(from), end - third * VelocityAt(to), end}, 0, from, to};
    double off = 0;
    for (const double t : {0.25, 0.5, 0.75})
      off += Length(CubicAt(cell.points, t) - At(from + t * (to - from)));
    if (kShare * tol >= off) {
      cells.push_back(cell);
      return true;
    }
    const double middle = 0.5 * (from + to);
    return halvings_left > 0 && Append(from, middle, tol, halvings_left - 1, cells) &&
           Append(middle, to, tol, halvings_left - 1, cells);
  }

 private:
  const Vec2* points_;
  const Hodograph3& hodograph_;
};

}  // namespace

bool AppendCentres(const Vec2* points, const Hodograph3& hodograph, double from, double to,
                   double tol, Array<CubicCell>& cells) {
  const Centres centres(points, hodograph);
  const Vec2 leaves = hodograph.VelocityAt(from), arrives = hodograph.VelocityAt(to);
  const double turn = std::atan2(std::fabs(Cross(leaves, arrives)), Dot(leaves, arrives));
  // All of it lies between its chord and its tangents.
  const double chord = Length(centres.At(to) - centres.At(from));
  if (tol >= chord * std::tan(std::min(turn, 1.5))) return true;
  return centres.Append(from, to, tol, kMostHalvings, cells);
}

}  // namespace kurvo::outline
