// Pieces: parts of spans that turn by no more than an eighth of a turn.
#pragma once

#include "base/bounds.h"
#include "base/memory.h"
#include "strand/span.h"

namespace kurvo::outline {

// Sectors of 45 degrees around 0, 45, 90 and 135: their borders have these sines and cosines.
inline constexpr double kCosBorder = 0.92387953251128675613;
inline constexpr double kSinBorder = 0.38268343236508977173;

// Two pieces of known sectors have an axis along which both advance: neither leaves it by more than
// 67.5 degrees. Seen along that axis each is a function, side over height, of slope at most 2.42.
struct Piece {
  Span span;        // with arrays in the arena of its list; u over the piece is that of the part
  int32_t source;   // the span that it is a part of
  double from, to;  // parameters of that span
  int sector;       // the direction of travel, up to sign, is within 22.5 degrees of 45 sector
  Bounds box;

  double SourceAt(double u) const { return u >= 1 ? to : from + u * (to - from); }
};

struct PieceList {
  Array<Piece> pieces;  // in the order of the chain
  Arena arena;
};

// Cuts spans, from number `first` on, where their direction passes 22.5 degrees modulo 45. Spans
// that are points are left out, unless nothing else is there; neighbours share the bits of their
// ends.
void CutIntoPieces(const Array<Span>& spans, std::size_t first, PieceList& list);

Array<Bounds> BoxesOf(const Array<Piece>& pieces);

}  // namespace kurvo::outline
