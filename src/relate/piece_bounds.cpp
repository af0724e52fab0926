// What the control points of a part tell of it, and the cheap tests that rule pairs of parts out.
#include "relate/piece_bounds.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "foundation/with_constant.h"

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

namespace {

// Degrees are numbers or, for the compiler to unroll the loops, integral constants.
template <class DegreeA, class DegreeB>
bool StripOfPointsApart(const WeightedPoint* a, DegreeA n, const WeightedPoint* b, DegreeB m,
                        double slack) {
  const Vec2 origin = Planar(a[0]);
  const Vec2 chord = Planar(a[n]) - origin;
  double low = 0.0, high = 0.0;  // of cross products with the chord; both ends of `a` are at 0
  for (int32_t i = 1; i < n; ++i) {
    const double aside = Cross(chord, Planar(a[i]) - origin);
    low = std::min(low, aside);
    high = std::max(high, aside);
  }
  const double margin = slack * (std::fabs(chord.x) + std::fabs(chord.y));
  low -= margin;
  high += margin;
  bool below = true, above = true;
  for (int32_t i = 0; i <= m && (below || above); ++i) {
    const double aside = Cross(chord, Planar(b[i]) - origin);
    below = below && aside < low;
    above = above && aside > high;
  }
  return below || above;
}

}  // namespace

bool StripApart(const BezierPiece& a, const BezierPiece& b, double slack) {
  return WithConstant<2, 3>(a.degree, [&](auto n) {
    return WithConstant<3>(
        b.degree, [&](auto m) { return StripOfPointsApart(a.points, n, b.points, m, slack); });
  });
}

namespace {

template <class Point, class Degree>
TangentCone ConeOfLegs(const Point* points, Degree degree) {
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

TangentCone ConeOf(const BezierPiece& part) {
  return WithConstant<2, 3>(part.degree, [&](auto n) { return ConeOfLegs(part.points, n); });
}

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
