// A part of a Bezier piece during subdivision, and the cheap tests that rule pairs of parts out.
#pragma once

#include "calc/boxes.h"
#include "relate/bezier_piece.h"

namespace kurvo {

// The stretch [t0, t1] of a piece with its own control points.
struct PiecePart {
  const WeightedPoint* points;
  int32_t degree;
  double t0;
  double t1;
  PlanarBox box;  // of the control points

  double width() const { return t1 - t0; }
  double middle() const { return 0.5 * (t0 + t1); }
  // The larger side of the box.
  double extent() const;
};

// The box of the control points, which holds the piece; all of the plane when weights differ in
// sign.
PlanarBox EnclosureOf(const BezierPiece& piece);

PiecePart MakePart(const WeightedPoint* points, int32_t degree, double t0, double t1);

// True when the strip around the chord of `a` that holds its control points lies further than
// `slack` from all control points of `b` (the fat line of Sederberg and Nishita, CAD 22, 1990).
bool StripApart(const PiecePart& a, const PiecePart& b, double slack);

// The directions of the legs of a control polygon between two extreme ones, less than half a turn
// apart: every tangent of the part lies between them (weights positive).
struct TangentCone {
  Vec2 low;
  Vec2 high;
  bool narrow = false;  // false: the legs turn too much, or there are none
};

TangentCone ConeOf(const PiecePart& part);

// True when no tangent of one part is parallel to one of the other: then they cross once at most.
bool ConesApart(const TangentCone& a, const TangentCone& b);

}  // namespace kurvo
