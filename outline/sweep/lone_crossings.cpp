#include "sweep/lone_crossings.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace kurvo::outline {
namespace {

constexpr double kLeastAngle = 0x1p-4;  // slopes of two strands are apart by this and its share

bool HasPowers(const Strand& strand) {
  return strand.kind == Span::Kind::kLine || strand.kind == Span::Kind::kArc ||
         (strand.kind == Span::Kind::kBezier && strand.degree <= 3);
}

// The slopes, side over height, under which a strand is seen from a place of its own.
struct Cone {
  double least, most;

  // All the way to another height, where the strand has that level.
  Cone(const Strand& strand, double height, const StrandPlace& from, double to, double level) {
    least = most = from.slope;
    if (strand.kind == Span::Kind::kArc) Add((strand.At(to) - from.side) / (to - height));
    if (strand.kind != Span::Kind::kBezier) return;
    // (S(v + s) - S(v)) / s as a polynomial in s, with its Bernstein coefficients; a quotient of
    // two such lies among the quotients of their coefficients, where the lower ones are positive.
    const double v = from.v, way = level - v;
    const double side2 = strand.x2 + 3 * v * strand.x3, rise2 = strand.y2 + 3 * v * strand.y3;
    const double side1 = strand.x1 + v * (strand.x2 + side2);
    const double rise1 = strand.y1 + v * (strand.y2 + rise2);
    const double half = 0.5 * way;
    AddQuotient(side1, rise1);
    AddQuotient(side1 + half * side2, rise1 + half * rise2);
    AddQuotient(side1 + way * (side2 + way * strand.x3), rise1 + way * (rise2 + way * strand.y3));
  }

 private:
  void Add(double slope) {
    least = std::min(least, slope);
    most = std::max(most, slope);
  }
  void AddQuotient(double side, double rise) {
    if (rise > 0) return Add(side / rise);
    least = -HUGE_VAL;
    most = HUGE_VAL;
  }
};

bool AreAtAnAngle(double a, double b) {
  return std::fabs(a - b) >= kLeastAngle * (1 + std::max(std::fabs(a), std::fabs(b)));
}

// Whether all slopes of one cone are below all of another, by an angle.
bool IsBelow(const Cone& a, const Cone& b) {
  return a.most < b.least && AreAtAnAngle(a.most, b.least);
}

// Where the sides of two strands are equal, and both have it.
struct Common {
  double height;
  StrandPlace a, b;
};

// Newton's method in a bracket; the side of a less that of b has the sign at its low end.
std::optional<Common> Settle(const Strand& a, const Strand& b, double sign, double low, double high,
                             double height, double tol) {
  constexpr int kMostSteps = 10;
  for (int step = 0; step < kMostSteps; ++step) {
    if (!(height > low && height < high)) height = 0.5 * (low + high);
    const Common here = {height, a.PlaceAt(height), b.PlaceAt(height)};
    const double apart = here.a.side - here.b.side;
    if (kSameSide * tol >= std::fabs(apart)) return here;
    if (!AreAtAnAngle(here.a.slope, here.b.slope)) return std::nullopt;
    (sign * apart > 0 ? low : high) = height;
    height -= apart / (here.a.slope - here.b.slope);
  }
  return std::nullopt;
}

// A crossing is placed by the steeper strand: the other one runs far within a rounding of height.
LoneCrossing CrossingAt(const Common& here, bool falls) {
  const bool by_a = std::fabs(here.a.slope) <= std::fabs(here.b.slope);
  return {here.height, by_a ? here.a.side : here.b.side, falls ? 1 : -1};
}

// Of strands that change sides between two heights, from the chord of their difference.
std::optional<LoneCrossings> OfTwo(const Strand& a, const Strand& b, const CommonLevel& low,
                                   const CommonLevel& high, double tol) {
  const double at_low = a.SideAt(low.height, low.a) - b.SideAt(low.height, low.b);
  const double at_high = a.SideAt(high.height, high.a) - b.SideAt(high.height, high.b);
  const bool falls = at_low > tol && at_high < -tol, rises = at_low < -tol && at_high > tol;
  if (!falls && !rises) return std::nullopt;
  const double start = low.height + (high.height - low.height) * (at_low / (at_low - at_high));
  const auto here = Settle(a, b, falls ? 1 : -1, low.height, high.height, start, tol);
  if (!here) return std::nullopt;
  for (const CommonLevel& end : {low, high}) {
    const Cone of_a(a, here->height, here->a, end.height, end.a);
    const Cone of_b(b, here->height, here->b, end.height, end.b);
    if (!(falls ? IsBelow(of_a, of_b) : IsBelow(of_b, of_a))) return std::nullopt;
  }
  return LoneCrossings{1, {CrossingAt(*here, falls)}};
}

double SlopeAt(const Strand& arc, Vec2 p) { return (arc.centre.y - p.y) / (p.x - arc.centre.x); }

enum class Presence { kOn, kOff, kUnsure };

// Whether a point of its circle is on an arc between two heights, or away from all of it.
Presence PresenceOn(const Strand& arc, Vec2 p, double low, double high, double margin) {
  const double inside = std::min(p.y - low, high - p.y);
  const double out = std::min(inside, arc.bulge * (p.x - arc.centre.x));
  return out > margin ? Presence::kOn : out < -margin ? Presence::kOff : Presence::kUnsure;
}

// Of two arcs, from where their circles cross. Circles that do so at an angle are within a distance
// of each other for twice as much over its sine on either side, where that is little beside their
// radii: their distance, along one of them, has the sine for its slope and bends by 1 / r + 1 / r'.
std::optional<LoneCrossings> OfArcs(const Strand& a, const Strand& b, double low, double high,
                                    double tol) {
  constexpr double kLeastSine = 0x1p-3;
  constexpr double kMargin = 2 / kLeastSine + 1;                  // of tol
  constexpr double kLeastRadius = 4 / (kLeastSine * kLeastSine);  // of tol
  constexpr double kMostRadius = 0x1p40;                          // of tol, which rounding is not
  const double shorter = std::min(a.radius, b.radius), longer = std::max(a.radius, b.radius);
  if (!(shorter >= kLeastRadius * tol && kMostRadius * tol >= longer)) return std::nullopt;
  // Two circles have the same crossings, to the last bit, whichever is the first of the pair.
  const bool in_order = std::tie(a.centre.x, a.centre.y) < std::tie(b.centre.x, b.centre.y);
  const Circle from = (in_order ? a : b).circle(), to = (in_order ? b : a).circle();
  const Vec2 way = to.centre - from.centre;
  const double square = Dot(way, way), both = from.radius + to.radius + tol;
  if (square > both * both) return LoneCrossings{};
  // At the share `along` of the way and `off` to its left and right.
  const double squares = (from.radius - to.radius) * (from.radius + to.radius);
  const double along = 0.5 + 0.5 * squares / square;
  const double off_square = (from.radius * from.radius) / square - along * along;
  const double off = std::sqrt(std::max(off_square, 0.0));
  if (!(off * square >= kLeastSine * (from.radius * to.radius))) return std::nullopt;
  const Vec2 middle = from.centre + along * way, to_side = off * Left(way);
  LoneCrossings found;
  for (const double sign : {to_side.y > 0 ? -1.0 : 1.0, to_side.y > 0 ? 1.0 : -1.0}) {
    const Vec2 p = middle + sign * to_side;
    const Presence on_a = PresenceOn(a, p, low, high, kMargin * tol);
    const Presence on_b = PresenceOn(b, p, low, high, kMargin * tol);
    if (on_a == Presence::kOff || on_b == Presence::kOff) continue;
    if (on_a == Presence::kUnsure || on_b == Presence::kUnsure) return std::nullopt;
    const bool falls = SlopeAt(a, p) < SlopeAt(b, p);
    const auto here =
        Settle(a, b, falls ? 1 : -1, p.y - kMargin * tol, p.y + kMargin * tol, p.y, tol);
    if (!here) return std::nullopt;
    found.crossings[found.count++] = CrossingAt(*here, falls);
  }
  return found;
}

}  // namespace

std::optional<LoneCrossings> FindLoneCrossings(const Strand& a, const Strand& b,
                                               const CommonLevel& low, const CommonLevel& high,
                                               double tol) {
  if (a.kind == Span::Kind::kArc && b.kind == Span::Kind::kArc)
    return OfArcs(a, b, low.height, high.height, tol);
  if (!HasPowers(a) || !HasPowers(b)) return std::nullopt;
  return OfTwo(a, b, low, high, tol);
}

}  // namespace kurvo::outline
