// Bezier pieces of curves, and parts of them, as intersection and distance work on them.
#pragma once

#include <algorithm>
#include <cstdint>

#include "calc/boxes.h"
#include "control/bezier_pieces.h"
#include "foundation/point.h"

namespace kurvo {

constexpr int32_t kMaxPieceDegree = 63;        // work areas lie on the stack
constexpr double kCoordinateRounding = 2e-15;  // of the largest coordinate, for points of a piece

// A control point in Cartesian coordinates with its weight, 1 for plain curves.
struct WeightedPoint {
  double x;
  double y;
  double w;
};

inline Vec2 Planar(const WeightedPoint& p) { return {p.x, p.y}; }

// Evaluated at t in [0, 1]. A part of a piece, which halving yields, is a piece with control points
// of its own, and the whole that it covers a stretch of is the piece.
struct BezierPiece {
  const WeightedPoint* points;  // degree + 1
  int32_t degree;               // 1 to kMaxPieceDegree
  bool rational;
  double start = 0.0;  // the stretch of the whole's parameters that it covers
  double width = 1.0;
  PlanarBox box{};  // of the control points

  double end() const { return start + width; }
  double middle() const { return start + 0.5 * width; }
  double ToCurve(double t) const { return start + t * width; }
  // The larger side of the box.
  double extent() const { return std::max(box.max.x - box.min.x, box.max.y - box.min.y); }
};

PlanarBox BoxAround(const WeightedPoint* points, int32_t degree);

// The piece of a span, whose control points are appended to `points`, with weights of 1 unless
// `rational`; a single point, of degree 0, twice, as a line without length.
template <class Points>
BezierPiece AppendPiece(const BezierSpan& span, bool rational, Points& points) {
  BezierPiece piece{nullptr, std::max(span.degree, 1), rational, span.start, span.width};
  for (int32_t i = 0; i <= span.degree; ++i) {
    const double* p = span.points + static_cast<std::ptrdiff_t>(i) * span.stride();
    points.push_back({p[0], p[1], rational ? p[3] : 1.0});
    piece.box.Widen(Vec2{p[0], p[1]});
  }
  if (span.degree == 0) points.push_back(points.back());
  return piece;
}

// Takes its control points from `points` on; returns where the next piece's begin.
inline const WeightedPoint* SetPoints(const WeightedPoint* points, BezierPiece& piece) {
  piece.points = points;
  return points + piece.degree + 1;
}

// The piece as a part of itself.
inline BezierPiece WholeOf(const BezierPiece& piece) {
  return {piece.points, piece.degree, piece.rational,
          0.0,          1.0,          BoxAround(piece.points, piece.degree)};
}

// Bezier parameters of a point on each of two pieces.
struct ParameterPair {
  double s;
  double t;
};

// A point of a piece with its first and second derivative by t.
struct Jet {
  Vec2 p;
  Vec2 d1;
  Vec2 d2;
};

Vec2 PointAt(const BezierPiece& piece, double t);
Jet JetAt(const BezierPiece& piece, double t);

// Both halves, by de Casteljau's algorithm at 1/2. `room` takes their control points, those of the
// second from `room` + slot on; slot > degree.
struct Halves {
  BezierPiece first;
  BezierPiece second;
};
Halves Halve(const BezierPiece& piece, WeightedPoint* room, std::size_t slot);

// The parameter in [0, 1] of the point of the piece nearest to p, as far as Newton's method finds
// it from the nearest of evenly spread samples. Good for points on or very near the piece.
double NearestParameter(const BezierPiece& piece, Vec2 p);

// Newton's method on (C - p) . C' = 0 from t, kept inside [0, 1].
double RefineNearest(const BezierPiece& piece, Vec2 p, double t);

}  // namespace kurvo
