// What the control points of a part tell of it, and the cheap tests that rule pairs of parts out.
#include "relate/piece_bounds.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kurvo {

bool Encloses(const BezierPiece& part) {
  if (!part.rational) return true;
  for (int32_t i = 1; i <= part.degree; ++i)
    if (!(part.points[i].w * part.points[0].w > 0.0)) return false;
  return part.points[0].w != 0.0;
}

PlanarBox EnclosureOf(const BezierPiece& piece) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (!Encloses(piece)) return {{-kInfinity, -kInfinity}, {kInfinity, kInfinity}};
  return BoxAround(piece.points, piece.degree);
}

bool StripApart(const BezierPiece& a, const BezierPiece& b, double slack) {
  const Vec2 origin = Planar(a.points[0]);
  const Vec2 chord = Planar(a.points[a.degree]) - origin;
  double low = 0.0, high = 0.0;  // of cross products with the chord; both ends of `a` are at 0
  for (int32_t i = 1; i < a.degree; ++i) {
    const double aside = Cross(chord, Planar(a.points[i]) - origin);
    low = std::min(low, aside);
    high = std::max(high, aside);
  }
  const double margin = slack * (std::fabs(chord.x) + std::fabs(chord.y));
  low -= margin;
  high += margin;
  bool below = true, above = true;
  for (int32_t i = 0; i <= b.degree && (below || above); ++i) {
    const double aside = Cross(chord, Planar(b.points[i]) - origin);
    below = below && aside < low;
    above = above && aside > high;
  }
  return below || above;
}

namespace {

template <class Point>
TangentCone ConeOfLegs(const Point* points, int32_t degree) {
  const Vec2 axis = Planar(points[degree]) - Planar(points[0]);
  TangentCone cone;
  for (int32_t i = 0; i < degree; ++i) {
    const Vec2 leg = Planar(points[i + 1]) - Planar(points[i]);
    if (leg.x == 0.0 && leg.y == 0.0) continue;
    if (!(Dot(axis, leg) > 0.0)) return {};
    if (!cone.narrow) {
      cone = {leg, leg, true};
    } else if (Cross(cone.low, leg) < 0.0) {
      cone.low = leg;
    } else if (Cross(cone.high, leg) > 0.0) {
      cone.high = leg;
    }
  }
  return cone;
}

}  // namespace

TangentCone ConeOf(const BezierPiece& part) { return ConeOfLegs(part.points, part.degree); }

TangentCone ConeOf(const double (*points)[3], int32_t degree) { return ConeOfLegs(points, degree); }

bool ConesApart(const TangentCone& a, const TangentCone& b) {
  if (!a.narrow || !b.narrow) return false;
  const bool left = Cross(a.high, b.low) > 0.0;
  if (left)
    return Cross(a.low, b.high) > 0.0 && Cross(a.low, b.low) > 0.0 && Cross(a.high, b.high) > 0.0;
  return Cross(a.low, b.low) < 0.0 && Cross(a.low, b.high) < 0.0 && Cross(a.high, b.low) < 0.0 &&
         Cross(a.high, b.high) < 0.0;
}

}  // namespace kurvo
