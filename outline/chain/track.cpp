#include "chain/track.h"

#include <algorithm>
#include <cmath>

#include "chain/place.h"
#include "strand/spans.h"

namespace kurvo::outline {

Track::Track(const Cvseq& chain, const Frame& frame, bool is_closed)
    : frame_(frame), is_closed_(is_closed) {
  spans_.reserve(static_cast<std::size_t>(chain.count));
  ForEachSpan(chain, frame, [&](const Span& span) { spans_.push_back(Kept(span, arena_)); });
  CutIntoPieces(spans_, list_);
  CountOf(list_.pieces.size());
  before_.push_back(0);
  for (const Piece& piece : list_.pieces)
    before_.push_back(before_.back() + Length(piece.span.End() - piece.span.Start()));
}

int32_t Track::After(int32_t piece) const {
  if (piece + 1 < count()) return piece + 1;
  return is_closed_ ? 0 : -1;
}

int32_t Track::Before(int32_t piece) const {
  if (piece > 0) return piece - 1;
  return is_closed_ ? count() - 1 : -1;
}

Vec2 Track::PointAt(Position at) const {
  return outline::PointAt(pieces()[static_cast<std::size_t>(at.piece)].span, at.u);
}

// Newton's method on (P - q) . P'.
Position Track::FootNear(Position at, Vec2 q) const {
  constexpr int kMostSteps = 30;
  const Span& span = pieces()[static_cast<std::size_t>(at.piece)].span;
  for (int step = 0; step < kMostSteps; ++step) {
    const Jet jet = JetAt(span, at.u);
    const Vec2 gap = jet.point - q;
    const double slope = SquaredLength(jet.first) + Dot(gap, jet.second);
    if (!(slope > 0)) break;
    const double u = std::clamp(at.u - Dot(gap, jet.first) / slope, 0.0, 1.0);
    const bool done = std::fabs(u - at.u) <= 0x1p-52;
    at.u = u;
    if (done) break;
  }
  return at;
}

bool Track::IsVertex(Position at) const {
  const Piece& piece = pieces()[static_cast<std::size_t>(at.piece)];
  return (at.u == 0 && piece.from == 0) || (at.u == 1 && piece.to == 1);
}

KurvoPlace Track::PlaceAt(Position at) const {
  return PlaceOn(at.u == 1 && After(at.piece) >= 0 ? Position{After(at.piece), 0} : at);
}

KurvoPlace Track::PlaceOn(Position at) const {
  const Piece& piece = pieces()[static_cast<std::size_t>(at.piece)];
  return outline::PlaceAt(frame_, spans_[static_cast<std::size_t>(piece.source)],
                          piece.SourceAt(at.u));
}

double Track::ChordsTo(Position at) const {
  const auto i = static_cast<std::size_t>(at.piece);
  return before_[i] + at.u * (before_[i + 1] - before_[i]);
}

}  // namespace kurvo::outline
