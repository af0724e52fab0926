// Foot point and parameter on one Bezier curve, for the plain and the rational evaluator alike.
//
// A `Bezier` here has: HasFootPoints(), whether its foot-point polynomial fits; ToSegment(p), its
// polynomials relative to p; Ends(); Position(t); tol().
#pragma once

#include "eval/pcurve2d.h"
#include "eval/segment.h"

namespace kurvo {

struct BezierEnds {  // control points
  Vec3 first;
  Vec3 last;
};

// The point that a projection takes: that at the first foot point, the other ones not compared
// (fixed behaviour, callers rely on the first); without any, the nearer end, the last one on a tie.
template <class Bezier>
NearestOnCurve NearestOfFeet(const Bezier& bezier, const RootList& feet, Vec2 p) {
  if (!feet.empty()) return {feet.front(), Length(p - Planar(bezier.Position(feet.front())))};
  const BezierEnds ends = bezier.Ends();
  const double to_first = Length(p - Planar(ends.first));
  const double to_last = Length(p - Planar(ends.last));
  return to_last > to_first ? NearestOnCurve{0.0, to_first} : NearestOnCurve{1.0, to_last};
}

template <class Bezier>
bool ProjectToBezier(const Bezier& bezier, Vec3& p) {
  const RootList feet = FootPoints(bezier.ToSegment(Planar(p)), bezier.tol());
  const NearestOnCurve nearest = NearestOfFeet(bezier, feet, Planar(p));
  if (!feet.empty())
    p = bezier.Position(nearest.t);
  else
    p = nearest.t == 0.0 ? bezier.Ends().first : bezier.Ends().last;
  return true;
}

// A point that the coordinate roots miss, at a multiple root for instance, is still found on the
// curve when any of its foot points, or an end, is within the tolerance.
template <class Bezier>
Incidence ParameterOnBezier(const Bezier& bezier, Vec3 p, double& t) {
  const Segment relative = bezier.ToSegment(Planar(p));
  const auto position = [&](double r) { return Planar(bezier.Position(r)); };
  if (FindParameter(relative, p, bezier.tol(), position, t)) return Incidence::kOn;
  const auto on = [&](const NearestOnCurve& nearest) {
    t = nearest.t;
    return bezier.tol() >= nearest.dist;
  };
  const RootList feet = FootPoints(relative, bezier.tol());
  for (const double foot : feet)
    if (on({foot, Length(Planar(p) - position(foot))})) return Incidence::kOn;
  if (on(NearestOfFeet(bezier, RootList(), Planar(p)))) return Incidence::kOn;
  if (!feet.empty()) t = feet.front();
  return Incidence::kOff;
}

template <class Bezier>
NearestOnCurve NearestOnBezier(const Bezier& bezier, Vec2 p) {
  return NearestOfFeet(bezier, FootPoints(bezier.ToSegment(p), bezier.tol()), p);
}

}  // namespace kurvo
