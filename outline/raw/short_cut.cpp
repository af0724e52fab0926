#include "raw/short_cut.h"

#include <algorithm>
#include <cmath>

namespace kurvo::outline {
namespace {

constexpr double kLargestRadius = 0x1p10;  // in the frame: flatter arcs lose too many digits
constexpr double kLeastSine = 0x1p-4;      // between sides that cross, unless both are lines
constexpr double kLeastCosine = -0.5;      // of the turn, where the distance is below the slack

struct Range {
  double least, most;

  void Widen(double x) {
    least = std::min(least, x);
    most = std::max(most, x);
  }
  bool IsWithin(double low, double high) const { return least >= low && high >= most; }
};

// A segment, or an arc of less than half a turn.
struct Path {
  Vec2 from, to;
  bool is_arc;
  Vec2 centre;
  double radius;

  // Whether the ray from the centre meets the arc.
  bool Faces(Vec2 direction) const {
    const Vec2 a = from - centre, b = to - centre;
    const double turn = Cross(a, b);
    return Cross(a, direction) * turn >= 0 && Cross(direction, b) * turn >= 0 &&
           Dot(direction, a + b) > 0;
  }

  // Of p . axis, a unit vector.
  Range Along(Vec2 axis) const {
    const double first = Dot(from, axis), last = Dot(to, axis);
    Range range = {std::min(first, last), std::max(first, last)};
    if (!is_arc) return range;
    if (Faces(axis)) range.Widen(Dot(centre, axis) + radius);
    if (Faces(-axis)) range.Widen(Dot(centre, axis) - radius);
    return range;
  }

  Range DistanceFrom(Vec2 p) const {
    const double first = Length(from - p), last = Length(to - p);
    Range range = {std::min(first, last), std::max(first, last)};
    if (!is_arc) {
      const Vec2 chord = to - from;
      const double ahead = Dot(p - from, chord), all = SquaredLength(chord);
      if (ahead > 0 && ahead < all) range.Widen(std::fabs(Cross(p - from, chord)) / std::sqrt(all));
      return range;
    }
    const double apart = Length(centre - p);
    if (Faces(centre - p)) range.Widen(apart + radius);
    if (Faces(p - centre)) range.Widen(std::fabs(apart - radius));
    return range;
  }

  Vec2 TangentAt(Vec2 p) const {
    return is_arc ? (1 / radius) * Left(p - centre) : (1 / Length(to - from)) * (to - from);
  }
};

// The half of a strip that is nearer to its vertex.
class HalfStrip {
 public:
  // `away` from the vertex along the strip, `outwards` to the end of its side, unit vectors.
  HalfStrip(const OffsetPiece& piece, Vec2 vertex, Vec2 away, Vec2 outwards, bool at_end, double d)
      : vertex_(vertex),
        away_(away),
        outwards_(outwards),
        d_(d),
        side_{piece.points[at_end ? 3 : 0], piece.points[at_end ? 0 : 3],
              piece.kind == OffsetPiece::Kind::kArc, piece.centre, piece.radius} {
    if (!side_.is_arc) {
      middle_ = 0.5 * (side_.from + side_.to);
      middle_away_ = away;
      return;
    }
    const Vec2 bisector = (side_.from - side_.centre) + (side_.to - side_.centre);
    const Vec2 spoke = (1 / Length(bisector)) * bisector;
    const double sense = Cross(side_.from - side_.centre, away) > 0 ? 1 : -1;
    middle_ = side_.centre + side_.radius * spoke;
    middle_away_ = sense * Left(spoke);
    base_radius_ = Length(vertex - side_.centre);
  }

  const Path& side() const { return side_; }
  // The side from its end at the vertex to a point of it, and the normal there.
  Path SideUpTo(Vec2 p) const { return {side_.from, p, side_.is_arc, side_.centre, side_.radius}; }
  Path Normal() const { return {vertex_, side_.from, false, {}, 0}; }

  bool Holds(const Path& path, double slack) const {
    if (!(path.Along(away_).least >= Dot(vertex_, away_) - slack)) return false;
    if (!(Dot(middle_, middle_away_) + slack >= path.Along(middle_away_).most)) return false;
    if (!side_.is_arc) {
      const double base = Dot(vertex_, outwards_);
      return path.Along(outwards_).IsWithin(base - slack, base + d_ + slack);
    }
    const double low = std::min(base_radius_, side_.radius),
                 high = std::max(base_radius_, side_.radius);
    return path.DistanceFrom(side_.centre).IsWithin(low - slack, high + slack);
  }

  // How far a point of the side is from the vertex, as a share of the side.
  double ShareOf(Vec2 p) const {
    if (!side_.is_arc) return Length(p - side_.from) / Length(side_.to - side_.from);
    const Vec2 a = side_.from - side_.centre, b = side_.to - side_.centre, q = p - side_.centre;
    const auto angle = [&a](Vec2 v) { return std::fabs(std::atan2(Cross(a, v), Dot(a, v))); };
    return angle(q) / angle(b);
  }

 private:
  Vec2 vertex_, away_, outwards_;
  double d_;
  Path side_;  // from the vertex on
  Vec2 middle_, middle_away_;
  double base_radius_ = 0;
};

struct Crossings {
  int count = 0;
  Vec2 at[2];
};

Crossings OfLineAndCircle(const Path& line, const Path& arc) {
  const Vec2 along = line.TangentAt(line.from), to_centre = arc.centre - line.from;
  const double across = Cross(along, to_centre);
  const double square = (arc.radius - across) * (arc.radius + across);
  if (!(square > 0)) return {};
  const Vec2 foot = line.from + Dot(to_centre, along) * along;
  const Vec2 half = std::sqrt(square) * along;
  return {2, {foot + half, foot - half}};
}

Crossings OfCircles(const Path& a, const Path& b) {
  const Vec2 between = b.centre - a.centre;
  const double apart = Length(between);
  if (!(apart > 0)) return {};
  const Vec2 along = (1 / apart) * between;
  const double ahead = 0.5 * (apart + (a.radius - b.radius) / apart * (a.radius + b.radius));
  const double square = (a.radius - ahead) * (a.radius + ahead);
  if (!(square > 0)) return {};
  const Vec2 foot = a.centre + ahead * along, half = std::sqrt(square) * Left(along);
  return {2, {foot + half, foot - half}};
}

Crossings OfSides(const Path& a, const Path& b) {
  if (a.is_arc) return b.is_arc ? OfCircles(a, b) : OfLineAndCircle(b, a);
  return OfLineAndCircle(a, b);
}

// Lines, and arcs of less than half a turn, on the full distance.
bool IsPlain(const StripList& list, const Strip& strip, double distance) {
  constexpr double kLeastSum = 0.125;  // of both spokes, in radii: less is nearly half a turn
  if (strip.piece_count != 1 || strip.reach != distance || strip.last_reach != distance)
    return false;
  const OffsetPiece& piece = list.pieces[strip.first_piece];
  if (piece.kind == OffsetPiece::Kind::kLine) return strip.is_line;
  if (piece.kind != OffsetPiece::Kind::kArc || !(kLargestRadius >= piece.radius)) return false;
  const Vec2 from = piece.points[0] - piece.centre, to = piece.points[3] - piece.centre;
  const double sense = piece.clockwise ? -1 : 1;
  return sense * Cross(from, to) > 0 && Length(from + to) > kLeastSum * piece.radius;
}

// Sides of lines cross where the bisector meets them.
Vec2 WhereLinesCross(const Strip& before, const Strip& after, double distance) {
  const Vec2 t1 = before.arrives, t2 = after.leaves;
  return after.start + (distance / (1 + Dot(t1, t2))) * Right(t1 + t2);
}

}  // namespace

std::optional<ShortCut> FindShortCut(const StripList& list, const Strip& before, const Strip& after,
                                     double distance, double slack) {
  const Vec2 t1 = before.arrives, t2 = after.leaves;
  const double d = std::fabs(distance);
  const double cosine = Dot(t1, t2);
  if (!(cosine > kLeastCosine && slack >= -d * cosine)) return {};
  if (!IsPlain(list, before, distance) || !IsPlain(list, after, distance)) return {};
  const double side = distance < 0 ? -1 : 1;
  const HalfStrip a(list.pieces[before.first_piece], before.end, -t1, side * Right(t1), true, d);
  const HalfStrip b(list.pieces[after.first_piece], after.start, t2, side * Right(t2), false, d);
  const bool are_lines = before.is_line && after.is_line;
  Crossings crossings = {1, {WhereLinesCross(before, after, distance), {}}};
  if (!are_lines) crossings = OfSides(a.side(), b.side());

  std::optional<ShortCut> cut;
  for (int i = 0; i < crossings.count; ++i) {
    const Vec2 meet = crossings.at[i];
    if (!are_lines &&
        kLeastSine >= std::fabs(Cross(a.side().TangentAt(meet), b.side().TangentAt(meet))))
      continue;
    const bool is_double = a.Holds(b.Normal(), slack) && a.Holds(b.SideUpTo(meet), slack) &&
                           b.Holds(a.Normal(), slack) && b.Holds(a.SideUpTo(meet), slack);
    if (!is_double) continue;
    if (cut) return {};  // either
    cut = {meet, 1 - a.ShareOf(meet), b.ShareOf(meet)};
  }
  return cut;
}

}  // namespace kurvo::outline
