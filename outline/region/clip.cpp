// The parts of chains inside and outside of a region. Where chains meet the loops only says where
// to cut; which side a part is on is told by how often the loops go around points of it.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

#include "base/refusal.h"
#include "chain/trimmer.h"
#include "region/bridged.h"
#include "region/chain_cuts.h"
#include "region/check_region.h"
#include "region/many_points.h"
#include "region/raw_result.h"
#include "strand/check.h"
#include "strand/joints.h"
#include "strand/place_order.h"
#include "sweep/winding.h"

namespace kurvo::outline {
namespace {

constexpr double kExact = 0x1p-44;       // of the size: what rounding makes of equal curves
constexpr double kCoordinate = 0x1p-50;  // of the largest coordinate: what its rounding makes
constexpr double kRounding = 0x1p-48;    // of the frame's unit: nearer points are on a loop
constexpr double kClear = 2;             // of the tolerance: points so far away tell a side
constexpr double kBeside = 4;            // of the tolerance: where both sides of a loop are asked

// ---- Which side places are on ----

class Field {
 public:
  Field(std::span<const Cvseq> loops, int32_t rule, const Frame& frame, double tol)
      : points_(loops, frame), rule_(rule), tol_(tol) {}

  // Whether a point is inside; nothing when it is too near a loop to tell.
  std::optional<bool> IsInside(Vec2 q, double band) const {
    const Turns turns = points_.Around(q, band);
    if (!turns) return std::nullopt;
    return FillRule::Fills(rule_, *turns);
  }
  std::optional<bool> IsClearlyInside(Vec2 q) const { return IsInside(q, kClear * tol_); }

  // Of a point on a loop: whether the region lies to either side of the track there.
  bool HasInsideBeside(const Track& track, Position at) const {
    const Span& span = track.pieces()[static_cast<std::size_t>(at.piece)].span;
    const Vec2 q = PointAt(span, at.u), aside = (kBeside * tol_) * Left(TangentAt(span, at.u));
    return IsInside(q + aside, kRounding).value_or(true) ||
           IsInside(q - aside, kRounding).value_or(true);
  }

 private:
  const ManyPoints points_;
  const int32_t rule_;
  const double tol_;
};

// ---- A chain in parts ----

struct ChainPart {
  Position from, to;  // of a closed chain `to` may lie before `from`, or be it: all around
  bool is_inside;
};

class Divider {
 public:
  Divider(const Track& track, const Field& field, double tol)
      : track_(track), field_(field), tol_(tol) {}

  // Alternately inside and outside, along the chain; of a closed one that is on both sides they
  // begin at a cut.
  Array<ChainPart> Divide(int32_t chain, const ChainCuts& cuts) {
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

  int32_t unresolved() const { return unresolved_; }

 private:
  // Chords from and to which the chain runs along loops; none passes the start.
  void TakeStretches(const Array<Passage>& passages) {
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
  bool IsAlongside(double chords) {
    if (chords > all_) chords -= all_;
    if (chords < asked_) next_ = 0, reached_ = -1;
    asked_ = chords;
    for (; next_ < stretches_.size() && stretches_[next_].first <= chords; ++next_)
      reached_ = std::max(reached_, stretches_[next_].second);
    return chords <= reached_;
  }

  Position At(double chords) const {
    return track_.AtChords(chain_, chords > all_ ? chords - all_ : chords);
  }
  std::optional<bool> SideAt(double chords, double band) const {
    return field_.IsInside(track_.PointAt(At(chords)), band);
  }

  // By its middle, if that is clear of the loops, and points before and behind, which must agree
  // unless a crossing was missed.
  void Tell(Position from, Position to) {
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
  bool SideOnLoop(double low, double high, bool is_alongside) const {
    constexpr double kShares[] = {0.28, 0.47, 0.74};
    if (!is_alongside)
      if (const auto side = SideAt(0.5 * (low + high), kRounding)) return *side;
    return std::any_of(std::begin(kShares), std::end(kShares), [&](double share) {
      return field_.HasInsideBeside(track_, At(low + share * (high - low)));
    });
  }

  // Where the side changes between two chords, by bisection.
  Position Change(double low, double high, bool low_is_inside) const {
    constexpr int kMostSteps = 64;
    for (int i = 0; i < kMostSteps; ++i) {
      const double middle = 0.5 * (low + high);
      if (!(middle > low && middle < high)) break;
      const bool is_inside = SideAt(middle, kRounding).value_or(low_is_inside);
      (is_inside == low_is_inside ? low : high) = middle;
    }
    return track_.OnSide(At(low), true);
  }

  void Add(Position from, Position to, bool is_inside) {
    if (!parts_.empty() && parts_.back().is_inside == is_inside)
      parts_.back().to = to;
    else
      parts_.push_back({from, to, is_inside});
  }

  // Of a closed chain the last and the first part are neighbours too.
  Array<ChainPart> Joined() {
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

  const Track& track_;
  const Field& field_;
  const double tol_;
  int32_t chain_ = 0;
  Position first_ = {}, last_ = {};  // the ends of the chain
  double all_ = 0;                   // its chords
  Array<std::pair<double, double>> stretches_;
  std::size_t next_ = 0;             // the first stretch that begins later than was asked,
  double reached_ = -1, asked_ = 0;  // and how far those before it reach
  Array<ChainPart> parts_;
  int32_t unresolved_ = 0;
};

// ---- Records ----

// The chains of one side.
class Side {
 public:
  // Adds a part of a chain that `number` of the caller's became by bridging.
  void Add(const Cvseq& chain, const Frame& frame, const Stop* from, const Stop* to,
           bool passes_start, int32_t number, const Array<int32_t>& curves) {
    Trimmer trimmer(chain, frame);
    if (passes_start) {
      trimmer.Add(from, nullptr);
      trimmer.Add(nullptr, to);
    } else {
      trimmer.Add(from, to);
    }
    if (trimmer.size() == 0) return;
    for (const Trimmer::Source& source : trimmer.sources()) {
      const int32_t curve =
          curves.empty() ? source.curve : curves[static_cast<std::size_t>(source.curve)];
      if (curve < 0)
        origins_.push_back({-1, number, -1, KURVO_ORIGIN_BRIDGE, 0, 0});
      else
        origins_.push_back({-1, number, curve, KURVO_ORIGIN_PART, source.from, source.to});
    }
    chains_.Add(trimmer.Take());
  }

  void Release(bool with_origins, KeptRegion& out) {
    std::unique_ptr<KurvoOrigin, FreeBlock> origins;
    if (with_origins && !origins_.empty()) origins.reset(Handed<KurvoOrigin>(origins_).Release());
    *out.Get() = chains_.Release(KURVO_FILL_NONZERO);
    out.Get()->origins = origins.release();
  }

 private:
  OwnedRegion chains_;
  Array<KurvoOrigin> origins_;
};

class Clipper {
 public:
  Clipper(const KurvoRegion* region, const Cvseq* chains, int32_t n, const KurvoOptions* options,
          double epsilon)
      : epsilon_(epsilon) {
    Bounds box;
    CheckRegionRecord(region);
    rule_ = region->rule;
    for (const Cvseq& loop : LoopsOf(*region)) loop_boxes_.push_back(Checked(loop, box));
    for (int32_t i = 0; i < n; ++i) sizes_.push_back(Checked(chains[i], box).LongerSide());
    frame_ = Frame(box);
    settings_ = ReadOptions(options, box.LongerSide(), epsilon);
    settings_.progress.Tell(0);
    const double rounding = frame_.LengthInwards(kCoordinate * box.Farthest());
    tol_ = std::max(frame_.LengthInwards(settings_.tol), rounding);
    nearness_ = {tol_, std::min(std::max(kExact, rounding), tol_)};
    TakeLoops(*region);
    TakeChains(chains, n);
  }

  void Run(KeptRegion& inside, KeptRegion& outside) {
    const auto count = static_cast<int32_t>(chains_.size());
    const Track track(chains_, closed_, frame_);
    const Track loops(loops_, Array<uint8_t>(loops_.size(), 1), frame_, tol_);
    SearchLimit limit;
    const Array<ChainCuts> cuts = CutsOf(track, count, loops, nearness_, settings_.progress, limit);
    const Field field(loops_, rule_, frame_, tol_);
    Divider divider(track, field, tol_);
    Side sides[2];
    constexpr double kFound = 0.6;  // of all that the call does
    for (int32_t i = 0; i < count; ++i) {
      settings_.progress.Tell(kFound + (1 - kFound) * i / count);
      for (const ChainPart& part : divider.Divide(i, cuts[static_cast<std::size_t>(i)]))
        Emit(track, i, part, sides[part.is_inside ? 0 : 1]);
    }
    const bool with_origins = (settings_.flags & KURVO_WITH_ORIGINS) != 0;
    sides[0].Release(with_origins, inside);
    sides[1].Release(with_origins, outside);
    settings_.progress.Tell(1);
    report_.unresolved = divider.unresolved();
    report_.capped = limit.is_used_up ? 1 : 0;
  }

  const KurvoReport& report() const { return report_; }

 private:
  static Bounds Checked(const Cvseq& chain, Bounds& all) {
    Bounds own;
    CheckChain(&chain, own);
    if (!own.IsEmpty()) all.Join(own);
    return own;
  }

  // In an order that keeps neighbours together, which trees over them want.
  void TakeLoops(const KurvoRegion& region) {
    for (Bounds& box : loop_boxes_)
      if (!box.IsEmpty()) box = {frame_.Inwards(box.low), frame_.Inwards(box.high)};
    for (const int32_t i : InPlaceOrder(loop_boxes_)) {
      loops_.push_back(region.loops[i]);
      report_.gaps += WideJoints(region.loops[i], epsilon_, settings_.gap, true);
    }
  }

  void TakeChains(const Cvseq* chains, int32_t n) {
    OwnedRegion bridged;
    Array<int32_t> numbers;
    curves_.resize(static_cast<std::size_t>(n));
    for (int32_t i = 0; i < n; ++i) {
      const auto k = static_cast<std::size_t>(i);
      chains_.push_back(chains[i]);
      closed_.push_back(IsClosed(chains[i], sizes_[k], epsilon_));
      const int32_t gaps = WideJoints(chains[i], epsilon_, settings_.gap, false);
      report_.gaps += gaps;
      if (gaps == 0) continue;
      bridged.Add(Bridged(chains[i], epsilon_, settings_.gap, false, &curves_[k]));
      numbers.push_back(i);
    }
    *bridged_.Get() = bridged.Release(KURVO_FILL_NONZERO);
    for (std::size_t i = 0; i < numbers.size(); ++i)
      chains_[static_cast<std::size_t>(numbers[i])] = (*bridged_).loops[i];
  }

  // Both sides of a cut within a curve have the same point; one at a jump is two.
  void Emit(const Track& track, int32_t chain, const ChainPart& part, Side& side) const {
    const auto number = static_cast<std::size_t>(chain);
    const Cvseq& source = chains_[number];
    const Position first = {track.FirstOf(chain), 0}, last = {track.EndOf(chain) - 1, 1};
    const Position begin = track.OnSide(part.from, true), end = track.OnSide(part.to, false);
    const bool is_from_start = part.from == first, is_to_end = end == last;
    KurvoPlace from = track.PlaceOn(begin), to = track.PlaceOn(end);
    const Position after = track.OnSide(part.to, true);
    const KurvoPlace next = track.PlaceOn(after);
    if (next.index == to.index && Length(track.PointAt(after) - track.PointAt(end)) <= tol_)
      std::copy(next.point, std::end(next.point), to.point);
    const Stop start = StopOf(source, from), stop = StopOf(source, to);
    const bool passes_start = !(part.from < part.to) && !is_from_start && !is_to_end;
    side.Add(source, frame_, is_from_start ? nullptr : &start, is_to_end ? nullptr : &stop,
             passes_start, chain, curves_[number]);
  }

  const double epsilon_;
  int32_t rule_ = 0;
  Settings settings_ = {};
  Frame frame_;
  double tol_ = 0;  // in the frame
  Nearness nearness_ = {};
  Array<Bounds> loop_boxes_;
  Array<double> sizes_;           // of the chains
  Array<Cvseq> loops_, chains_;   // not owned
  Array<uint8_t> closed_;         // of the chains
  Array<Array<int32_t>> curves_;  // of bridged chains: which curve of the caller's each is
  KeptRegion bridged_;
  KurvoReport report_ = {};
};

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoRegionClip(const KurvoRegion* region, const Cvseq* chains, int32_t n,
                               const KurvoOptions* options, KurvoRegion* inside,
                               KurvoRegion* outside, KurvoReport* report, GlobalVar* g) noexcept {
  const bool is_input = inside == region || outside == region;
  if (inside != region) KurvoRegionInit(inside);
  if (outside != region) KurvoRegionInit(outside);
  if (report) *report = {};
  return Answer(g, [&] {
    Require(inside && outside && inside != outside && !is_input, KURVO_ERR_OPTION);
    Require(n >= 0 && (chains || n == 0), KURVO_ERR_OPTION);
    Clipper clipper(region, chains, n, options, GetEpsilon(g));
    KeptRegion in, out;
    clipper.Run(in, out);
    *inside = in.Release();
    *outside = out.Release();
    if (report) *report = clipper.report();
  });
}
