// What the control points of a part tell of it, and the cheap tests that rule pairs of parts out.
#pragma once

#include "relate/bezier_piece.h"

namespace kurvo {

// True when the part lies in the convex hull of its control points: weights of one sign.
bool Encloses(const BezierPiece& part);

// The box of the control points, which holds the piece; all of the plane when they do not.
PlanarBox EnclosureOf(const BezierPiece& piece);

// True when the strip around the chord of `a` that holds its control points lies further than
// `slack` from all control points of `b` (the fat line of Sederberg and Nishita, CAD 22, 1990).
bool StripApart(const BezierPiece& a, const BezierPiece& b, double slack);

// The directions of the legs of a control polygon between two extreme ones, less than half a turn
// apart: every tangent of the part lies between them (weights positive).
struct TangentCone {
  Vec2 low;
  Vec2 high;
  bool narrow = false;  // false: the legs turn too much, or there are none
};

TangentCone ConeOf(const BezierPiece& part);
TangentCone ConeOf(const double (*points)[3], int32_t degree);

// True when no tangent of one part is parallel to one of the other: then they cross once at most.
bool ConesApart(const TangentCone& a, const TangentCone& b);

}  // namespace kurvo
