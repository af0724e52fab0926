// Foot point and parameter on one Bezier curve, for the plain and the rational evaluator alike.
//
// A `Bezier` here has: HasFootPoints(), whether its foot-point polynomial fits; ToSegment(p), its
// polynomials relative to p; FirstFootRoots(p), their foot roots or the first of them; Ends();
// Position(t); tol().
#pragma once

#include <algorithm>

#include "eval/pcurve2d.h"
#include "eval/segment.h"

namespace kurvo {

struct BezierEnds {  // control points
  Vec3 first;
  Vec3 last;
};

// The nearer end, the last one on a tie.
template <class Bezier>
NearestOnCurve NearestEnd(const Bezier& bezier, Vec2 p) {
  const BezierEnds ends = bezier.Ends();
  const double to_first = Length(p - Planar(ends.first));
  const double to_last = Length(p - Planar(ends.last));
  return to_last > to_first ? NearestOnCurve{0.0, to_first} : NearestOnCurve{1.0, to_last};
}

// The point that a projection takes: that at the first of the foot roots, the other ones not
// compared (fixed behaviour, callers rely on the first). Without a root, and where the first lies
// beyond an end, it is the nearer end.
struct Projection {
  bool at_end = false;
  NearestOnCurve nearest;
};

template <class Bezier>
Projection ProjectionAmong(const Bezier& bezier, const RootList& roots, Vec2 p) {
  if (roots.empty() || !OnUnitInterval(roots.front(), bezier.tol()))
    return {true, NearestEnd(bezier, p)};
  const double foot = std::clamp(roots.front(), 0.0, 1.0);
  return {false, {foot, Length(p - Planar(bezier.Position(foot)))}};
}

template <class Bezier>
Projection ProjectionOf(const Bezier& bezier, Vec2 p) {
  return ProjectionAmong(bezier, bezier.FirstFootRoots(p), p);
}

template <class Bezier>
bool ProjectToBezier(const Bezier& bezier, Vec3& p) {
  const auto [at_end, nearest] = ProjectionOf(bezier, Planar(p));
  if (!at_end)
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
  const RootList roots = FootRoots(relative);
  for (const double foot : FootPoints(roots, bezier.tol()))
    if (on({foot, Length(Planar(p) - position(foot))})) return Incidence::kOn;
  if (on(NearestEnd(bezier, Planar(p)))) return Incidence::kOn;
  t = ProjectionAmong(bezier, roots, Planar(p)).nearest.t;
  return Incidence::kOff;
}

template <class Bezier>
NearestOnCurve NearestOnBezier(const Bezier& bezier, Vec2 p) {
  return ProjectionOf(bezier, p).nearest;
}

}  // namespace kurvo
