#include "fit/centres.h"

#include <algorithm>
#include <cmath>

#include "fit/cubic.h"

namespace kurvo::outline {
namespace {

constexpr int kMostHalvings = 24;
constexpr std::size_t kMostCubics = 64;

class Centres {
 public:
  Centres(const Vec2* points, const Hodograph3& hodograph)
      : points_(points), hodograph_(hodograph) {}

  // A centre, the radius there, positive to the left, and the normal: the curve of the centres runs
  // along it, as far as the radius grows.
  struct Centre {
    Vec2 point, normal;
    double radius, growth;
  };
  Centre At(double u) const {
    const Vec2 v = hodograph_.VelocityAt(u), a = hodograph_.BendAt(u);
    const double speed = Length(v), cross = Cross(v, a);
    const Vec2 normal = (1 / speed) * Left(v);
    const double radius = speed * speed * speed / cross;
    // The derivative of |v|^3 / (v x a).
    const double growth = speed *
                          (3 * Dot(v, a) * cross - SquaredLength(v) * Cross(v, hodograph_.j)) /
                          (cross * cross);
    return {CubicAt(points_, u) + radius * normal, normal, radius, growth};
  }

  // Cubics that the curve is as fast as at its ends, by the parameter of the cubic, which suits
  // vertices, or by its own length, which suits wide turns.
  bool Append(double from, const Centre& start, double to, const Centre& end, double tol,
              int halvings_left, Array<CubicCell>& cells) const {
    for (const bool is_even : {false, true}) {
      const double third = is_even ? (end.radius - start.radius) / 3 : (to - from) / 3;
      const double first = is_even ? third : third * start.growth;
      const double last = is_even ? third : third * end.growth;
      const CubicCell cell = {{start.point, start.point + first * start.normal,
                               end.point - last * end.normal, end.point},
                              0,
                              from,
                              to};
      if (cells.size() == kMostCubics) return false;
      if (!(tol >= OffOf(cell, start, end, is_even))) continue;
      cells.push_back(cell);
      return true;
    }
    if (halvings_left == 0) return false;
    const double middle = 0.5 * (from + to);
    const Centre between = At(middle);
    return Append(from, start, middle, between, tol, halvings_left - 1, cells) &&
           Append(middle, between, to, end, tol, halvings_left - 1, cells);
  }

 private:
  // How far centres are from where a cell has them, at three places together.
  double OffOf(const CubicCell& cell, const Centre& start, const Centre& end, bool is_even) const {
    double off = 0;
    for (const double share : {0.25, 0.5, 0.75}) {
      const Centre centre = At(cell.from + share * (cell.to - cell.from));
      const double along =
          is_even ? (centre.radius - start.radius) / (end.radius - start.radius) : share;
      off += Length(CubicAt(cell.points, along) - centre.point);
    }
    return off;
  }

  const Vec2* points_;
  const Hodograph3& hodograph_;
};

}  // namespace

bool AppendCentres(const Vec2* points, const Hodograph3& hodograph, double from, double to,
                   double tol, Array<CubicCell>& cells) {
  const Centres centres(points, hodograph);
  const Centres::Centre start = centres.At(from), end = centres.At(to);
  const double turn =
      std::atan2(std::fabs(Cross(start.normal, end.normal)), Dot(start.normal, end.normal));
  // All of it lies between its chord and its tangents.
  const double chord = Length(end.point - start.point);
  if (tol >= chord * std::tan(std::min(turn, 1.5))) return true;
  return centres.Append(from, start, to, end, tol, kMostHalvings, cells);
}

}  // namespace kurvo::outline
