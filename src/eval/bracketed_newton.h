// Newton's method that cannot leave its root.
#pragma once

#include <algorithm>
#include <cmath>

namespace kurvo {

struct ValueAndSlope {
  double value;
  double slope;
};

// The root in [a, b] of a function that changes its sign there once, upwards if `rising`, from a
// first guess t between them: Newton's method where it stays between the sign change, bisection
// where it does not, to the last bits (Press and others, Numerical Recipes, 2007, section 9.4).
// `at` gives the function's value and slope.
template <class At>
double BracketedNewton(double a, double b, double t, bool rising, const At& at) {
  constexpr int kMaxSteps = 80;  // bisection alone needs 53 inside [0, 1]
  constexpr double kParameterRounding = 2e-16;
  constexpr double kSettled = 1e-10;  // of a parameter: Newton's next step would be its square
  for (int step = 0; step < kMaxSteps; ++step) {
    const auto [value, slope] = at(t);
    if (value == 0.0) return t;
    ((value < 0.0) == rising ? a : b) = t;
    const double newton = t - value / slope;
    if (kSettled >= std::fabs(newton - t)) return std::clamp(newton, a, b);
    const double next = newton > a && newton < b ? newton : 0.5 * (a + b);
    if (kParameterRounding >= std::fabs(next - t)) return next;
    t = next;
  }
  return t;
}

}  // namespace kurvo
