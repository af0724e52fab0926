#include "sweep/on_strand.h"

#include "strand/bracket.h"

namespace kurvo::outline {

// Along the chord between the two heights the strand only advances there, so the foot is bracketed.
// (By its height alone, or its side alone, a point beside a strand may lie far along it.)
double SourceParameter(const Stage& stage, int32_t number, int32_t vertex, Vec2 point) {
  const Strand& strand = stage.strand(number);
  const Vec2 low = {strand.x_low, strand.y_low}, high = {strand.x_high, strand.y_high};
  if (vertex == strand.low || point == low) return strand.u_low;
  if (vertex == strand.high || point == high) return strand.u_high;
  const double from = strand.is_flat ? 0 : strand.ParameterAt(point.y - stage.tol());
  const double to = strand.is_flat ? 1 : strand.ParameterAt(point.y + stage.tol());
  const Vec2 a = strand.PointAt(from), b = strand.PointAt(to);
  const auto along = [&](double v) { return Dot(strand.PointAt(v) - point, b - a); };
  const double at_a = Dot(a - point, b - a), at_b = Dot(b - point, b - a);
  if (!(at_a < 0)) return strand.SourceAt(from);
  if (!(at_b > 0)) return strand.SourceAt(to);
  return strand.SourceAt(SignChangeBetween(along, from, to, at_a, at_b));
}

}  // namespace kurvo::outline
