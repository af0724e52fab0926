// The surroundings of one inner knot of a B-spline, and the removal of its occurrences.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/point.h"

namespace kurvo {

// Everything that a knot u of multiplicity s acts on, for a B-spline of degree p: the control
// points of the two spans beside it, s + p + 1 of them, and their knots, s + 2 p + 1. The left span
// begins at knot p, the right one at knot p + s, the last occurrence of u.
template <std::size_t kDim>
class KnotWindow {
 public:
  explicit KnotWindow(int32_t degree) : degree_(degree) {}

  // The window around the knots u[last - s + 1 .. last], all alike, in arrays where knots and
  // points up to `last` stand at their index and those behind it start at `tail`.
  void Load(const double* u, const double (*points)[kDim], int32_t last, int32_t s, int32_t tail);

  // The same window with one occurrence of u less. In general no removal is exact; the curve
  // shows how far it is from that.
  void LoadWithoutOne(const KnotWindow& other);

  // The point of the left (right) span at t, or of its continuation.
  Vec2 LeftPoint(double t) const { return Point(degree_, t); }
  Vec2 RightPoint(double t) const { return Point(degree_ + multiplicity_, t); }

  int32_t multiplicity() const { return multiplicity_; }

  // Writes the control points where Load found them.
  void Store(double (*points)[kDim]) const;

 private:
  // As the record has it, and in the homogeneous form in which knots are removed.
  struct ControlPoint {
    double stored[kDim];
    double lifted[kDim];
  };

  static ControlPoint Lifted(const double (&stored)[kDim]);
  static ControlPoint Combined(double a, const ControlPoint& p, double b, const ControlPoint& q);
  Vec2 Point(int32_t span, double t) const;

  int32_t degree_;
  int32_t multiplicity_ = 0;
  int32_t first_ = 0;  // index of the first point, and of the first knot
  std::vector<double> knots_;
  std::vector<ControlPoint> points_;
};

}  // namespace kurvo
