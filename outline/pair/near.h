// Where two graphs come near each other.
#pragma once

#include "base/memory.h"
#include "pair/near_search.h"

namespace kurvo::outline {

// The work that one call may do, in stretches that are looked at; beyond it they are taken for near
// unless their chords say otherwise.
class Work {
 public:
  bool Take() { return left_-- > 0; }
  bool IsUsedUp() const { return left_ <= 0; }
  // For a pair of many that have to be looked at: what an ordinary one takes.
  void Grant() { left_ += kGranted; }

 private:
  static constexpr int64_t kGranted = 16;
  static constexpr int64_t kMost = int64_t{1} << 22;  // some 0.6 s
  int64_t left_ = kMost;
};

// All heights at which the sides of the graphs differ by no more than `reach`, and some at which
// they differ by no more than twice as much; ascending, apart.
void FindNear(const Graph& a, const Graph& b, double reach, Work& work, Array<NearHeights>& found);

// The same between two heights.
void FindNear(const Graph& a, const Graph& b, double low, double high, double reach, Work& work,
              Array<NearHeights>& found);

}  // namespace kurvo::outline
