// The answers, computed in long double by plain methods that no library here uses: roots of
// Bernstein polynomials by halving and bisection, crossings by halving boxes until the directions
// of two pieces part, lengths by Gauss' rule on a thousand parts.
#pragma once

#include <vector>

#include "curve.h"

namespace peers::oracle {

using Real = long double;

struct Vec {
  Real x = 0, y = 0;
};

inline Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y}; }
inline Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y}; }
inline Vec operator*(Real s, Vec a) { return {s * a.x, s * a.y}; }
inline Real Dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y; }
inline Real Cross(Vec a, Vec b) { return a.x * b.y - a.y * b.x; }
Real Size(Vec a);

// One polynomial piece of a curve, over [from, to] of the curve's parameter.
struct Piece {
  std::vector<Vec> points;
  Real from = 0, to = 1;
};

// All kinds of curves as pieces; an arc, which is none, has functions of its own.
using Pieces = std::vector<Piece>;
Pieces PiecesOf(const Segment& segment);
Pieces PiecesOf(const Bezier& bezier);
Pieces PiecesOf(const Spline& spline);

Vec At(const Pieces& curve, Real t);
Vec At(const Arc& arc, Real t);
Vec DerivativeAt(const Pieces& curve, Real t);
Vec DerivativeAt(const Arc& arc, Real t);

// Roots in [0, 1], ascending, of the polynomial with these Bernstein coefficients.
std::vector<Real> Roots(const std::vector<Real>& bernstein);

// The least distance of a point from a curve.
Real Distance(const Pieces& curve, Vec p);

// The parameters of all foot points on one Bezier curve, and 0 and 1.
std::vector<Real> FeetAndEnds(const Bezier& bezier, Vec p);

// The parameter of the first foot point on one Bezier curve: where that lies within the first
// thousandth before the start, and where there is none, the nearer end.
Real FirstFoot(const Bezier& bezier, Vec p);

Real Length(const Pieces& curve);

struct Crossing {
  Real on_a = 0, on_b = 0;
  Real sine = 0;  // of the angle between the curves
};

std::vector<Crossing> Crossings(const Pieces& a, const Pieces& b);
std::vector<Crossing> Crossings(const Arc& a, const Pieces& b);

// How often the contour winds around a point.
int Winding(const Glyph& glyph, Vec p);

// The smallest radius of curvature, as seen at 257 parameters.
Real SmallestRadius(const Pieces& curve);

}  // namespace peers::oracle
