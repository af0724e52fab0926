// A piece seen along an axis: side over height.
#pragma once

#include <algorithm>

#include "base/vec2.h"
#include "pair/piece.h"
#include "strand/check.h"

namespace kurvo::outline {

// Height along the axis, side to the right of it.
struct Axis {
  Vec2 up;

  Vec2 Right() const { return {up.y, -up.x}; }
};

// Distances along the side are no more than so many times true ones: 1 / cos of 67.5 degrees.
inline constexpr double kSteepest = 2.62;

// The axis along which two pieces of these sectors both advance.
Axis AxisBetween(int first_sector, int second_sector);

// The part of a graph between two heights: its chord, and how far it bends away from it.
struct Stretch {
  double low, high;            // heights
  double at_low, at_high;      // sides
  double least = 0, most = 0;  // side less that of the chord at the same height
  int degree = 0;              // of the control points that follow; 0 when there are none
  bool is_rational = false;    // they have weights
  double side[kMostDegree + 1];
  double height[kMostDegree + 1];
  double weight[kMostDegree + 1];

  Stretch(double from, double to) : low(from), high(to) {}  // without bends: a line's

  // Makes the control points those of a graph (sides and heights, with weights times these; null:
  // none) between two parameters.
  void Cut(int n, const double* x, const double* y, const double* w, double s_low, double s_high);
  // Bounds the bends, where the sides at the ends are known.
  void BendAsControls();
  void BendAsArc(double radius, double bulge);

  double ChordAt(double h) const {
    return at_low + (at_high - at_low) * ((h - low) / (high - low));
  }
};

// A point of a graph: its height, and its parameter.
struct KnownLevel {
  double height, s;
};

// How far the sides of two graphs are from each other where they count as apart, and where as near;
// and how far the curves are whose sides are near for that, whatever their slopes.
struct SideReach {
  double apart, near, distance;
};

// Side of one graph less that of another over a stretch.
struct SideDifference {
  double at_low, at_high, least, most;

  SideDifference(const Stretch& a, const Stretch& b)
      : at_low(a.at_low - b.at_low),
        at_high(a.at_high - b.at_high),
        least(a.least - b.most),
        most(a.most - b.least) {}
  double Low() const { return std::min(at_low, at_high) + least; }
  double High() const { return std::max(at_low, at_high) + most; }
};

// The circle of an arc, side and height of its centre; of radius 0 when it is none. The arc lies to
// the right (1) or to the left (-1) of the centre.
struct Circle {
  Vec2 centre;
  double radius, bulge;
};

class Graph {
 public:
  Graph(const Piece& piece, Axis axis);

  double low() const { return low_; }
  double high() const { return high_; }
  // The graph's own parameter s, in [0, 1] upwards; that of the piece is u.
  double ParameterAt(double height) const { return ParameterAt(height, {low_, 0}, {high_, 1}, 0); }
  // The same where two points of the graph are known between which it lies, to within `miss`.
  double ParameterAt(double height, KnownLevel below, KnownLevel above, double miss) const;
  double LevelAt(double height, double miss) const {
    return ParameterAt(height, {low_, 0}, {high_, 1}, miss);
  }
  double LevelAt(double height, KnownLevel below, KnownLevel above, double miss) const {
    return ParameterAt(height, below, above, miss);
  }
  double SideAt(double s) const;
  double SlopeAt(double s) const;  // d side / d height
  Circle circle() const { return {centre_, radius_, bulge_}; }
  double ToPiece(double s) const { return falls_ ? 1 - s : s; }

  Stretch Between(double low, double high, double s_low, double s_high) const;
  Stretch Whole() const { return Between(low_, high_, 0, 1); }

 private:
  Vec2 Turned(Vec2 p) const { return {Dot(p, axis_.Right()), Dot(p, axis_.up)}; }
  // Side and height of an arc, by its radius; sides of its circle have one sign.
  double SideOfArc(double height) const;
  double HeightOfBezier(double s, double& slope) const;

  Span::Kind kind_;
  int degree_;
  bool falls_;  // heights fall along the piece
  Axis axis_;
  double low_, high_;
  double side_[kMostDegree + 1];  // control points upwards; of a rational piece times the weights
  double height_[kMostDegree + 1];
  double weight_[kMostDegree + 1];  // of a rational piece
  Vec2 centre_ = {};                // of an arc: side and height
  double radius_ = 0, bulge_ = 1;   // the sides of the arc are those of the centre plus or minus
  double angle_ = 0, sweep_ = 0;    // of the piece
};

}  // namespace kurvo::outline
