// Cubics in Bernstein form.
#pragma once

#include <algorithm>
#include <cmath>

#include "base/vec2.h"

namespace kurvo::outline {

inline Vec2 CubicAt(const Vec2* p, double t) {
  const double s = 1 - t;
  return s * (s * (s * p[0] + (3 * t) * p[1]) + (3 * t * t) * p[2]) + (t * t * t) * p[3];
}

// The first and second derivatives by t.
struct CubicDerivatives {
  CubicDerivatives(const Vec2* p, double t) {
    const Vec2 a = p[1] - p[0], b = p[2] - p[1], c = p[3] - p[2];
    const double s = 1 - t;
    const Vec2 low = s * a + t * b, high = s * b + t * c;
    first = 3.0 * (s * low + t * high);
    second = 6.0 * (high - low);
  }
  Vec2 first, second;
};

// The part from a to b, by its blossom (Ramshaw, Blossoms are polar forms, 1989).
inline void CubicPart(const Vec2* p, double a, double b, Vec2* part) {
  const Vec2 a0 = Mix(p[0], p[1], a), a1 = Mix(p[1], p[2], a), a2 = Mix(p[2], p[3], a);
  const Vec2 b0 = Mix(p[0], p[1], b), b1 = Mix(p[1], p[2], b), b2 = Mix(p[2], p[3], b);
  const Vec2 aa0 = Mix(a0, a1, a), aa1 = Mix(a1, a2, a);
  const Vec2 ab0 = Mix(a0, a1, b), ab1 = Mix(a1, a2, b);
  const Vec2 bb0 = Mix(b0, b1, b), bb1 = Mix(b1, b2, b);
  part[0] = Mix(aa0, aa1, a);
  part[1] = Mix(aa0, aa1, b);
  part[2] = Mix(ab0, ab1, b);
  part[3] = Mix(bb0, bb1, b);
}

// The range of (C(t) - origin) . axis over [low, high].
struct Extent {
  double least, most;
};
inline Extent ExtentOf(const Vec2* p, double low, double high, Vec2 origin, Vec2 axis) {
  const auto at = [&](double t) { return Dot(CubicAt(p, t) - origin, axis); };
  const double first = at(low), last = at(high);
  Extent extent = {std::min(first, last), std::max(first, last)};
  // The derivative over 3 is a (1-t)^2 + 2 b t (1-t) + c t^2; its roots, without cancellation.
  const double a = Dot(p[1] - p[0], axis), b = Dot(p[2] - p[1], axis), c = Dot(p[3] - p[2], axis);
  const double square = (a - 2 * b) + c, half = b - a;
  const double discriminant = half * half - square * a;
  if (!(discriminant >= 0)) return extent;
  const double sum = -half - std::copysign(std::sqrt(discriminant), half);
  for (const double t : {sum / square, a / sum}) {
    if (!(t > low && t < high)) continue;
    const double value = at(t);
    extent = {std::min(extent.least, value), std::max(extent.most, value)};
  }
  return extent;
}

}  // namespace kurvo::outline
