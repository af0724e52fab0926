// Two Bezier pieces A(s) and B(t) next to a pair of parameters: where they cross there, touch, or
// come closest.
#pragma once

#include <algorithm>
#include <cmath>

#include "relate/bezier_piece.h"
#include "relate/intersect/crossing.h"

namespace kurvo {

constexpr double kInsideMargin = 1e-10;  // of a parameter, for roots at the joint of two parts

inline bool OnPiece(double t) { return t >= -kInsideMargin && 1.0 + kInsideMargin >= t; }

// Within a part, joints included.
inline bool Holds(const BezierPiece& part, double t) {
  return t >= part.start - kInsideMargin && part.end() + kInsideMargin >= t;
}

inline Vec2 EndOf(const BezierPiece& piece, double t) {
  return Planar(piece.points[t == 0.0 ? 0 : piece.degree]);
}

inline ParameterPair OnPieces(const ParameterPair& at) {
  return {std::clamp(at.s, 0.0, 1.0), std::clamp(at.t, 0.0, 1.0)};
}

// Not further from the middle of two parts than twice their width; false for NaN.
inline bool Near(const ParameterPair& at, const BezierPiece& part_a, const BezierPiece& part_b) {
  return 2.0 * part_a.width >= std::fabs(at.s - part_a.middle()) &&
         2.0 * part_b.width >= std::fabs(at.t - part_b.middle());
}

// A part, without points, that Newton's method may not leave on the way from t by more than an
// eighth of a piece.
inline BezierPiece WindowAround(double t) {
  constexpr double kWidth = 1.0 / 16.0;
  return {nullptr, 0, false, t - 0.5 * kWidth, kWidth};
}

struct PiecePair {
  const BezierPiece& a;
  const BezierPiece& b;
  double tol;  // of lengths

  double GapAt(const ParameterPair& at) const {
    return Length(PointAt(b, at.t) - PointAt(a, at.s));
  }
  bool Close(const ParameterPair& at) const { return tol >= GapAt(at); }

  // What Newton's method finds from `at`. False when it leaves the neighbourhood of the parts, or
  // does not settle.
  //
  // A common point; `place` is it, and it is a touch where the pieces cross at a shallow angle.
  bool SolveCrossing(const BezierPiece& part_a, const BezierPiece& part_b, ParameterPair& at,
                     bool& shallow, Vec2& place) const;
  // The point where the tangents are parallel and the gap is normal to them: where the pieces
  // touch, or come closest, or are furthest apart between two crossings.
  bool SolveContact(const BezierPiece& part_a, const BezierPiece& part_b, ParameterPair& at) const;

  // From a place where the pieces are close to where they are closest on the same run, along which
  // they stay within the tolerance: they cross there at a shallow angle, or touch. `at` itself
  // where none is found, or nothing is gained.
  ParameterPair Closest(const ParameterPair& at) const;

  // From `at` to where each point is the nearest one to the other, as far as a few rounds of taking
  // one after the other lead.
  ParameterPair Approach(ParameterPair at) const;

  // From a root next to an end of a piece, or beyond it, to the end itself, but where that parts
  // the points: on a large piece the way may be long. False for a root beyond an end where no
  // common point is near. `moved` tells whether it is another point now.
  bool MoveToEnds(ParameterPair& at, bool& moved) const;

  // Whether two common points are one: when Newton's method gave the same root, a touch or shared
  // ends and another one where the points agree.
  bool IsSame(const Crossing& known, const ParameterPair& at, bool touch) const;
};

}  // namespace kurvo
