// Loops that overlap themselves, as records, with where their curves come from.
#pragma once

#include <kurvo_outline.h>

#include "base/memory.h"
#include "fit/offset_fit.h"
#include "strand/frame.h"

namespace kurvo::outline {

// Raw loops and, for each curve of them, its origin. The winding numbers of the loops say what they
// enclose: points where it is positive. The records are for reading, and live as long as this.
struct RawRegion {
  Array<Cvseq> loops;
  Array<KurvoOrigin> origins;
  Arena records;

  KurvoRegion View() {
    return {CountOf(loops.size()), KURVO_FILL_POSITIVE, loops.data(), origins.data()};
  }
};

// A loop that grows, each curve from where the last one ended; points are in the frame's
// coordinates.
class RawLoop {
 public:
  // Of the loop or chain `index` of the input, whose curves lend their attribute words.
  RawLoop(const Frame& frame, const Cvseq& source, int32_t index)
      : frame_(frame), source_(source), index_(index) {}

  void Reserve(std::size_t curves) { curves_.reserve(curves); }
  bool is_empty() const { return curves_.empty(); }
  void StartAt(Vec2 start) { start_ = at_ = start; }
  // From here on curves are of this kind and come from this part of a curve of the input.
  void Name(int32_t kind, int32_t curve, double from, double to) {
    origin_ = {0, index_, curve, kind, from, to};
  }
  // A line, unless it would be a point.
  void LineTo(Vec2 end);
  void ArcTo(Vec2 centre, double radius, bool clockwise, Vec2 end);
  // The piece, begun where the loop has come to.
  void Piece(const OffsetPiece& piece);

  // Ends the loop where it began and adds it, unless it is a point.
  void Close(RawRegion& region);

 private:
  struct RawCurve {
    OffsetPiece piece;
    KurvoOrigin origin;
  };

  const Frame& frame_;
  const Cvseq& source_;
  const int32_t index_;
  KurvoOrigin origin_ = {};
  Vec2 start_ = {}, at_ = {};
  Array<RawCurve> curves_;
};

}  // namespace kurvo::outline
