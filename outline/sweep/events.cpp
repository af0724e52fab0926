#include "sweep/events.h"

#include <limits>
#include <utility>

#include "pair/box_pairs.h"
#include "pair/near_search.h"
#include "strand/bracket.h"
#include "strand/place_order.h"
#include "sweep/lone_crossings.h"

namespace kurvo::outline {
namespace {

// Of tol:
constexpr double kSure = 0x1p-9;       // sides that differ by more have a sure sign
constexpr double kNear = 0.5;          // sides that differ by no more are near
constexpr double kClose = 0.35;        // curves that are no farther apart are
constexpr double kLeastRise = 0x1p-4;  // stretches that are no higher are events
constexpr double kPad = 0x1p-7;        // heights that are kept beside what is near
constexpr double kBeside = 0x1p-3;     // heights within which ends are reached
constexpr double kAtVertex = 4;        // what is so near to a vertex in height belongs to it
constexpr double kShort = 16;          // shorter ones are events however they end
constexpr double kLongShare =
    0x1p-10;  // of the size: shorter ones are, unless they are all there is

constexpr int kMostStretches = 4000;  // of one pair
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The slopes d side / d height under which a stretch is seen from one of its ends: those of its
// control points, of an arc those of chord and tangent.
struct Cone {
  double least = kInfinity, most = -kInfinity;

  Cone(const Strand& strand, const Stretch& part, bool from_low) {
    const double x = from_low ? part.at_low : part.at_high;
    const double y = from_low ? part.low : part.high;
    const double sign = from_low ? 1 : -1;
    const auto see = [&](double px, double py) { Add(sign * (px - x), sign * (py - y)); };
    see(from_low ? part.at_high : part.at_low, from_low ? part.high : part.low);
    for (int i = 1; i < part.degree; ++i) see(part.side[i], part.height[i]);
    if (strand.kind == Span::Kind::kArc) AddTangent(strand, x, y);
  }

  bool IsApartFrom(const Cone& other) const { return most < other.least || other.most < least; }

 private:
  void Add(double run, double rise) {
    if (rise < 0) {
      Join(-kInfinity);
      Join(kInfinity);
    } else if (rise > 0) {
      Join(run / rise);
    } else if (run != 0) {
      Join(run > 0 ? kInfinity : -kInfinity);
    }
  }
  void Join(double slope) {
    least = std::min(least, slope);
    most = std::max(most, slope);
  }
  void AddTangent(const Strand& arc, double x, double y) {
    constexpr double kLevel = 1e-9;  // of the radius: beside the top or the bottom
    const double out = arc.bulge * (x - arc.centre.x), rise = y - arc.centre.y;
    if (out > kLevel * arc.radius) return Join(-arc.bulge * rise / out);
    Join(rise > 0 ? -arc.bulge * kInfinity : arc.bulge * kInfinity);
  }
};

// Circles whose radii differ by more than their centres are apart, by more than a length: one lies
// within the other and no arcs of them meet, as in a nest of rings.
bool AreNested(const Circle& a, const Circle& b, double apart) {
  return a.radius > 0 && b.radius > 0 &&
         std::fabs(a.radius - b.radius) > Length(a.centre - b.centre) + apart;
}

// What the search goes by for a pair of strands.
class Rules {
 public:
  Rules(const Strand& a, const Strand& b) : a_(a), b_(b) {}

  bool TakeWork() { return --stretches_left_ > 0; }
  bool NearAtLimit() const { return false; }
  bool HitLimit() const { return stretches_left_ <= 0; }

  // From a common point strands part at once when their cones do; it is an event unless both end
  // there, which is one already.
  template <class Search>
  bool Decide(const Stretch& a, const Stretch& b, const SideDifference& d, Search& search) {
    if (d.at_low == 0 && d.at_high != 0 && Cone(a_, a, true).IsApartFrom(Cone(b_, b, true))) {
      const bool is_end = a.low == a_.y_low && a.low == b_.y_low;
      if (is_end)
        ends_meet_ = ends_meet_ || a_.low != b_.low;
      else
        search.Add(a.low, a.low);
      return true;
    }
    if (d.at_high == 0 && d.at_low != 0 && Cone(a_, a, false).IsApartFrom(Cone(b_, b, false))) {
      const bool is_end = a.high == a_.y_high && a.high == b_.y_high;
      if (is_end)
        ends_meet_ = ends_meet_ || a_.high != b_.high;
      else
        search.Add(a.high, a.high);
      return true;
    }
    return false;
  }

  // Whether both end at one point that is two vertices.
  bool EndsMeet() const { return ends_meet_; }

 private:
  const Strand &a_, &b_;
  int stretches_left_ = kMostStretches;
  bool ends_meet_ = false;
};

class Finder {
 public:
  Finder(double tol, double size, const Array<Strand>& strands, Events& events)
      : tol_(tol),
        longest_(std::max(kLongShare * size, kShort * tol)),
        strands_(strands),
        events_(events) {}

  // Equal operands have equal events: pairs stand as they would in one of them.
  void Look(int32_t i, int32_t k) {
    const auto is_level = [this](int32_t s) {
      return strands_[static_cast<std::size_t>(s)].is_flat;
    };
    if (is_level(i)) events_.beside_level.push_back({i, k});
    if (is_level(k)) events_.beside_level.push_back({k, i});
    if (is_level(i) || is_level(k)) return;
    const auto place = [this](int32_t s) { return strands_[static_cast<std::size_t>(s)].place; };
    if (place(k) < place(i)) std::swap(i, k);
    a_ = &strands_[static_cast<std::size_t>(i)];
    b_ = &strands_[static_cast<std::size_t>(k)];
    low_ = std::max(a_->y_low, b_->y_low);
    high_ = std::min(a_->y_high, b_->y_high);
    if (!(low_ <= high_) || AreApart() || AreNested(a_->circle(), b_->circle(), tol_)) return;
    near_.clear();
    bool ends_meet = false;
    if (low_ == high_) {
      if (a_->high == b_->low || a_->low == b_->high) return;  // one goes on where the other ends
      if (tol_ >= std::fabs(Apart(low_))) near_.push_back({low_, low_});
    } else {
      const CommonLevel low = LevelAt(low_), high = LevelAt(high_);
      if (const auto lone = FindLoneCrossings(*a_, *b_, low, high, tol_)) {
        for (const auto& [height, side, sense] : *lone)
          events_.crossings.push_back({height, side, i, k, sense});
        return;
      }
      const SideReach sides = {kSure * kNear * tol_, kNear * tol_, kClose * tol_};
      const NearLimits limits = {sides, kLeastRise * tol_, kPad * tol_, 0};
      Rules rules(*a_, *b_);
      NearSearch<Strand, Rules>(*a_, *b_, limits, rules, near_).Run(low, high);
      events_.capped += rules.HitLimit();
      ends_meet = rules.EndsMeet();
    }
    events_.unclear += ends_meet;
    for (const NearHeights& near : near_) Add(near, i, k);
  }

 private:
  CommonLevel LevelAt(double height) const {
    return {height, a_->LevelAt(height), b_->LevelAt(height)};
  }
  double Apart(double height) const { return a_->At(height) - b_->At(height); }

  // Whether chords and bends tell that one lies to one side of the other: most pairs need no
  // search.
  bool AreApart() const {
    const double at_low = a_->ChordAt(low_) - b_->ChordAt(low_);
    const double at_high = a_->ChordAt(high_) - b_->ChordAt(high_);
    const double least = a_->least_bend - b_->most_bend, most = a_->most_bend - b_->least_bend;
    return (at_low + least > tol_ && at_high + least > tol_) ||
           (at_low + most < -tol_ && at_high + most < -tol_);
  }

  void Add(const NearHeights& near, int32_t i, int32_t k) {
    const double slack = kBeside * tol_;
    const double from = std::max(low_, near.low - slack), to = std::min(high_, near.high + slack);
    const double at_from = Apart(from), at_to = Apart(to);
    const bool changes = (at_from < 0 && at_to > 0) || (at_from > 0 && at_to < 0);
    events_.unclear += !changes && !IsAtVertex(near);
    // The ends of what a search that met its limit has not looked at may be apart.
    if (near.low == near.high && !changes && !(tol_ >= std::fabs(Apart(near.low)))) return;
    const bool is_all = near.low <= low_ + slack && near.high >= high_ - slack;
    const bool ends_as_it_began = is_all && !changes;
    const double longest = ends_as_it_began ? kShort * tol_ : longest_;
    // Low strands that run together from end to end, or change sides by less than tol, may be wide.
    const bool stays = kClose * tol_ >= std::max(std::fabs(at_from), std::fabs(at_to));
    const double run = ends_as_it_began || (changes && stays)
                           ? std::fabs(a_->At(near.high) - a_->At(near.low))
                           : 0;
    if (std::max(near.high - near.low, run) > longest) {
      events_.together.push_back({near.low, near.high, i, k});
      return;
    }
    const auto apart = [this](double height) { return Apart(height); };
    const double height = changes
                              ? SignChangeBetween(apart, from, to, at_from, at_to, kSameSide * tol_)
                              : Closest(near);
    const int32_t sense = !changes ? 0 : at_from > 0 ? 1 : -1;
    events_.crossings.push_back({height, SideAt(height), i, k, sense});
  }

  // Whether two strands are near because they begin or end in one vertex.
  bool IsAtVertex(const NearHeights& near) const {
    const double reach = kAtVertex * tol_;
    return (a_->low == b_->low && near.high <= low_ + reach) ||
           (a_->high == b_->high && near.low >= high_ - reach);
  }

  // The height of a touch: a common end, or where they are closest.
  double Closest(const NearHeights& near) const {
    if (near.low <= low_ + kBeside * tol_ && tol_ >= std::fabs(Apart(low_))) return low_;
    if (near.high >= high_ - kBeside * tol_ && tol_ >= std::fabs(Apart(high_))) return high_;
    // Golden section search (Kiefer 1953).
    constexpr double kShare = 0.61803398874989485;
    constexpr int kSteps = 40;
    double low = near.low, high = near.high;
    double first = high - kShare * (high - low), second = low + kShare * (high - low);
    double at_first = std::fabs(Apart(first)), at_second = std::fabs(Apart(second));
    for (int step = 0; step < kSteps && high - low > kBeside * tol_; ++step) {
      if (at_first < at_second) {
        high = std::exchange(second, first);
        at_second = at_first;
        first = high - kShare * (high - low);
        at_first = std::fabs(Apart(first));
      } else {
        low = std::exchange(first, second);
        at_first = at_second;
        second = low + kShare * (high - low);
        at_second = std::fabs(Apart(second));
      }
    }
    return 0.5 * (low + high);
  }

  // A crossing is placed by the steeper strand: the other one runs far within a rounding of height.
  double SideAt(double height) const {
    const double e = kBeside * tol_;
    const double run_a = std::fabs(a_->At(height + e) - a_->At(height - e));
    const double run_b = std::fabs(b_->At(height + e) - b_->At(height - e));
    return (run_a <= run_b ? a_ : b_)->At(height);
  }

  const double tol_, longest_;
  const Array<Strand>& strands_;
  Events& events_;
  const Strand *a_ = nullptr, *b_ = nullptr;
  double low_ = 0, high_ = 0;  // their common heights
  Array<NearHeights> near_;
};

// Whether many strands come in an order that does not keep together what lies together: loops of
// few curves.
bool AreScattered(const Array<Strand>& strands) {
  constexpr std::size_t kMany = 256, kRun = 32;
  if (strands.size() < kMany) return false;
  std::size_t breaks = 0;
  for (std::size_t i = 1; i < strands.size(); ++i) {
    const Strand &a = strands[i - 1], &b = strands[i];
    breaks += a.low != b.low && a.low != b.high && a.high != b.low && a.high != b.high;
  }
  return kRun * breaks > strands.size();
}

// Calls look(i, k) for strands i < k whose boxes are within tol, of level ones within twice as
// much.
template <class F>
void ForEachNearPair(const Array<Strand>& strands, double tol, const F& look) {
  Array<Bounds> boxes;
  boxes.reserve(strands.size());
  for (const Strand& s : strands) {
    const double margin = s.is_flat ? tol : 0;
    boxes.push_back(
        {{s.least_x - margin, s.y_low - margin}, {s.most_x + margin, s.y_high + margin}});
  }
  if (!AreScattered(strands)) return PairTree(boxes).ForEachPair(tol, look);
  const Array<int32_t> order = InPlaceOrder(boxes);
  Array<Bounds> ordered;
  ordered.reserve(boxes.size());
  for (const int32_t i : order) ordered.push_back(boxes[static_cast<std::size_t>(i)]);
  PairTree(ordered).ForEachPair(tol, [&](int32_t i, int32_t k) {
    const int32_t a = order[static_cast<std::size_t>(i)], b = order[static_cast<std::size_t>(k)];
    look(std::min(a, b), std::max(a, b));
  });
}

}  // namespace

void FindEvents(const Scene& scene, const Array<Strand>& strands, Progress& progress,
                Events& events) {
  Finder finder(scene.tol, scene.frame.LengthInwards(scene.frame.size()), strands, events);
  int64_t pairs = 0;
  ForEachNearPair(strands, scene.tol, [&](int32_t i, int32_t k) {
    finder.Look(i, k);
    constexpr int64_t kPairsATell = 1024;
    constexpr double kUsualPairs = 16;  // of a strand
    if (++pairs % kPairsATell != 0) return;
    const double share = static_cast<double>(pairs) / static_cast<double>(strands.size());
    progress.Tell(0.5 * std::min(share / kUsualPairs, 1.0));
  });
}

}  // namespace kurvo::outline
