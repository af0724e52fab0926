// Velocities of free-form spans in Bernstein form.
#pragma once

#include "strand/check.h"
#include "strand/span.h"

namespace kurvo::outline {

// v(u) = N(u) / w(u)^2. Uninitialised until it is set.
struct Hodograph {
  static constexpr int kMostDegree = 2 * outline::kMostDegree - 2;

  int degree, weight_degree;  // of N and of w; the latter 0 for w = 1
  Vec2 points[kMostDegree + 1];
  double weights[outline::kMostDegree + 1];

  // That of a span of this kind.
  void SetPolynomial(const Span& span);
  void SetRational(const Span& span);

  // The length of the span from u0 to u1 > u0, both in [0, 1].
  double Integral(double u0, double u1) const;
};

}  // namespace kurvo::outline
