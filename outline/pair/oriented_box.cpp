#include "pair/oriented_box.h"

#include <cmath>

namespace kurvo::outline {

OrientedBox OrientedBoxOf(const Span& span) {
  const Vec2 chord = span.End() - span.Start();
  const double length = Length(chord);
  OrientedBox box;
  box.along = length > 0 ? (1 / length) * chord : Vec2{1, 0};
  Bounds bounds;  // along the chord and across
  const auto add = [&](Vec2 p) { bounds.Add({Dot(box.along, p), Cross(box.along, p)}); };
  add(span.Start());
  add(span.End());
  if (span.kind == Span::Kind::kArc) {
    add(PointAt(span, 0.5));  // of less than half a turn: the farthest from its chord
  } else {
    for (int i = 1; i < span.degree; ++i)
      add(span.kind == Span::Kind::kRational ? (1 / span.weights[i]) * span.points[i]
                                             : span.points[i]);
  }
  const Vec2 middle = 0.5 * (bounds.low + bounds.high);
  box.centre = middle.x * box.along + middle.y * Left(box.along);
  box.half_length = 0.5 * (bounds.high.x - bounds.low.x);
  box.half_width = 0.5 * (bounds.high.y - bounds.low.y);
  return box;
}

Array<OrientedBox> OrientedBoxesOf(const Array<Piece>& pieces) {
  Array<OrientedBox> boxes;
  boxes.reserve(pieces.size());
  for (const Piece& piece : pieces) boxes.push_back(OrientedBoxOf(piece.span));
  return boxes;
}

bool AreApart(const OrientedBox& a, const OrientedBox& b, double margin) {
  const Vec2 way = b.centre - a.centre;
  const double cosine = std::fabs(Dot(a.along, b.along)), sine = std::fabs(Cross(a.along, b.along));
  const auto apart = [&](double distance, double own, double others) {
    return std::fabs(distance) > own + others + margin;
  };
  const double b_along_a = cosine * b.half_length + sine * b.half_width;
  const double b_across_a = sine * b.half_length + cosine * b.half_width;
  const double a_along_b = cosine * a.half_length + sine * a.half_width;
  const double a_across_b = sine * a.half_length + cosine * a.half_width;
  return apart(Cross(a.along, way), a.half_width, b_across_a) ||
         apart(Cross(b.along, way), b.half_width, a_across_b) ||
         apart(Dot(a.along, way), a.half_length, b_along_a) ||
         apart(Dot(b.along, way), b.half_length, a_along_b);
}

}  // namespace kurvo::outline
