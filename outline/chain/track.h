// A chain as a road: pieces one after the other, and positions along them.
#pragma once

#include <kurvo_outline.h>

#include "base/memory.h"
#include "pair/piece.h"
#include "strand/frame.h"
#include "strand/span.h"

namespace kurvo::outline {

// A position is the number of a piece and how far along it, in [0, 1]: the end of one piece and the
// start of the next are the same place.
struct Position {
  int32_t piece;
  double u;

  bool operator==(const Position&) const = default;
};
inline bool operator<(Position a, Position b) {
  return a.piece != b.piece ? a.piece < b.piece : a.u < b.u;
}

class Track {
 public:
  // Spans of a checked chain in a frame, which must outlive the track.
  Track(const Cvseq& chain, const Frame& frame, bool is_closed);

  const Array<Piece>& pieces() const { return list_.pieces; }
  int32_t count() const { return static_cast<int32_t>(list_.pieces.size()); }
  bool is_closed() const { return is_closed_; }
  // The neighbours of a piece; -1 beyond an end of an open chain.
  int32_t After(int32_t piece) const;
  int32_t Before(int32_t piece) const;

  Vec2 PointAt(Position at) const;
  // The foot of a point near a position, on the same piece.
  Position FootNear(Position at, Vec2 q) const;
  // Whether a curve of the chain, or a span of a spline, begins or ends there.
  bool IsVertex(Position at) const;
  // The place on the piece's curve, and that on the later curve at a joint.
  KurvoPlace PlaceOn(Position at) const;
  KurvoPlace PlaceAt(Position at) const;
  // The piece's end nearer to the position.
  static Position NearerEnd(Position at) { return {at.piece, at.u < 0.5 ? 0.0 : 1.0}; }
  // The chords of the pieces from the start to the position, along the last piece by its share.
  double ChordsTo(Position at) const;
  double Chords() const { return before_.back(); }

 private:
  const Frame& frame_;
  Array<Span> spans_;
  Arena arena_;
  PieceList list_;
  Array<double> before_;  // chords before each piece, and all
  bool is_closed_;
};

}  // namespace kurvo::outline
