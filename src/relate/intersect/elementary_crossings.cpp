// Common points of lines and arcs among themselves, by closed formulas.
#include <algorithm>
#include <cmath>

#include "calc/directions.h"
#include "eval/parc2d.h"
#include "eval/pline2d.h"
#include "relate/intersect/pair_crossings.h"

namespace kurvo {
namespace {

double ParameterOf(const PCurve2D& curve, Vec2 p) {
  double t = 0.0;
  curve.Parameter(OnPlane(p), t);
  return t;
}

// Two segments on one line that both end: a stretch, a shared end, or nothing.
Common CrossCollinear(const PLine2D& a, double length_a, const KurvoLine& b, double tol,
                      Crossings& found) {
  const double from = ParameterOf(a, Planar(b.start));
  const double to = ParameterOf(a, Planar(b.end));
  const double low = std::max(0.0, std::min(from, to));
  const double high = std::min(1.0, std::max(from, to));
  const double common = (high - low) * length_a;
  if (common > tol) return Common::kStretch;
  if (!(common >= -tol)) return Common::kNothing;
  const bool at_end = std::min(from, to) > 0.5;  // of the first segment
  const bool start_nearer = (from < to) == at_end;
  found.push_back({at_end ? 1.0 : 0.0, start_nearer ? 0.0 : 1.0});
  return Common::kPoints;
}

// The angle from one direction to another, counter-clockwise, in [0, 2 pi).
double TurnTo(double from, double to) {
  const double turn = to - from;
  return turn < 0.0 ? turn + kTwoPi : turn;
}

// Arcs of one circle. Without an end on both, one of them is a whole circle and they share a
// stretch.
Common CrossCocircular(const KurvoArc& a, const KurvoArc& b, Bounded bounded, GlobalVar& g,
                       Crossings& found) {
  if (!bounded.both()) return Common::kStretch;
  const ArcSpan span_a = SpanOf(a, g.epsilon), span_b = SpanOf(b, g.epsilon);
  const double start = TurnTo(span_a.start_angle, span_b.start_angle);  // of b, seen from a's start
  const double end = start + span_b.sweep;
  const double ahead = std::min(span_a.sweep, end) - start;
  const double around = std::min(span_a.sweep, end - kTwoPi);  // b may reach a's start from behind
  if (a.radius * std::max(ahead, around) > g.epsilon) return Common::kStretch;
  for (const double end_a : {0.0, 1.0}) {
    for (const double end_b : {0.0, 1.0}) {
      const Vec3 p = Spatial(end_a == 0.0 ? a.start : a.end);
      const Vec3 q = Spatial(end_b == 0.0 ? b.start : b.end);
      if (SamePoint(p, q, g.epsilon)) found.push_back({end_a, end_b});
    }
  }
  return found.empty() ? Common::kNothing : Common::kPoints;
}

// Half the chord that two circles share, from the area of the triangle with sides r, s and d by
// Kahan's stable form of Heron's formula: accurate where the triangle is a needle, that is where
// circles touch.
double HalfChord(double r, double s, double d) {
  double x = r, y = s, z = d;  // descending
  if (x < y) std::swap(x, y);
  if (y < z) std::swap(y, z);
  if (x < y) std::swap(x, y);
  const double product = (x + (y + z)) * (z - (x - y)) * (z + (x - y)) * (x + (y - z));
  return 0.5 * std::sqrt(std::max(product, 0.0)) / d;
}

}  // namespace

Common CrossLines(const KurvoLine& a, const KurvoLine& b, Bounded bounded, GlobalVar& g,
                  Crossings& found) {
  const double tol = g.epsilon;
  const Vec2 start = Planar(a.start), along_a = Planar(a.end) - start;
  const Vec2 between = Planar(b.start) - start, along_b = Planar(b.end) - Planar(b.start);
  const PLine2D line_a(a, g), line_b(b, g);
  // Fixed behaviour: the length tolerance bounds this angle unchanged, there is no tolerance for
  // angles here. Do not unify.
  if (!Parallel(along_a, along_b, tol)) {  // Cramer's rule, from the start of the first line
    const double share = Cross(between, along_b) / Cross(along_a, along_b);
    const Vec2 p = start + share * along_a;
    found.push_back({ParameterOf(line_a, p), ParameterOf(line_b, p)});
    return Common::kPoints;
  }
  const double length = Length(along_a);
  if (!(tol >= std::fabs(Cross(along_a, between)) / length)) return Common::kNothing;
  if (!bounded.both()) return Common::kStretch;
  return CrossCollinear(line_a, length, b, tol, found);
}

Common CrossLineArc(const KurvoLine& line, const KurvoArc& arc, GlobalVar& g, Crossings& found) {
  const PLine2D evaluator(line, g);
  const PArc2D circle(arc, g);
  const Vec2 along = Planar(line.end) - Planar(line.start);
  const Vec2 unit = {along.x / Length(along), along.y / Length(along)};
  const Vec2 centre = Planar(arc.centre);
  const double aside = Cross(Planar(line.start) - centre, unit);  // of the line, from the centre
  const Vec2 foot = centre + aside * Vec2{unit.y, -unit.x};
  const double dist = std::fabs(aside);
  const auto add = [&](Vec2 p) {
    found.push_back({ParameterOf(evaluator, p), ParameterOf(circle, p)});
  };
  if (g.epsilon >= std::fabs(dist - arc.radius)) {  // touches, from either side
    add(foot);
    return Common::kPoints;
  }
  if (!(dist < arc.radius)) return Common::kNothing;
  const double half = std::sqrt((arc.radius - dist) * (arc.radius + dist));
  add(foot - half * unit);
  add(foot + half * unit);
  return Common::kPoints;
}

Common CrossArcs(const KurvoArc& a, const KurvoArc& b, Bounded bounded, GlobalVar& g,
                 Crossings& found) {
  const double tol = g.epsilon;
  const Vec2 centre = Planar(a.centre), to_b = Planar(b.centre) - centre;
  const double r = a.radius, s = b.radius, dist = Length(to_b);
  if (tol >= dist && tol >= std::fabs(r - s)) return CrossCocircular(a, b, bounded, g, found);

  const PArc2D arc_a(a, g), arc_b(b, g);
  const auto add = [&](Vec2 p) { found.push_back({ParameterOf(arc_a, p), ParameterOf(arc_b, p)}); };
  const Vec2 unit = {to_b.x / dist, to_b.y / dist};
  if (tol >= std::fabs(dist - (r + s))) {  // touch from outside: half way across the gap
    add(centre + (0.5 * (r + (dist - s))) * unit);
  } else if (tol >= std::fabs(dist - std::fabs(r - s))) {  // one inside the other
    const double reach = r > s ? 0.5 * (r + (dist + s)) : -0.5 * (r + (s - dist));
    add(centre + reach * unit);
  } else if (dist < r + s && dist > std::fabs(r - s)) {
    const double reach = 0.5 * (dist + (r - s) * ((r + s) / dist));
    const Vec2 aside = HalfChord(r, s, dist) * Vec2{-unit.y, unit.x};
    add(centre + reach * unit + aside);
    add(centre + reach * unit - aside);
  } else {
    return Common::kNothing;
  }
  return Common::kPoints;
}

}  // namespace kurvo
