// The angles that an arc sweeps, and the relation between angle and parameter.
#pragma once

#include "calc/directions.h"

namespace kurvo {

constexpr double kSpanMargin = 1e-6;    // radians, belonging to the sweep beyond each end
constexpr double kStartSlack = 0.0001;  // radians before the start that stay negative angles

// An arc as the angles it sweeps, always counter-clockwise: for a clockwise arc from its end to its
// start.
struct ArcSpan {
  double start_angle;  // polar angle, radians
  double sweep;        // radians; 0 for a full circle, whose ends are the same point
  bool reversed;       // the arc runs clockwise: t = 0 is where the sweep ends
};

inline ArcSpan SpanOf(const KurvoArc& arc, double tol) {
  const bool reversed = arc.normal[2] < 0;
  const Vec2 centre = Planar(arc.centre);
  const double start = AngleOf(Planar(reversed ? arc.end : arc.start) - centre);
  const double end = AngleOf(Planar(reversed ? arc.start : arc.end) - centre);
  return {start, OneTurn(end - start, tol), reversed};
}

// The z of the normal with which the arc runs the other way. A normal without a sign stands for
// counter-clockwise, as does its negative: its opposite is -1.
inline double OppositeSense(const KurvoArc& arc) {
  const double z = arc.normal[2];
  return z < 0.0 || z > 0.0 ? -z : -1.0;
}

// The polar angle of the point at parameter t.
inline double AngleAt(const ArcSpan& span, double t, double tol) {
  const double u = span.reversed ? 1 - t : t;
  const double angle = u * span.sweep + span.start_angle;
  return angle + tol > kTwoPi ? angle - kTwoPi : angle;
}

// The angle from the start of the sweep to a direction, in [-kStartSlack, 2 pi - kStartSlack].
// Fixed behaviour: this slack and kSpanMargin differ. Do not unify.
inline double AngleFromStart(const ArcSpan& span, Vec2 direction) {
  return OneTurn(AngleOf(direction) - span.start_angle, kStartSlack);
}

// True when an angle counted from the start lies in the sweep, margins included.
inline bool SweepsAngle(const ArcSpan& span, double from_start) {
  return from_start >= -kSpanMargin && span.sweep + kSpanMargin >= from_start;
}

// True when a direction lies in the sweep, margins included.
inline bool Sweeps(const ArcSpan& span, Vec2 direction) {
  return SweepsAngle(span, AngleFromStart(span, direction));
}

// Writes the parameter of p's direction into t, below 0 or above 1 outside the sweep and not finite
// for a sweep of 0. Returns true when p lies on the arc, by all three coordinates.
bool ParameterOnArc(const KurvoArc& arc, const ArcSpan& span, Vec3 p, double length_tol, double& t);

}  // namespace kurvo
