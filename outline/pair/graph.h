// A piece seen along an axis: side over height.
#pragma once

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
  double low, high;        // heights
  double at_low, at_high;  // sides
  double least, most;      // side less that of the chord at the same height
  int degree;              // of the control points that follow; 0 when there are none
  bool is_rational;        // they have weights
  double side[kMostDegree + 1];
  double height[kMostDegree + 1];
  double weight[kMostDegree + 1];
};

class Graph {
 public:
  Graph(const Piece& piece, Axis axis);

  double low() const { return low_; }
  double high() const { return high_; }
  // The graph's own parameter s, in [0, 1] upwards; that of the piece is u.
  double ParameterAt(double height) const { return ParameterAt(height, {low_, 0}, {high_, 1}, 0); }
  // The same where two points of the graph are known between which it lies, to within `miss`.
  struct Known {
    double height, s;
  };
  double ParameterAt(double height, Known below, Known above, double miss) const;
  double SideAt(double s) const;
  double SlopeAt(double s) const;  // d side / d height
  // The circle of an arc, side and height of its centre; of radius 0 when it is none.
  Vec2 centre() const { return centre_; }
  double radius() const { return radius_; }
  double ToPiece(double s) const { return falls_ ? 1 - s : s; }

  Stretch Between(double low, double high, double s_low, double s_high) const;

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
