// Two Bezier pieces that run alongside each other, closer than parts of them are long.
#pragma once

#include "control/bernstein.h"
#include "eval/root_list.h"
#include "relate/bezier_piece.h"

namespace kurvo {

// Boxes and fat lines tell parts of such pieces apart only when the parts are as flat as the gap is
// narrow. Their difference tells at once: let phi be the parameter of A next to the point at t of
// B, a linear function, D(t) = B(t) - A(phi(t)), and K the cone of the tangents of A between s and
// phi(t). Then
//   B(t) - A(s) = D(t) + (A(phi(t)) - A(s)),
// where the second term lies in K or -K. So the points are apart where D(t) lies outside of both.
//
// And where D is so small that A is straight over its length, the gap at t is that of D(t) across
// the tangent, but for a share of the tolerance. Then common points lie where the gap is 0 or
// least, or at an end; these places are few, and the parts need not be looked at.
class Alongside {
 public:
  // Finds phi from the nearest points of the ends. Plain pieces of one degree up to
  // kMaxPowerBasisDegree only, whose difference is small against their size: of others nothing is
  // ever known.
  Alongside(const BezierPiece& a, const BezierPiece& b, double tol);

  // Where the gap across the tangent changes its sign, or is least.
  RootList ClosestPlaces() const;
  ParameterPair PairAt(double t) const { return {ToFirst(t), t}; }

  // True when no points of the two parts come within `slack` of each other, or only next to one of
  // the closest places. Cost: quadratic in the degree.
  bool Settles(const BezierPiece& part_a, const BezierPiece& part_b, double slack) const;

 private:
  using Points = double[kMaxPowerBasisDegree + 1][3];

  double ToFirst(double t) const { return start_ + t * (end_ - start_); }
  bool GapTells(const Points& on_a, const Points& d) const;

  const double tol_;
  bool applies_ = false;
  int32_t degree_ = 0;
  double start_ = 0.0;  // phi(0)
  double end_ = 1.0;    // phi(1)
  Points points_;       // of A
  Points beside_;       // of A over the range of phi
  Points difference_;   // D
};

}  // namespace kurvo
