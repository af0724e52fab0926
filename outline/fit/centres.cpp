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
    double radius;
  };
  Centre At(double u) const {
    const Vec2 v = hodograph_.VelocityAt(u);
    const double speed = Length(v);
    const Vec2 normal = (1 / speed) * Left(v);
    const double radius = speed * speed * speed / Cross(v, hodograph_.BendAt(u));
    return {CubicAt(points_, u) + radius * normal, normal, radius};
  }

  // Cubics that the curve is as fast as at its ends, by the parameter of the cubic, which suits
  // vertices, or by its own length, which suits wide turns.
  bool Append(double from, const Centre& start, double to, const Centre& end, double tol,
              int halvings_left, Array<CubicCell>& cells) const {
    const double way = end.radius - start.radius, middle = 0.5 * (from + to);
    const auto by_length = [&](double, const Centre& centre) {
      return (centre.radius - start.radius) / way;
    };
    const auto by_parameter = [&](double u, const Centre&) { return (u - from) / (to - from); };
    const double third = (to - from) / 3;
    for (const bool is_even : {false, true}) {
      const double first = is_even ? way / 3 : third * GrowthAt(from);
      const double last = is_even ? way / 3 : third * GrowthAt(to);
      const CubicCell cell = {{start.point, start.point + first * start.normal,
                               end.point - last * end.normal, end.point},
                              0,
                              from,
                              to};
      const double off = is_even ? OffOf(cell, by_length) : OffOf(cell, by_parameter);
      if (cells.size() == kMostCubics) return false;
      if (!(tol >= off)) continue;
      cells.push_back(cell);
      return true;
    }
    if (halvings_left == 0) return false;
    const Centre between = At(middle);
    return Append(from, start, middle, between, tol, halvings_left - 1, cells) &&
           Append(middle, between, to, end, tol, halvings_left - 1, cells);
  }

 private:
  // The derivative of the radius |v|^3 / (v x a).
  double GrowthAt(double u) const {
    const Vec2 v = hodograph_.VelocityAt(u), a = hodograph_.BendAt(u);
    const double cross = Cross(v, a), square = SquaredLength(v);
    return std::sqrt(square) * (3 * Dot(v, a) * cross - square * Cross(v, hodograph_.j)) /
           (cross * cross);
  }

  // How far centres are from where a cell has them, at three places together.
  template <class Share>
  double OffOf(const CubicCell& cell, const Share& share) const {
    double off = 0;
    for (const double quarters : {1, 2, 3}) {
      const double u = cell.from + 0.25 * quarters * (cell.to - cell.from);
      const Centre centre = At(u);
      off += Length(CubicAt(cell.points, share(u, centre)) - centre.point);
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
