#include "region/chain_sides.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "sweep/winding.h"

namespace kurvo::outline {
namespace {

constexpr double kRounding = 0x1p-48;  // of the frame's unit: nearer points are on a loop
constexpr double kClear = 2;           // of the tolerance: points so far away tell a side
constexpr double kLeastAway = 4 * kRounding;
// Of the tolerance: where both sides of a loop are asked. The least is for the tips of wedges.
constexpr double kBeside[] = {4, 0.5, 0.0625};

}  // namespace

std::optional<bool> Field::IsInside(Vec2 q, double band) const {
  const Turns turns = points_.Around(q, band);
  if (!turns) return std::nullopt;
  return FillRule::Fills(rule_, *turns);
}

bool Field::HasInsideBeside(const Track& track, Position at) const {
  const Span& span = track.pieces()[static_cast<std::size_t>(at.piece)].span;
  const Vec2 q = PointAt(span, at.u), left = Left(TangentAt(span, at.u));
  return std::any_of(std::begin(kBeside), std::end(kBeside), [&](double share) {
    const double away = std::max(share * tol_, kLeastAway);
    return IsInside(q + away * left, kRounding).value_or(true) ||
           IsInside(q - away * left, kRounding).value_or(true);
  });
}

Array<ChainPart> ChainSides::Divide(int32_t chain, const ChainCuts& cuts) {
  chain_ = chain;
  parts_.clear();
  first_ = {track_.FirstOf(chain), 0};
  last_ = {track_.EndOf(chain) - 1, 1};
  if (first_.piece > last_.piece) return {};
  all_ = track_.Chords(first_.piece);
  TakeStretches(cuts.alongside);
  const Array<Position>& at = cuts.at;
  if (!track_.IsClosed(first_.piece)) {
    Position from = first_;
    for (const Position cut : at) Tell(std::exchange(from, cut), cut);
    Tell(from, last_);
  } else if (at.empty()) {
    Tell(first_, last_);
  } else {
    for (std::size_t i = 0; i + 1 < at.size(); ++i) Tell(at[i], at[i + 1]);
    Tell(at.back(), at.front());
  }
  return Joined();
}

// Chords from and to which the chain runs along loops; none passes the start.
void ChainSides::TakeStretches(const Array<Passage>& passages) {
  stretches_.clear();
  next_ = 0;
  reached_ = -1;
  for (const Passage& passage : passages) {
    const double from = track_.ChordsTo(passage.from), to = track_.ChordsTo(passage.to);
    if (passage.from < passage.to) {
      stretches_.push_back({from, to});
    } else {
      stretches_.push_back({from, all_});
      stretches_.push_back({0, to});
    }
  }
  std::sort(stretches_.begin(), stretches_.end());
}

// Asked for places in order, but for the last of a closed chain.
bool ChainSides::IsAlongside(double chords) {
  if (chords > all_) chords -= all_;
  if (chords < asked_) next_ = 0, reached_ = -1;
  asked_ = chords;
  for (; next_ < stretches_.size() && stretches_[next_].first <= chords; ++next_)
    reached_ = std::max(reached_, stretches_[next_].second);
  return chords <= reached_;
}

// By its middle, if that is clear of the loops, and points before and behind, which must agree
// unless a crossing was missed.
void ChainSides::Tell(Position from, Position to) {
  constexpr double kShares[] = {0.125, 0.25, 0.5, 0.75, 0.875};
  constexpr std::size_t kCount = std::size(kShares), kOrder[kCount] = {2, 1, 3, 0, 4};
  constexpr int kAsked = 3;  // more only while none is clear
  const double low = track_.ChordsTo(from);
  const double high = track_.ChordsTo(to) + (from < to ? 0 : all_);
  const bool is_alongside = IsAlongside(0.5 * (low + high));
  const auto at = [&](std::size_t i) { return low + kShares[i] * (high - low); };
  std::optional<bool> sides[kCount];
  int asked = 0, clear = 0;
  for (const std::size_t i : kOrder) {
    if (asked == kAsked && clear > 0) break;
    sides[i] = SideAt(at(i), kClear * tol_);
    clear += sides[i] ? 1 : 0;
    if (++asked == 1 && is_alongside && clear == 0) break;
  }
  if (clear == 0) return Add(from, to, SideOnLoop(low, high, is_alongside));
  std::size_t last = kCount;
  for (std::size_t i = 0; i < kCount; ++i) {
    if (!sides[i]) continue;
    if (last < kCount && *sides[i] != *sides[last]) {
      ++unresolved_;
      const Position cut = Change(at(last), at(i), *sides[last]);
      Add(std::exchange(from, cut), cut, *sides[last]);
    }
    last = i;
  }
  Add(from, to, *sides[last]);
}

// Nowhere clear: the curve runs along a loop, or is short. Beside a corner a loop has no sides,
// and the middle often is one.
bool ChainSides::SideOnLoop(double low, double high, bool is_alongside) const {
  constexpr double kShares[] = {0.28, 0.47, 0.74};
  if (!is_alongside)
    if (const auto side = SideAt(0.5 * (low + high), kRounding)) return *side;
  return std::any_of(std::begin(kShares), std::end(kShares), [&](double share) {
    return field_.HasInsideBeside(track_, At(low + share * (high - low)));
  });
}

// Where the side changes between two chords, by bisection.
Position ChainSides::Change(double low, double high, bool low_is_inside) const {
  constexpr int kMostSteps = 64;
  for (int i = 0; i < kMostSteps; ++i) {
    const double middle = 0.5 * (low + high);
    if (!(middle > low && middle < high)) break;
    const bool is_inside = SideAt(middle, kRounding).value_or(low_is_inside);
    (is_inside == low_is_inside ? low : high) = middle;
  }
  return track_.OnSide(At(low), true);
}

void ChainSides::Add(Position from, Position to, bool is_inside) {
  if (!parts_.empty() && parts_.back().is_inside == is_inside)
    parts_.back().to = to;
  else
    parts_.push_back({from, to, is_inside});
}

// Of a closed chain the last and the first part are neighbours too.
Array<ChainPart> ChainSides::Joined() {
  if (track_.IsClosed(first_.piece)) {
    if (parts_.size() == 1) {
      parts_[0].from = first_;
      parts_[0].to = last_;
    } else if (parts_.front().is_inside == parts_.back().is_inside) {
      parts_.front().from = parts_.back().from;
      parts_.pop_back();
    }
  }
  return std::move(parts_);
}

}  // namespace kurvo::outline
