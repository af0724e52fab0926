// Cubics over a chord that are fitted by area and first moment.
#pragma once

#include "base/vec2.h"

namespace kurvo::outline {

// Area and first moment under a curve over its chord, which is [0, 1] of the x axis: the integrals
// of y dx and x y dx.
struct Under {
  double area, moment;
};

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
