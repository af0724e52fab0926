// The turning points of a polynomial in [0, 1], and its roots between them.
#include "eval/turning_points.h"

#include <algorithm>
#include <cmath>

#include "eval/bracketed_newton.h"

namespace kurvo {
namespace {

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

void AppendInside(double root, RootList& roots) {
  if (root > 0.0 && 1.0 > root) roots.Append(root);
}

// The roots of c + b t + a t^2 in ascending order, by the formula that does not cancel (Press and
// others, Numerical Recipes, 2007, section 5.6).
void AppendQuadratic(double c, double b, double a, RootList& roots) {
  const double discriminant = b * b - 4.0 * a * c;
  if (!(discriminant > 0.0)) return;
  const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
  const double one = q / a, other = c / q;
  AppendInside(std::min(one, other), roots);
  AppendInside(std::max(one, other), roots);
}

// Appends the roots of f, between those of its derivative.
void AppendRoots(const Polynomial& f, RootList& roots) {
  if (f.count() == 3) return AppendQuadratic(f[0], f[1], f[2], roots);
  const Polynomial derivative = Derivative(f);
  RootList turning;  // none of a line or a constant
  if (f.count() > 2) AppendRoots(derivative, turning);
  AppendRootsBetween(f, derivative, turning, roots);
}

}  // namespace

double BracketedRoot(const Polynomial& f, const Polynomial& derivative, double a, double b) {
  const auto at = [&](double t) { return ValueAndSlope{Value(f, t), Value(derivative, t)}; };
  return BracketedNewton(a, b, 0.5 * (a + b), Value(f, a) < 0.0, at);
}

RootList SignChanges(const Polynomial& f) {
  RootList roots;
  AppendRoots(f, roots);
  return roots;
}

RootList TurningPoints(const Polynomial& f) { return SignChanges(Derivative(f)); }

}  // namespace kurvo
