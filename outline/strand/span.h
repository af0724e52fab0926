// Spans: what chains are made of once composites are walked and splines are cut at their knots.
#pragma once

#include <cstdint>

#include "base/bounds.h"
#include "base/memory.h"
#include "base/vec2.h"

namespace kurvo::outline {

// A smooth piece of one curve of a chain, in the coordinates of a frame, over u in [0, 1]. Its
// arrays belong to whoever made it.
struct Span {
  // Bezier curves of degree 0 and 1 are lines. The weights of a rational Bezier are positive, so
  // that it stays in the hull of its points.
  enum class Kind : uint8_t { kLine, kArc, kBezier, kRational };

  Kind kind = Kind::kLine;
  int32_t degree = 1;               // of the Bezier kinds; 1 for a line, 0 for an arc
  int32_t curve = 0;                // index in the chain
  double from = 0, to = 1;          // parameters of that curve: u is at from + u (to - from)
  const Vec2* points = nullptr;     // degree + 1; of a rational Bezier times the weights; the two
                                    // ends of an arc
  const double* weights = nullptr;  // degree + 1 of a rational Bezier
  Vec2 centre = {};                 // of an arc
  double radius = 0;
  double angle = 0, sweep = 0;  // at the start, and to the end: radians, counter-clockwise

  Vec2 Start() const { return kind == Kind::kRational ? (1 / weights[0]) * points[0] : points[0]; }
  Vec2 End() const {
    if (kind == Kind::kRational) return (1 / weights[degree]) * points[degree];
    return points[kind == Kind::kArc ? 1 : degree];
  }
  double ParameterAt(double u) const { return u >= 1 ? to : from + u * (to - from); }
  double At(double parameter) const { return (parameter - from) / (to - from); }
};

// The point at u. The only evaluator of points: who asks twice gets the same bits.
Vec2 PointAt(const Span& span, double u);

// Point and derivatives by u.
struct Jet {
  Vec2 point, first, second;
};
Jet JetAt(const Span& span, double u);

// The first derivative by u.
Vec2 VelocityAt(const Span& span, double u);

// The direction of travel at u, a unit vector: where the velocity vanishes, as at a cusp or where
// control points coincide, that in which the span leaves u, at the end that in which it arrives.
// (0, 0) of a span that is a point.
Vec2 TangentAt(const Span& span, double u);

// A box that holds the span: of its control points, for an arc the narrowest.
Bounds HullOf(const Span& span);

// The part from u0 to u1 > u0, with its arrays in the arena. Parts that share an end have the same
// bits there.
Span PartOf(const Span& span, double u0, double u1, Arena& arena);

// A copy whose arrays lie in the arena.
Span Kept(const Span& span, Arena& arena);

}  // namespace kurvo::outline
