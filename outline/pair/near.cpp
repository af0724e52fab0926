#include "pair/near.h"

namespace kurvo::outline {
namespace {

constexpr double kLeastRise = 0x1p-4;  // of the reach: graphs of slope 2.42 stay near across it
constexpr double kHeightShare =
    0x1p-11;  // of the reach: error of heights, less than kSteepest has to spare

class Rules {
 public:
  explicit Rules(Work& work) : work_(work) {}

  bool TakeWork() { return work_.Take() && --stretches_left_ > 0; }
  bool NearAtLimit() const { return true; }
  template <class Search>
  bool Decide(const Stretch&, const Stretch&, const SideDifference&, Search&) const {
    return false;
  }

 private:
  static constexpr int kMostStretches = 1 << 16;  // of one pair

  Work& work_;
  int stretches_left_ = kMostStretches;
};

// Whether whole graphs are apart between two heights: most that are need no search.
bool AreApart(const Graph& a, const Graph& b, double low, double high, double apart) {
  const Stretch whole_a = a.Whole(), whole_b = b.Whole();
  SideDifference d(whole_a, whole_b);
  d.at_low = whole_a.ChordAt(low) - whole_b.ChordAt(low);
  d.at_high = whole_a.ChordAt(high) - whole_b.ChordAt(high);
  return d.Low() > apart || d.High() < -apart;
}

}  // namespace

void FindNear(const Graph& a, const Graph& b, double low, double high, double reach, Work& work,
              Array<NearHeights>& found) {
  // What heights differ by counts for the side by the slope.
  const SideReach sides = {reach, 2 * reach, 2 * reach / (1 + kSteepest)};
  if (AreApart(a, b, low, high, reach)) return;
  const NearLimits limits = {sides, kLeastRise * reach, 0, kHeightShare * reach};
  const auto level_at = [&](double height) -> CommonLevel {
    return {height, a.LevelAt(height, limits.height_error), b.LevelAt(height, limits.height_error)};
  };
  Rules rules(work);
  NearSearch<Graph, Rules>(a, b, limits, rules, found).Run(level_at(low), level_at(high));
}

void FindNear(const Graph& a, const Graph& b, double reach, Work& work, Array<NearHeights>& found) {
  const double low = std::max(a.low(), b.low()), high = std::min(a.high(), b.high());
  if (low <= high) FindNear(a, b, low, high, reach, work, found);
}

}  // namespace kurvo::outline
