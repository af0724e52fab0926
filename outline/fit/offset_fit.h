// What a span is offset to.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "base/memory.h"
#include "strand/span.h"

namespace kurvo::outline {

// The normal to the right of a direction.
inline Vec2 Right(Vec2 v) { return {v.y, -v.x}; }

// A curve that runs alongside part of a span, in the coordinates of its frame.
struct OffsetPiece {
  enum class Kind : uint8_t { kLine, kArc, kCubic };

  Kind kind;
  bool clockwise;  // of an arc
  Vec2 points[4];  // of a cubic; of the others the first and the last are the ends
  Vec2 centre;     // of an arc
  double radius;
  double from, to;  // parameters of the span's curve
};

// The area between a smooth part of a span and its offset: normals to the right, negative lengths
// to the left. Where the part bends tighter than that around its centres of curvature, the normals
// end there.
struct Strip {
  Vec2 start, end;           // of the part
  Vec2 leaves, arrives;      // its directions there, unit vectors
  double reach, last_reach;  // of the normals at the ends: the distance unless they are cut short
  double from, to;           // parameters of the curve
  int32_t curve;             // index in the chain
  bool is_line;
  std::size_t first_piece, piece_count;  // none where the offset is a point
  bool is_within = false;                // its span begins with the strip before it, or earlier

  Vec2 First() const { return start + reach * Right(leaves); }
  Vec2 Last() const { return end + last_reach * Right(arrives); }
};

// Whether a normal is cut short by a bend as narrow as the tolerance.
inline bool IsTight(double reach, double distance, double tol) {
  constexpr double kTight = 4;  // tolerances
  return std::fabs(reach) < std::fabs(distance) && kTight * tol >= std::fabs(reach);
}

struct StripList {
  // Whether strips end at the curve of the centres of curvature, not at chords of it: where what is
  // beyond these may show.
  bool follows_centres = false;
  Array<Strip> strips;
  Array<OffsetPiece> pieces;
  int capped =
      0;  // pieces taken at a limit of work, or spans that were fitted more coarsely for it
  std::size_t extra = 0;  // pieces of cubics beyond the usual few, which together have a limit
  double off = 0;         // the farthest that a piece may be off, in the frame's unit
};

// Appends the strips of a span, one after the other: between two of them the span has a cusp, or
// goes on smoothly. Lines have lines, arcs have arcs, all else has cubics no farther than `tol`
// (> 0) from where they belong; where the strip is cut at the centres of curvature, chords of
// their curve may stand for it, all of which are within the distance of the span. Where such a bend
// is tightest, if it is tight there, one strip ends and the next begins. Of a span that is a point
// there are none. Cost: O(degree^2) a span and some microseconds a cubic.
void AppendStrips(const Span& span, double distance, double tol, StripList& list);

}  // namespace kurvo::outline
