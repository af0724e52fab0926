// A smooth run of cubics, with one parameter: s in [i, i + 1] runs through cell i.
#pragma once

#include <algorithm>

#include "fit/cubic.h"
#include "fit/cubic_cells.h"

namespace kurvo::outline {

struct CellRun {
  Array<CubicCell> cells;
  Vec2 first_tangent, last_tangent;  // unit vectors

  double Size() const { return static_cast<double>(cells.size()); }
  std::size_t CellOf(double s) const {
    return std::min(static_cast<std::size_t>(s), cells.size() - 1);
  }
  Vec2 PointAt(double s) const {
    const std::size_t i = CellOf(s);
    const double t = s - static_cast<double>(i);
    return t >= 1 ? cells[i].points[3] : CubicAt(cells[i].points, t);
  }
  Vec2 VelocityAt(double s) const {
    const std::size_t i = CellOf(s);
    return CubicDerivatives(cells[i].points, s - static_cast<double>(i)).first;
  }
  Vec2 TangentAt(double s) const;

  // Calls visit(Bezier points) for the part of each cell between two parameters, until one says
  // false. Result: whether none did.
  template <class Visit>
  bool ForEachPart(double from, double to, const Visit& visit) const {
    Vec2 part[4];
    for (std::size_t i = CellOf(from); static_cast<double>(i) < to; ++i) {
      const double start = static_cast<double>(i);
      const double low = std::max(from - start, 0.0), high = std::min(to - start, 1.0);
      if (low == 0 && high == 1) {
        if (!visit(cells[i].points)) return false;
      } else if (low < high) {
        CubicPart(cells[i].points, low, high, part);
        if (!visit(static_cast<const Vec2*>(part))) return false;
      }
    }
    return true;
  }
};

// Cuts the cells at their cusps, where the velocity vanishes within rounding.
void CutAtCusps(Array<CubicCell>& cells);

// Whether the direction goes on from a cell to the next.
bool GoesOn(const CubicCell& cell, const CubicCell& next);

// The directions in which a cell leaves its start and arrives at its end, also where its handles
// have no length; (0, 0) of a point.
Vec2 DirectionAtStart(const CubicCell& cell);
Vec2 DirectionAtEnd(const CubicCell& cell);

}  // namespace kurvo::outline
