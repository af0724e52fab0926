// The nearest points of lines and arcs by closed formulas.
#pragma once

#include <algorithm>

#include "relate/distance/distance_pieces.h"

namespace kurvo {

// A point of a piece and its parameter there.
struct OnPiece {
  double u;
  Vec2 p;
};

namespace internal {

struct LinePart {
  explicit LinePart(const DistancePiece& piece)
      : start(Planar(piece.bezier.points[0])), end(Planar(piece.bezier.points[1])) {}

  OnPiece Start() const { return {0.0, start}; }
  OnPiece End() const { return {1.0, end}; }
  Vec2 Along() const { return end - start; }
  OnPiece At(double u) const {
    u = std::clamp(u, 0.0, 1.0);
    return u == 1.0 ? End() : OnPiece{u, start + u * Along()};
  }
  OnPiece Nearest(Vec2 p) const {
    const double square = Dot(Along(), Along());
    return square > 0.0 ? At(Dot(p - start, Along()) / square) : Start();
  }

  Vec2 start;
  Vec2 end;
};

struct ArcPart {
  explicit ArcPart(const DistancePiece& piece)
      : circle(piece.circle),
        start(Planar(piece.bezier.points[0])),
        end(Planar(piece.bezier.points[2])) {}

  OnPiece Start() const { return {0.0, start}; }
  OnPiece End() const { return {1.0, end}; }
  // The point in this direction from the centre, or the end at that side.
  OnPiece Toward(Vec2 direction) const {
    const double u = std::clamp(circle.ParameterOf(direction), 0.0, 1.0);
    return u == 0.0 ? Start() : (u == 1.0 ? End() : OnPiece{u, circle.At(u)});
  }
  OnPiece Nearest(Vec2 p) const { return Toward(p - circle.centre); }

  CirclePart circle;
  Vec2 start;
  Vec2 end;
};

// Pairs at which the distance can have a minimum inside both parts; others do no harm.

template <class Use>
void ForEachInnerPair(const LinePart& a, const LinePart& b, Use&& use) {
  const Vec2 between = b.start - a.start;
  const double det = Cross(a.Along(), b.Along());
  if (det == 0.0) return;
  use(a.At(Cross(between, b.Along()) / det), b.At(Cross(between, a.Along()) / det));
}

// Where the line crosses the circle, and where it is parallel to its tangent.
template <class Use>
void ForEachInnerPair(const LinePart& a, const ArcPart& b, Use&& use) {
  const Vec2 along = a.Along();
  const double length = Length(along);
  if (!(length > 0.0)) return;
  const Vec2 unit = (1.0 / length) * along;
  const Vec2 centre = b.circle.centre;
  const double ahead = Dot(centre - a.start, unit), aside = Cross(unit, centre - a.start);
  const OnPiece foot = a.At(ahead / length);
  const Vec2 normal = aside > 0.0 ? Vec2{unit.y, -unit.x} : Vec2{-unit.y, unit.x};
  use(foot, b.Toward(normal));
  const double r = b.circle.radius, h = std::fabs(aside);
  if (!(r > h)) return;
  const double half = std::sqrt((r - h) * (r + h));
  for (const double at : {ahead - half, ahead + half}) {
    const OnPiece crossing = a.At(at / length);
    use(crossing, b.Nearest(crossing.p));
  }
}

template <class Use>
void ForEachInnerPair(const ArcPart& a, const LinePart& b, Use&& use) {
  ForEachInnerPair(b, a, [&](const OnPiece& on_b, const OnPiece& on_a) { use(on_a, on_b); });
}

// Where the circles cross, and on the line of the centres.
template <class Use>
void ForEachInnerPair(const ArcPart& a, const ArcPart& b, Use&& use) {
  const Vec2 apart = b.circle.centre - a.circle.centre;
  const double dist = Length(apart);
  if (!(dist > 0.0)) return;
  for (const double side_a : {-1.0, 1.0})
    for (const double side_b : {-1.0, 1.0}) use(a.Toward(side_a * apart), b.Toward(side_b * apart));
  const double r = a.circle.radius, s = b.circle.radius;
  const double reach = 0.5 * (dist + (r - s) * ((r + s) / dist));
  if (!(r > std::fabs(reach))) return;
  const double half = std::sqrt((r - reach) * (r + reach));
  const Vec2 unit = (1.0 / dist) * apart;
  for (const double aside : {-half, half}) {
    const OnPiece crossing = a.Toward(reach * unit + aside * Vec2{-unit.y, unit.x});
    use(crossing, b.Nearest(crossing.p));
  }
}

template <class A, class B, class Use>
void ForEachPair(const A& a, const B& b, Use&& use) {
  for (const OnPiece& end : {a.Start(), a.End()}) {
    use(end, b.Start());
    use(end, b.End());
    use(end, b.Nearest(end.p));
  }
  for (const OnPiece& end : {b.Start(), b.End()}) use(a.Nearest(end.p), end);
  ForEachInnerPair(a, b, use);
}

}  // namespace internal

// Calls use(on_a, on_b) for pairs of points, the nearest ones among them, of two pieces that are
// lines or arcs: ends, feet of ends, crossings, and where tangents are parallel.
template <class Use>
void ForEachElementaryPair(const DistancePiece& a, const DistancePiece& b, Use&& use) {
  using internal::ArcPart, internal::LinePart;
  const bool line_a = a.kind == PieceKind::kLine, line_b = b.kind == PieceKind::kLine;
  if (line_a && line_b) return internal::ForEachPair(LinePart(a), LinePart(b), use);
  if (line_a) return internal::ForEachPair(LinePart(a), ArcPart(b), use);
  if (line_b) return internal::ForEachPair(ArcPart(a), LinePart(b), use);
  internal::ForEachPair(ArcPart(a), ArcPart(b), use);
}

}  // namespace kurvo
