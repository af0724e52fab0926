#include "judge.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "oracle.h"

namespace peers::judge {
namespace {

using oracle::At;
using oracle::PiecesOf;
using oracle::Real;
using oracle::Size;
using oracle::Vec;

constexpr Real kNear = 1e-6L;
constexpr Real kExact = 1e-12L;  // of the size
constexpr int kLooks = 33;

Vec V(Point p) { return {p.x, p.y}; }

Real Extent(const oracle::Pieces& curve) {
  Real extent = 0;
  for (const auto& piece : curve)
    for (const Vec p : piece.points) extent = std::max({extent, std::abs(p.x), std::abs(p.y)});
  return extent;
}

template <class A, class B>
bool AllCrossings(const A& a, const B& b, const std::vector<Common>& found) {
  const auto crossings = oracle::Crossings(a, b);
  if (crossings.size() != found.size()) return false;
  std::vector<bool> taken(found.size());
  for (const auto& crossing : crossings) {
    const Vec at = At(b, crossing.on_b);
    const Real reach = 2 * kNear / crossing.sine;
    std::size_t best = 0;
    Real least = std::numeric_limits<Real>::infinity();
    for (std::size_t i = 0; i < found.size(); ++i) {
      if (taken[i]) continue;
      const Real far = std::max(Size(At(a, found[i].on_a) - at), Size(At(b, found[i].on_b) - at));
      if (far < least) least = far, best = i;
    }
    if (!(reach >= least)) return false;
    taken[best] = true;
  }
  return true;
}

template <class Curve>
bool Halves(const Curve& numbers, double t, const Half& half) {
  const oracle::Pieces curve = PiecesOf(numbers);
  const Real near = kExact * Extent(curve);
  for (int i = 0; i < kLooks; ++i) {
    const Real s = Real(i) / (kLooks - 1), at = t;
    const auto of = [&](int which) { return V(half(which, static_cast<double>(s))); };
    if (!(near >= Size(of(0) - At(curve, s * at)))) return false;
    if (!(near >= Size(of(1) - At(curve, at + s * (1 - at))))) return false;
  }
  return true;
}

Real DistanceFromPolygon(const std::vector<Point>& polygon, Vec p) {
  Real least = Size(V(polygon[0]) - p);
  for (std::size_t i = 0; i + 1 < polygon.size(); ++i) {
    const Vec a = V(polygon[i]), d = V(polygon[i + 1]) - a;
    const Real dd = Dot(d, d), t = dd > 0 ? std::clamp<Real>(Dot(p - a, d) / dd, 0, 1) : 0;
    least = std::min(least, Size(a + t * d - p));
  }
  return least;
}

}  // namespace

bool Nearest(const Bezier& curve, Point p, double t) {
  const oracle::Pieces pieces = PiecesOf(curve);
  return t >= -1e-6 && t <= 1 + 1e-6 &&
         oracle::Distance(pieces, V(p)) + kNear >= Size(At(pieces, t) - V(p));
}

bool FirstFoot(const Bezier& curve, Point p, double t) {
  const oracle::Pieces pieces = PiecesOf(curve);
  return kNear >= Size(At(pieces, t) - At(pieces, oracle::FirstFoot(curve, V(p))));
}

bool Crossings(const Pair<Segment, Bezier>& pair, const std::vector<Common>& found) {
  return AllCrossings(PiecesOf(pair.a), PiecesOf(pair.b), found);
}
bool Crossings(const Pair<Arc, Bezier>& pair, const std::vector<Common>& found) {
  return AllCrossings(pair.a, PiecesOf(pair.b), found);
}
bool Crossings(const Pair<Bezier, Bezier>& pair, const std::vector<Common>& found) {
  return AllCrossings(PiecesOf(pair.a), PiecesOf(pair.b), found);
}
bool Crossings(const Pair<Spline, Spline>& pair, const std::vector<Common>& found) {
  return AllCrossings(PiecesOf(pair.a), PiecesOf(pair.b), found);
}

bool Length(const Bezier& curve, double length, double tolerance) {
  return tolerance >= std::abs(oracle::Length(PiecesOf(curve)) - length);
}
bool Length(const Spline& curve, double length, double tolerance) {
  return tolerance >= std::abs(oracle::Length(PiecesOf(curve)) - length);
}

bool Position(const Segment& curve, double t, Point p) {
  const oracle::Pieces pieces = PiecesOf(curve);
  return kExact * Extent(pieces) >= Size(At(pieces, t) - V(p));
}
bool Position(const Arc& curve, double t, Point p) {
  const Real extent = Size(V(curve.centre)) + curve.radius;
  return kExact * extent >= Size(At(curve, t) - V(p));
}
bool Position(const Bezier& curve, double t, Point p) {
  const oracle::Pieces pieces = PiecesOf(curve);
  return kExact * Extent(pieces) >= Size(At(pieces, t) - V(p));
}

bool Derivative(const Bezier& curve, double t, Point d) {
  const oracle::Pieces pieces = PiecesOf(curve);
  return 3 * kExact * Extent(pieces) >= Size(DerivativeAt(pieces, t) - V(d));
}

bool Split(const Bezier& curve, double t, const Half& half) { return Halves(curve, t, half); }
bool Split(const Spline& curve, double t, const Half& half) { return Halves(curve, t, half); }

bool Offset(const Stroke& stroke, double tolerance, const std::vector<Point>& samples) {
  if (samples.empty()) return false;
  const oracle::Pieces curve = PiecesOf(stroke.curve);
  const Real distance = stroke.distance, near = 2 * Real(tolerance);
  for (const Point p : samples) {  // another stretch of the curve may be nearer
    const auto feet = oracle::FeetAndEnds(stroke.curve, V(p));
    const bool right = std::any_of(feet.begin(), feet.end(), [&](Real t) {
      return near >= std::abs(Size(At(curve, t) - V(p)) - std::abs(distance));
    });
    if (!right) return false;
  }
  for (int i = 0; i < kLooks; ++i) {
    const Real t = Real(i) / (kLooks - 1);
    const Vec d = DerivativeAt(curve, t);
    const Vec p = At(curve, t) + distance / Size(d) * Vec{-d.y, d.x};
    // Where the offset of another stretch comes nearer to the curve, it may have been cut away.
    if (std::abs(distance) - near > oracle::Distance(curve, p)) continue;
    if (!(near >= DistanceFromPolygon(samples, p))) return false;
  }
  return true;
}

bool Combined(const Letters& letters, int operation, const Outline& result) {
  const auto turns = [](const Outline& outline, Point p) {
    int sum = 0;
    for (const Glyph& contour : outline) sum += oracle::Winding(contour, V(p));
    return sum;
  };
  return std::all_of(letters.looks.begin(), letters.looks.end(), [&](Point p) {
    const bool a = turns(letters.a, p) != 0, b = turns(letters.b, p) != 0;
    const bool wanted[] = {a || b, a && b, a && !b, a != b};
    return std::abs(turns(result, p)) == (wanted[operation] ? 1 : 0);
  });
}

bool Inside(const Glyph& glyph, Point p, bool inside) {
  return (oracle::Winding(glyph, V(p)) != 0) == inside;
}

}  // namespace peers::judge
