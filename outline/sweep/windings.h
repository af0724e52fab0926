// How often each operand goes around the place that a sweep has reached from the left.
#pragma once

#include "base/memory.h"
#include "sweep/attach.h"
#include "sweep/status.h"
#include "sweep/winding.h"

namespace kurvo::outline {

// A strand keeps the winding of its own operand to its left; of an operand without a strand in a
// range it is found at the nearest one to the left, so that no place holds all of them.
class Windings {
 public:
  Windings(const Stage& stage, const Array<int32_t>& rules, const Status& status);

  // Begins a range of the status: `lower` are its bundles, `covered` what lies to their left.
  void Begin(int32_t from, const Row& lower, Covered covered);
  // Goes across the strands of what takes its place, from the left.
  void Cross(int32_t strand);
  const Covered& covered() const { return covered_; }
  // Whether all that ended there was crossed again: then what lies to the right is what it was.
  bool IsBalanced() const { return unbalanced_ == 0; }
  // Once the row that was crossed has taken the place of the one that the range began with.
  void Replaced(const Row& lower, const Row& upper);

 private:
  struct Operand {
    int32_t rule;
    int32_t active;   // strands in the status
    int32_t range;    // the number of the range in which the following are known
    int32_t winding;  // where the range has been crossed
    int32_t balance;  // what ended less what was crossed
  };
  Operand& OperandOf(int32_t strand);
  void Enter(Operand& operand, int32_t winding);
  void Balance(Operand& operand, int32_t by);
  int32_t FindWinding(int32_t operand) const;

  const Stage& stage_;
  const Status& status_;
  Array<Operand> operands_;
  Array<int32_t> left_;     // by strand of the status: the winding to its left
  Array<int32_t> crossed_;  // the same of those crossed
  Covered covered_;
  int32_t range_ = 0, from_ = 0, unbalanced_ = 0;
};

}  // namespace kurvo::outline
