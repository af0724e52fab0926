#include "chain/loose_ends.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "strand/grid.h"

namespace kurvo::outline {
namespace {

constexpr double kRing = 8;        // a ring is so many times as wide as the one before
constexpr double kWholePlane = 8;  // in the coordinates of a frame nothing is farther apart
constexpr int kMostInCell = 32;    // of one cell that an end is compared with at once
constexpr int kMostRounds = 64;    // of one ring: where very many ends meet

struct Candidate {
  double distance;  // 0 for ends that are the same
  double turn;      // 0 straight on, 2 straight back
  int32_t first, second;
};

bool Before(const Candidate& a, const Candidate& b) {
  return std::tuple(a.distance, a.turn, a.first, a.second) <
         std::tuple(b.distance, b.turn, b.first, b.second);
}

class Matching {
 public:
  Matching(const LooseEnds& ends, const Array<bool>& is_free, double same)
      : ends_(ends), same_(same), partners_(ends.points.size(), kNoEnd) {
    for (std::size_t i = 0; i < is_free.size(); ++i)
      if (is_free[i]) free_.push_back(static_cast<int32_t>(i));
  }

  // Joins what is free within the reach.
  void Join(double reach) {
    for (int round = 0; round < kMostRounds && free_.size() > 1; ++round) {
      Array<Candidate> candidates;
      Grid(ends_.points, free_, reach)
          .ForEachPair(kMostInCell, [&](int32_t i, int32_t k, double d) {
            candidates.push_back({d <= same_ ? 0 : d, Turn(i, k), i, k});
          });
      if (candidates.empty()) return;
      std::sort(candidates.begin(), candidates.end(), Before);
      for (const Candidate& candidate : candidates) {
        int32_t& first = partners_[static_cast<std::size_t>(candidate.first)];
        int32_t& second = partners_[static_cast<std::size_t>(candidate.second)];
        if (first != kNoEnd || second != kNoEnd) continue;
        first = candidate.second;
        second = candidate.first;
      }
      std::erase_if(free_,
                    [this](int32_t i) { return partners_[static_cast<std::size_t>(i)] != kNoEnd; });
    }
  }

  Array<int32_t> Take() { return std::move(partners_); }

 private:
  // Both point outwards: straight on is opposite.
  double Turn(int32_t i, int32_t k) const {
    return 1 + Dot(ends_.outwards[static_cast<std::size_t>(i)],
                   ends_.outwards[static_cast<std::size_t>(k)]);
  }

  const LooseEnds& ends_;
  const double same_;
  Array<int32_t> partners_;
  Array<int32_t> free_;
};

}  // namespace

Array<int32_t> MatchEnds(const LooseEnds& ends, const Array<bool>& is_free, double same,
                         double gap) {
  Matching matching(ends, is_free, same);
  const double widest = std::min(gap, kWholePlane);
  for (double reach = same;; reach *= kRing) {
    matching.Join(std::min(reach, widest));
    if (reach >= widest) return matching.Take();
  }
}

}  // namespace kurvo::outline
