// The turning points of a polynomial in [0, 1], and its roots between them.
#include "eval/turning_points.h"

#include <algorithm>
#include <cmath>

namespace kurvo {
namespace {

constexpr int kMaxSteps = 80;  // bisection alone needs 53 inside [0, 1]
constexpr double kParameterRounding = 2e-16;
constexpr double kSettled = 1e-10;  // of a parameter: Newton's next step would be its square

// Appends the roots of f between neighbours of `turning`, its turning points.
void AppendRootsBetween(const Polynomial& f, const Polynomial& derivative, const RootList& turning,
                        RootList& roots) {
  double left = 0.0;
  double at_left = Value(f, left);
  for (std::size_t i = 0; i <= turning.size(); ++i) {
    const double right = i < turning.size() ? turning[i] : 1.0;
    const double at_right = Value(f, right);
    if ((at_left < 0.0 && at_right > 0.0) || (at_left > 0.0 && at_right < 0.0))
      roots.Append(BracketedRoot(f, derivative, left, right));
    left = right;
    at_left = at_right;
  }
}

// Appends the roots of f, between those of its derivative.
void AppendRoots(const Polynomial& f, RootList& roots) {
  const Polynomial derivative = Derivative(f);
  RootList turning;  // none of a line or a constant
  if (f.count() > 2) AppendRoots(derivative, turning);
  AppendRootsBetween(f, derivative, turning, roots);
}

}  // namespace

double BracketedRoot(const Polynomial& f, const Polynomial& derivative, double a, double b) {
  const bool rising = Value(f, a) < 0.0;
  double t = 0.5 * (a + b);
  for (int step = 0; step < kMaxSteps; ++step) {
    const double value = Value(f, t);
    if (value == 0.0) return t;
    if ((value < 0.0) == rising)
      a = t;
    else
      b = t;
    const double newton = t - value / Value(derivative, t);
    if (kSettled >= std::fabs(newton - t)) return std::clamp(newton, a, b);
    const double next = newton > a && newton < b ? newton : 0.5 * (a + b);
    if (kParameterRounding >= std::fabs(next - t)) return next;
    t = next;
  }
  return t;
}

RootList TurningPoints(const Polynomial& f) {
  RootList turning;
  AppendRoots(Derivative(f), turning);
  return turning;
}

}  // namespace kurvo
