// Cubics over a chord that are fitted by area and first moment.
#pragma once

#include "base/vec2.h"

namespace kurvo::outline {

// Area and first moment under a curve over its chord, which is [0, 1] of the x axis: the integrals
// of y dx and x y dx.
struct Under {
  double area, moment;
};

// Nodes and weights of the Gauss-Legendre rule of five points on [0, 1]: exact up to degree 9, the
// integrand x y dx of a cubic having degree 8.
inline constexpr double kFiveNodes[] = {0.046910077030668, 0.230765344947158, 0.5,
                                        0.769234655052842, 0.953089922969332};
inline constexpr double kFiveWeights[] = {0.118463442528095, 0.239314335249683, 0.284444444444444,
                                          0.239314335249683, 0.118463442528095};

// A cubic over the chord [0, 1] with handles of lengths a and b in given directions.
class OverChord {
 public:
  OverChord(Vec2 leaves, Vec2 arrives) : leaves_(leaves), arrives_(arrives) {}

  // The lengths for which area and first moment are those of the run: a fit of order 6 (Levien,
  // Fitting cubic Bezier curves, 2021). By Newton's method on both equations from the guess that
  // they hold. Result: whether it arrived.
  bool Solve(const Under& want, double& a, double& b) const;

 private:
  Under At(double a, double b, double& area_a, double& area_b, double& moment_a,
           double& moment_b) const;

  Vec2 leaves_, arrives_;
};

}  // namespace kurvo::outline
