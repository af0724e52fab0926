#include "pair/near.h"

namespace kurvo::outline {
namespace {

constexpr double kLeastRise = 0x1p-4;    // of the reach: graphs of slope 2.42 stay near across it
constexpr double kHeightShare = 0x1p-8;  // of the reach: error of the heights of cuts

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

}  // namespace

void FindNear(const Graph& a, const Graph& b, double low, double high, double reach, Work& work,
              Array<NearHeights>& found) {
  // What heights differ by counts for the side by the slope.
  const SideReach sides = {reach, 2 * reach, 2 * reach / (1 + kSteepest)};
  const NearLimits limits = {sides, kLeastRise * reach, 0, kHeightShare * reach};
  Rules rules(work);
  NearSearch<Graph, Rules>(a, b, limits, rules, found).Run(low, high);
}

void FindNear(const Graph& a, const Graph& b, double reach, Work& work, Array<NearHeights>& found) {
  const double low = std::max(a.low(), b.low()), high = std::min(a.high(), b.high());
  if (low <= high) FindNear(a, b, low, high, reach, work, found);
}

}  // namespace kurvo::outline
