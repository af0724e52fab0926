// The coordinates that everything is computed in: near the origin, of size about 1.
#pragma once

#include "base/bounds.h"
#include "base/vec2.h"

namespace kurvo::outline {

// Moves the middle of the input to the origin and divides by a power of two, which is exact but for
// the move: squares neither overflow nor vanish, and what lies far from the origin loses nothing in
// sums of products.
class Frame {
 public:
  Frame() = default;
  // Around the box of all control points, in the caller's coordinates.
  explicit Frame(const Bounds& box);

  Vec2 Inwards(const double* p) const { return Inwards({p[0], p[1]}); }
  Vec2 Inwards(Vec2 p) const { return inverse_ * p - scaled_origin_; }
  Vec2 Outwards(Vec2 p) const { return scale_ * (p + scaled_origin_); }
  double LengthInwards(double length) const { return inverse_ * length; }
  double LengthOutwards(double length) const { return scale_ * length; }
  double AreaOutwards(double area) const { return scale_ * (scale_ * area); }

  double size() const { return size_; }  // the longer side of the box, in the caller's unit

 private:
  Vec2 scaled_origin_ = {};  // divided by the scale
  double scale_ = 1;         // a power of two
  double inverse_ = 1;
  double size_ = 0;
};

}  // namespace kurvo::outline
