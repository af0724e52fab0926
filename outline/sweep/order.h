// Whether the order in a slab agrees with where its strands are at both of its ends.
#pragma once

#include "base/memory.h"
#include "sweep/attach.h"

namespace kurvo::outline {

class OrderCheck {
 public:
  explicit OrderCheck(const Stage& stage) : stage_(stage) {}

  // Looks at what did not fit when a row got its places on beam k: two strands that changed places
  // without an event.
  void CheckRow(int32_t k, bool is_top, const Row& row, const Misfit& misfit);
  // Looks at two new neighbours, `left` and `right` of each other at height `from`, where the next
  // event of either is and, where they are close there, half-way.
  void CheckPair(int32_t left, int32_t right, double from, int32_t k);

  // Crossings that no event told of, and contradictions too close to a beam to be one.
  const Array<Crossing>& missed() const { return missed_; }
  int32_t unresolved() const { return unresolved_; }

 private:
  void Bisect(const Row& row, const Misfit& misfit, double height, int32_t k);
  bool FindSwap(const Strand& left, const Strand& right, double ordered, double swapped,
                double& height) const;
  void AddMissed(double height, int32_t left, int32_t right);

  const Stage& stage_;
  Array<Crossing> missed_;
  int32_t unresolved_ = 0;
};

}  // namespace kurvo::outline
