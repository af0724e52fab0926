#include "chain/track.h"

#include <algorithm>
#include <cmath>

#include "chain/place.h"
#include "strand/spans.h"

namespace kurvo::outline {

Track::Track(std::span<const Cvseq> chains, const Array<uint8_t>& are_closed, const Frame& frame,
             double bridged)
    : frame_(frame) {
  for (std::size_t i = 0; i < chains.size(); ++i) {
    const bool is_closed = are_closed[i] != 0;
    const std::size_t first_span = spans_.size(), first = list_.pieces.size();
    AddSpans(chains[i], is_closed, bridged);
    CutIntoPieces(spans_, first_span, list_);
    double chords = 0;
    for (std::size_t k = first; k < list_.pieces.size(); ++k) {
      const Span& span = list_.pieces[k].span;
      before_.push_back(chords);
      chain_of_.push_back(static_cast<int32_t>(i));
      chords += Length(span.End() - span.Start());
    }
    roads_.push_back({CountOf(first), is_closed, chords});
  }
  roads_.push_back({CountOf(list_.pieces.size()), false, 0});
}

void Track::AddSpans(const Cvseq& chain, bool is_closed, double bridged) {
  const std::size_t first = spans_.size();
  ForEachSpan(chain, frame_, [&](const Span& span) {
    if (spans_.size() > first) Bridge(spans_.back().End(), span.Start(), bridged);
    spans_.push_back(Kept(span, arena_));
  });
  if (is_closed && spans_.size() > first)
    Bridge(spans_.back().End(), spans_[first].Start(), bridged);
}

void Track::Bridge(Vec2 from, Vec2 to, double bridged) {
  if (bridged >= Length(to - from)) return;
  auto* ends = arena_.New<Vec2>(2);
  ends[0] = from;
  ends[1] = to;
  Span bridge;
  bridge.points = ends;
  spans_.push_back(bridge);
}

int32_t Track::After(int32_t piece) const {
  const int32_t chain = ChainOf(piece);
  if (piece + 1 < EndOf(chain)) return piece + 1;
  return IsClosed(piece) ? FirstOf(chain) : -1;
}

int32_t Track::Before(int32_t piece) const {
  const int32_t chain = ChainOf(piece);
  if (piece > FirstOf(chain)) return piece - 1;
  return IsClosed(piece) ? EndOf(chain) - 1 : -1;
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

KurvoPlace Track::PlaceOn(Position at) const {
  const Piece& piece = pieces()[static_cast<std::size_t>(at.piece)];
  return outline::PlaceAt(frame_, spans_[static_cast<std::size_t>(piece.source)],
                          piece.SourceAt(at.u));
}

Vec2 Track::CallersPointAt(Position at) const {
  const Piece& piece = pieces()[static_cast<std::size_t>(at.piece)];
  const Span& span = spans_[static_cast<std::size_t>(piece.source)];
  return frame_.Outwards(outline::PointAt(span, piece.SourceAt(at.u)));
}

Parameter Track::ParameterOf(Position at) const {
  const Piece& piece = pieces()[static_cast<std::size_t>(at.piece)];
  const Span& span = spans_[static_cast<std::size_t>(piece.source)];
  return {span.curve, span.ParameterAt(piece.SourceAt(at.u))};
}

Position Track::OnSide(Position at, bool forwards) const {
  const int32_t next = forwards ? After(at.piece) : Before(at.piece);
  return at.u == (forwards ? 1 : 0) && next >= 0 ? Position{next, forwards ? 0.0 : 1.0} : at;
}

double Track::WayBetween(Position from, Position to, double most) const {
  double way = 0;
  while (from.piece != to.piece || to.u < from.u) {
    way += Length(PointAt({from.piece, 1}) - PointAt(from));
    from = {After(from.piece), 0};
    if (from.piece < 0 || way > most) return std::numeric_limits<double>::infinity();
  }
  return way + Length(PointAt(to) - PointAt(from));
}

// The chords up to the end of a piece.
double Track::ChordsAfter(int32_t piece) const {
  const bool is_last = piece + 1 == EndOf(ChainOf(piece));
  return is_last ? Chords(piece) : before_[static_cast<std::size_t>(piece) + 1];
}

double Track::ChordsTo(Position at) const {
  const double before = before_[static_cast<std::size_t>(at.piece)];
  return before + at.u * (ChordsAfter(at.piece) - before);
}

Position Track::AtChords(int32_t chain, double chords) const {
  const auto first = before_.begin() + FirstOf(chain), end = before_.begin() + EndOf(chain);
  const auto after = std::upper_bound(first + 1, end, chords);
  const auto piece = static_cast<int32_t>(after - 1 - before_.begin());
  const double before = *(after - 1), length = ChordsAfter(piece) - before;
  return {piece, length > 0 ? std::clamp((chords - before) / length, 0.0, 1.0) : 0};
}

}  // namespace kurvo::outline
