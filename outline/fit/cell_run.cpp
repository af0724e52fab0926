#include "fit/cell_run.h"

#include <cmath>

#include "strand/roots.h"

namespace kurvo::outline {
namespace {

constexpr double kLeastSpeed = 1e-6;   // of the longest handle: where a cell stands still
constexpr double kSmooth = 1e-9;       // radians: a joint that turns more is a corner
constexpr double kLeastHandle = 1e-5;  // of the longest: a shorter one has no direction

Vec2 FirstDirection(const Vec2& from, const Vec2& a, const Vec2& b, const Vec2& c) {
  const Vec2 steps[] = {a - from, b - from, c - from};
  double most = 0;
  for (const Vec2& step : steps) most = std::max(most, Length(step));
  for (const Vec2& step : steps)
    if (Length(step) > kLeastHandle * most) return (1 / Length(step)) * step;
  return {0, 0};
}

void CutCell(const CubicCell& cell, double low, double high, Array<CubicCell>& cells) {
  CubicCell part = cell;
  CubicPart(cell.points, low, high, part.points);
  part.from = cell.from + low * (cell.to - cell.from);
  part.to = cell.from + high * (cell.to - cell.from);
  if (!cells.empty() && low > 0) part.points[0] = cells.back().points[3];
  if (low == 0) part.points[0] = cell.points[0];
  if (high == 1) part.points[3] = cell.points[3];
  cells.push_back(part);
}

}  // namespace

Vec2 CellRun::TangentAt(double s) const {
  if (s <= 0) return first_tangent;
  if (s >= Size()) return last_tangent;
  const Vec2 velocity = VelocityAt(s);
  const double speed = Length(velocity);
  if (speed > 0) return (1 / speed) * velocity;
  return DirectionAtStart(cells[CellOf(s)]);
}

// The square of the speed is least where V . V' changes its sign.
void CutAtCusps(Array<CubicCell>& cells) {
  Array<CubicCell> cut;
  for (const CubicCell& cell : cells) {
    const Vec2* p = cell.points;
    const Vec2 h[] = {p[1] - p[0], p[2] - p[1], p[3] - p[2]};
    const Vec2 low = h[1] - h[0], high = h[2] - h[1];
    const double coefficients[] = {Dot(h[0], low), (2 * Dot(h[1], low) + Dot(h[0], high)) / 3,
                                   (Dot(h[2], low) + 2 * Dot(h[1], high)) / 3, Dot(h[2], high)};
    const double most = std::max({SquaredLength(h[0]), SquaredLength(h[1]), SquaredLength(h[2])});
    RootList roots;
    AddSignChanges(coefficients, 3, roots);
    double from = 0;
    for (const double t : roots) {
      const Vec2 third = (1.0 / 3) * CubicDerivatives(p, t).first;
      if (!(kLeastSpeed * kLeastSpeed * most >= SquaredLength(third))) continue;
      CutCell(cell, from, t, cut);
      from = t;
    }
    if (from > 0)
      CutCell(cell, from, 1, cut);
    else
      cut.push_back(cell);
  }
  cells.swap(cut);
}

bool GoesOn(const CubicCell& cell, const CubicCell& next) {
  const Vec2 before = DirectionAtEnd(cell), after = DirectionAtStart(next);
  return Dot(before, after) > 0 && kSmooth >= std::fabs(Cross(before, after));
}

Vec2 DirectionAtStart(const CubicCell& cell) {
  return FirstDirection(cell.points[0], cell.points[1], cell.points[2], cell.points[3]);
}

Vec2 DirectionAtEnd(const CubicCell& cell) {
  return -FirstDirection(cell.points[3], cell.points[2], cell.points[1], cell.points[0]);
}

}  // namespace kurvo::outline
