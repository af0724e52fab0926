#include "pair/near.h"

#include <algorithm>
#include <cmath>

#include "pair/alongside.h"

namespace kurvo::outline {
namespace {

constexpr int kMostDepth = 90;
constexpr int kMostStretches = 1 << 16;  // of one pair
constexpr double kLeastRise = 0x1p-4;    // of the reach: graphs of slope 2.42 stay near across it
constexpr double kHeightShare = 0x1p-8;  // of the reach: error of the heights of cuts
constexpr double kUseful = 0.6;          // of the heights: a cut that leaves more is a halving

// d = side of a less side of b over a stretch.
struct Difference {
  double at_low, at_high, least, most;

  Difference(const Stretch& a, const Stretch& b)
      : at_low(a.at_low - b.at_low),
        at_high(a.at_high - b.at_high),
        least(a.least - b.most),
        most(a.most - b.least) {}
  double Low() const { return std::min(at_low, at_high) + least; }
  double High() const { return std::max(at_low, at_high) + most; }
};

class Search {
 public:
  Search(const Graph& a, const Graph& b, double reach, Work& work, Array<NearHeights>& found)
      : a_(a), b_(b), reach_(reach), work_(work), found_(found), first_(found.size()) {}

  // A height, and where the graphs have it.
  struct Level {
    double height, a, b;
  };
  Level At(double height) const { return {height, a_.ParameterAt(height), b_.ParameterAt(height)}; }

  void Run(const Level& bottom, const Level& top, int depth) {
    const double low = bottom.height, high = top.height;
    const Stretch a = a_.Between(low, high, bottom.a, top.a);
    const Stretch b = b_.Between(low, high, bottom.b, top.b);
    const Difference d(a, b);
    if (d.Low() > reach_ || d.High() < -reach_) return;
    const double rise = high - low;
    const bool is_near = d.High() <= 2 * reach_ && d.Low() >= -2 * reach_;
    if (is_near || rise <= kLeastRise * reach_ || depth == 0 || !work_.Take() ||
        --stretches_left_ <= 0)
      return Add(low, high);
    const Verdict verdict = Alongside(a_, a, b_, b, reach_);
    if (verdict == Verdict::kApart) return;
    if (verdict == Verdict::kNear) return Add(low, high);

    // Where the chords' difference, in shares of the rise, lies within what the bends allow.
    double from = 0, to = 1;
    const double change = d.at_high - d.at_low;
    if (change != 0) {
      const double t0 = (-reach_ - d.most - d.at_low) / change;
      const double t1 = (reach_ - d.least - d.at_low) / change;
      from = std::max(from, std::min(t0, t1));
      to = std::min(to, std::max(t0, t1));
    }
    const double pad = 0x1p-44;  // rounding of what was just computed
    from = std::max(from - pad, 0.0);
    to = std::min(to + pad, 1.0);
    if (from > to) return;
    if (to - from < kUseful) {
      return Run(from > 0 ? Between(bottom, top, low + from * rise) : bottom,
                 to < 1 ? Between(bottom, top, low + to * rise) : top, depth - 1);
    }
    const double height = 0.5 * (low + high);
    if (!(height > low && height < high)) return Add(low, high);
    const Level middle = Between(bottom, top, height);
    Run(bottom, middle, depth - 1);
    Run(middle, top, depth - 1);
  }

 private:
  // A level between two, as exact as the reach asks for.
  Level Between(const Level& bottom, const Level& top, double height) const {
    const double allowed = kHeightShare * reach_;
    return {height, a_.ParameterAt(height, {bottom.height, bottom.a}, {top.height, top.a}, allowed),
            b_.ParameterAt(height, {bottom.height, bottom.b}, {top.height, top.b}, allowed)};
  }

  void Add(double low, double high) {
    if (found_.size() > first_ && low <= found_.back().high + kLeastRise * reach_) {
      found_.back().high = std::max(found_.back().high, high);
    } else {
      found_.push_back({low, high});
    }
  }

  const Graph& a_;
  const Graph& b_;
  const double reach_;
  Work& work_;
  Array<NearHeights>& found_;
  const std::size_t first_;
  int stretches_left_ = kMostStretches;
};

}  // namespace

void FindNear(const Graph& a, const Graph& b, double low, double high, double reach, Work& work,
              Array<NearHeights>& found) {
  Search search(a, b, reach, work, found);
  search.Run(search.At(low), search.At(high), kMostDepth);
}

void FindNear(const Graph& a, const Graph& b, double reach, Work& work, Array<NearHeights>& found) {
  const double low = std::max(a.low(), b.low()), high = std::min(a.high(), b.high());
  if (low <= high) FindNear(a, b, low, high, reach, work, found);
}

}  // namespace kurvo::outline
