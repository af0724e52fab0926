// What a call may still spend.
#pragma once

#include <cstdint>

namespace kurvo {

// Counts down work that good input never runs out of, and that records which cannot be right, or
// degrees in the hundreds, would make endless: so every call ends in bounded time. The unit is its
// owner's. It may be overdrawn by one step.
class WorkBudget {
 public:
  explicit WorkBudget(int64_t units) : left_(units) {}

  void Spend(int64_t units) { left_ -= units; }
  bool exhausted() const { return left_ < 0; }

 private:
  int64_t left_;
};

}  // namespace kurvo
