#include "sweep/on_strand.h"

#include "strand/bracket.h"

namespace kurvo::outline {

namespace {

// Along the chord between two heights beside the point a strand only advances, so that the foot is
// bracketed. (By its height alone, or its side alone, a point beside a strand may lie far along
// it.)
double FootOnBezier(const Strand& strand, double tol, Vec2 point) {
  const double from = strand.is_flat ? 0 : strand.ParameterAt(point.y - tol);
  const double to = strand.is_flat ? 1 : strand.ParameterAt(point.y + tol);
  const Vec2 a = strand.PointAt(from), b = strand.PointAt(to);
  const auto along = [&](double v) { return Dot(strand.PointAt(v) - point, b - a); };
  const double at_a = Dot(a - point, b - a), at_b = Dot(b - point, b - a);
  if (!(at_a < 0)) return from;
  if (!(at_b > 0)) return to;
  constexpr double kSame = 0x1p-20;  // of tol: how far beside the foot it may be
  return SignChangeBetween(along, from, to, at_a, at_b, kSame * tol * Length(b - a));
}

}  // namespace

double SourceParameter(const Strand& strand, double tol, int32_t vertex, Vec2 point) {
  const Vec2 low = {strand.x_low, strand.y_low}, high = {strand.x_high, strand.y_high};
  if (vertex == strand.low || point == low) return strand.u_low;
  if (vertex == strand.high || point == high) return strand.u_high;
  if (strand.kind == Span::Kind::kLine) {
    const Vec2 chord = high - low;
    const double share = Dot(point - low, chord) / Dot(chord, chord);
    return strand.SourceAt(share > 0 ? share : 0);
  }
  if (strand.kind == Span::Kind::kArc) return strand.SourceAt(strand.TurnTo(point));
  return strand.SourceAt(FootOnBezier(strand, tol, point));
}

}  // namespace kurvo::outline
