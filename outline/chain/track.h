// Chains as roads: pieces one after the other, and positions along them.
#pragma once

#include <kurvo_outline.h>

#include <limits>
#include <span>

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

// Of a curve of a chain.
struct Parameter {
  int32_t curve;
  double t;
};

class Track {
 public:
  // Spans of checked chains, of which some are closed, in a frame that must outlive the track. Gaps
  // wider than `bridged` (in the frame) between spans are lines, on which there are no places.
  Track(std::span<const Cvseq> chains, const Array<uint8_t>& are_closed, const Frame& frame,
        double bridged = std::numeric_limits<double>::infinity());
  Track(const Cvseq& chain, const Frame& frame, bool is_closed)
      : Track({&chain, 1}, Array<uint8_t>(1, is_closed), frame) {}

  // Of all chains, one after the other.
  const Array<Piece>& pieces() const { return list_.pieces; }
  int32_t count() const { return static_cast<int32_t>(list_.pieces.size()); }
  // The chain of a piece, the pieces of a chain and whether it is closed.
  int32_t ChainOf(int32_t piece) const { return chain_of_[static_cast<std::size_t>(piece)]; }
  int32_t FirstOf(int32_t chain) const { return roads_[static_cast<std::size_t>(chain)].first; }
  int32_t EndOf(int32_t chain) const { return roads_[static_cast<std::size_t>(chain) + 1].first; }
  bool IsClosed(int32_t piece) const { return RoadOf(piece).is_closed; }
  // The neighbours of a piece; -1 beyond an end of an open chain.
  int32_t After(int32_t piece) const;
  int32_t Before(int32_t piece) const;

  Vec2 PointAt(Position at) const;
  // The foot of a point near a position, on the same piece.
  Position FootNear(Position at, Vec2 q) const;
  // The distance along the pieces from one position forwards to another of the same chain, as long
  // as it is no more than `most`; else something above that.
  double WayBetween(Position from, Position to, double most) const;
  // Whether a curve of the chain, or a span of a spline, begins or ends there.
  bool IsVertex(Position at) const;
  // The place on the piece's curve; its point in the coordinates of the caller, its parameter.
  KurvoPlace PlaceOn(Position at) const;
  Vec2 CallersPointAt(Position at) const;
  Parameter ParameterOf(Position at) const;
  // The same place on the side of a joint on which that lies which goes forwards from there, or
  // backwards.
  Position OnSide(Position at, bool forwards) const;
  // The same place on the later curve at a joint.
  Position OnLater(Position at) const { return OnSide(at, true); }
  // The piece's end nearer to the position.
  static Position NearerEnd(Position at) { return {at.piece, at.u < 0.5 ? 0.0 : 1.0}; }
  // The chords of the pieces from the start of the chain to the position, along the last piece by
  // its share.
  double ChordsTo(Position at) const;
  // Of all of the piece's chain.
  double Chords(int32_t piece) const { return RoadOf(piece).chords; }
  // Where a chain has come to when its chords are that long.
  Position AtChords(int32_t chain, double chords) const;

 private:
  struct Road {
    int32_t first;  // piece
    bool is_closed;
    double chords;
  };

  void AddSpans(const Cvseq& chain, bool is_closed, double bridged);
  void Bridge(Vec2 from, Vec2 to, double bridged);
  const Road& RoadOf(int32_t piece) const {
    return roads_[static_cast<std::size_t>(ChainOf(piece))];
  }
  double ChordsAfter(int32_t piece) const;

  const Frame& frame_;
  Array<Span> spans_;
  Arena arena_;
  PieceList list_;
  Array<int32_t> chain_of_;  // of each piece
  Array<double> before_;     // chords before each piece, in its chain
  Array<Road> roads_;        // and one behind the last
};

}  // namespace kurvo::outline
