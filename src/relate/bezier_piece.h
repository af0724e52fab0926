// One Bezier piece of a free-form curve, as the intersection of two such curves sees it.
#pragma once

#include <cstdint>

#include "foundation/point.h"

namespace kurvo {

constexpr int32_t kMaxPieceDegree = 63;  // work areas lie on the stack

// A control point in Cartesian coordinates with its weight, 1 for plain curves.
struct WeightedPoint {
  double x;
  double y;
  double w;
};

inline Vec2 Planar(const WeightedPoint& p) { return {p.x, p.y}; }

struct BezierPiece {
  const WeightedPoint* points;  // degree + 1
  int32_t degree;               // 1 to kMaxPieceDegree
  bool rational;
};

// A point of a piece with its first and second derivative by t.
struct Jet {
  Vec2 p;
  Vec2 d1;
  Vec2 d2;
};

Vec2 PointAt(const BezierPiece& piece, double t);
Jet JetAt(const BezierPiece& piece, double t);

// Writes the control points of both halves; de Casteljau's algorithm at 1/2.
void Halve(const WeightedPoint* points, int32_t degree, bool rational, WeightedPoint* left,
           WeightedPoint* right);

// The parameter in [0, 1] of the point of the piece nearest to p, as far as Newton's method finds
// it from the nearest of evenly spread samples. Good for points on or very near the piece.
double NearestParameter(const BezierPiece& piece, Vec2 p);

// Newton's method on (C - p) . C' = 0 from t, kept inside [0, 1].
double RefineNearest(const BezierPiece& piece, Vec2 p, double t);

}  // namespace kurvo
