#include "oracle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "bernstein.h"

namespace peers::oracle {
namespace {

constexpr int kBisections = 70;  // a long double has 64 bits
constexpr int kHalvings = 60;    // of a parameter, at most

void FindRoots(const std::vector<Real>& b, Real from, Real to, int depth,
               std::vector<Real>* roots) {
  int changes = 0;
  for (std::size_t i = 0; i + 1 < b.size(); ++i) changes += (b[i] > 0) != (b[i + 1] > 0);
  if (changes == 0) return;
  if (changes == 1) {
    Real low = 0, high = 1;
    for (int i = 0; i < kBisections; ++i) {
      const Real mid = (low + high) / 2;
      ((DeCasteljau(b, mid) > 0) == (b[0] > 0) ? low : high) = mid;
    }
    roots->push_back(from + (to - from) * (low + high) / 2);
    return;
  }
  if (depth == kHalvings) return roots->push_back((from + to) / 2);
  std::vector<Real> left, right;
  Halve(b, &left, &right);
  FindRoots(left, from, (from + to) / 2, depth + 1, roots);
  FindRoots(right, (from + to) / 2, to, depth + 1, roots);
}

// The Bernstein coefficients of (B - p) . B'.
std::vector<Real> FootEquation(std::vector<Vec> points, Vec p) {
  const std::vector<Vec> d = Hodograph(points);
  for (Vec& q : points) q = q - p;
  return Product(points, d);
}

const Piece& PieceAt(const Pieces& curve, Real t) {
  std::size_t i = 0;
  while (i + 1 < curve.size() && t > curve[i].to) ++i;
  return curve[i];
}

Real Local(const Piece& piece, Real t) { return (t - piece.from) / (piece.to - piece.from); }

// The blossom of the span [knots[k], knots[k + 1]] of a cubic B-spline.
Vec Blossom(const Spline& spline, std::size_t k, std::array<Real, 3> at) {
  std::array<Vec, 4> d;
  for (std::size_t i = 0; i < 4; ++i) d[i] = V(spline.points[k - 3 + i]);
  for (std::size_t r = 1; r <= 3; ++r)
    for (std::size_t j = 3; j >= r; --j) {
      const Real low = spline.knots[k - 3 + j], high = spline.knots[k + 1 + j - r];
      const Real s = (at[r - 1] - low) / (high - low);
      d[j] = (1 - s) * d[j - 1] + s * d[j];
    }
  return d[3];
}

}  // namespace

Real Size(Vec a) { return std::hypot(a.x, a.y); }

Pieces PiecesOf(const Segment& segment) { return {{{V(segment.start), V(segment.end)}, 0, 1}}; }

Pieces PiecesOf(const Bezier& bezier) {
  Piece piece;
  for (const Point p : bezier) piece.points.push_back(V(p));
  return {piece};
}

Pieces PiecesOf(const Spline& spline) {
  Pieces pieces;
  for (std::size_t k = 3; k < spline.points.size(); ++k) {
    const Real u = spline.knots[k], v = spline.knots[k + 1];
    pieces.push_back({{Blossom(spline, k, {u, u, u}), Blossom(spline, k, {u, u, v}),
                       Blossom(spline, k, {u, v, v}), Blossom(spline, k, {v, v, v})},
                      u,
                      v});
  }
  return pieces;
}

Vec At(const Pieces& curve, Real t) {
  const Piece& piece = PieceAt(curve, t);
  return DeCasteljau(piece.points, Local(piece, t));
}

Vec At(const Arc& arc, Real t) {
  const Real angle = arc.from + t * arc.sweep;
  return V(arc.centre) + arc.radius * Vec{std::cos(angle), std::sin(angle)};
}

Vec DerivativeAt(const Pieces& curve, Real t) {
  const Piece& piece = PieceAt(curve, t);
  return 1 / (piece.to - piece.from) * DeCasteljau(Hodograph(piece.points), Local(piece, t));
}

Vec DerivativeAt(const Arc& arc, Real t) {
  const Real angle = arc.from + t * arc.sweep;
  return Real(arc.radius) * arc.sweep * Vec{-std::sin(angle), std::cos(angle)};
}

std::vector<Real> Roots(const std::vector<Real>& bernstein) {
  std::vector<Real> roots;
  FindRoots(bernstein, 0, 1, 0, &roots);
  return roots;
}

Real Distance(const Pieces& curve, Vec p) {
  Real least = std::numeric_limits<Real>::infinity();
  for (const Piece& piece : curve) {
    std::vector<Real> feet = Roots(FootEquation(piece.points, p));
    feet.insert(feet.end(), {0, 1});
    for (const Real t : feet) least = std::min(least, Size(DeCasteljau(piece.points, t) - p));
  }
  return least;
}

std::vector<Real> FeetAndEnds(const Bezier& bezier, Vec p) {
  std::vector<Real> feet = Roots(FootEquation(PiecesOf(bezier)[0].points, p));
  feet.insert(feet.end(), {0, 1});
  return feet;
}

Real FirstFoot(const Bezier& bezier, Vec p) {
  constexpr Real kBeyond = 0.001L;
  const Pieces curve = PiecesOf(bezier);
  const std::vector<Vec>& points = curve[0].points;
  // The control points over [-kBeyond, 1 + kBeyond], by the blossom.
  const std::size_t n = points.size() - 1;
  std::vector<Vec> longer;
  for (std::size_t k = 0; k <= n; ++k) {
    std::vector<Vec> b = points;
    for (std::size_t r = 0; r < n; ++r) {
      const Real s = r < k ? 1 + kBeyond : -kBeyond;
      for (std::size_t i = 0; i + r < n; ++i) b[i] = (1 - s) * b[i] + s * b[i + 1];
    }
    longer.push_back(b[0]);
  }
  const std::vector<Real> feet = Roots(FootEquation(longer, p));
  if (!feet.empty()) {
    const Real t = -kBeyond + feet[0] * (1 + 2 * kBeyond);
    if (t >= 0 && t <= 1) return t;
  }
  return Size(points[0] - p) < Size(points[n] - p) ? 0 : 1;
}

Real Length(const Pieces& curve) {
  constexpr int kParts = 1024;
  constexpr Real kAt[] = {0.0L, 0.5384693101056830910363144L, 0.9061798459386639927976269L};
  constexpr Real kWeight[] = {0.5688888888888888888888889L, 0.4786286704993664680412915L,
                              0.2369268850561890875142640L};
  const int parts = std::max(16, kParts / static_cast<int>(curve.size()));
  Real length = 0;
  for (const Piece& piece : curve) {
    const std::vector<Vec> d = Hodograph(piece.points);
    const Real half = Real(0.5) / parts;
    for (int i = 0; i < parts; ++i)
      for (int j = -2; j <= 2; ++j) {
        const Real t = half * (2 * i + 1 + (j < 0 ? -1 : 1) * kAt[std::abs(j)]);
        length += half * kWeight[std::abs(j)] * Size(DeCasteljau(d, t));
      }
  }
  return length;
}

int Winding(const Glyph& glyph, Vec p) {
  int winding = 0;
  for (const Bezier& bezier : glyph) {
    const Pieces curve = PiecesOf(bezier);
    std::vector<Real> height;
    for (const Vec q : curve[0].points) height.push_back(q.y - p.y);
    for (const Real t : Roots(height))
      if (At(curve, t).x > p.x) winding += DerivativeAt(curve, t).y > 0 ? 1 : -1;
  }
  return winding;
}

Real SmallestRadius(const Pieces& curve) {
  constexpr int kLooks = 257;
  Real least = std::numeric_limits<Real>::infinity();
  for (const Piece& piece : curve) {
    const std::vector<Vec> d = Hodograph(piece.points), dd = Hodograph(d);
    for (int i = 0; i < kLooks; ++i) {
      const Real t = Real(i) / (kLooks - 1), speed = Size(DeCasteljau(d, t));
      const Real turn = std::abs(Cross(DeCasteljau(d, t), DeCasteljau(dd, t)));
      if (turn > 0) least = std::min(least, speed * speed * speed / turn);
    }
  }
  return least;
}

}  // namespace peers::oracle
