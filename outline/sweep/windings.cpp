#include "sweep/windings.h"

namespace kurvo::outline {

Windings::Windings(const Stage& stage, const Array<int32_t>& rules, const Status& status)
    : stage_(stage), status_(status), left_(stage.strands.size(), 0) {
  operands_.reserve(rules.size());
  for (const int32_t rule : rules) operands_.push_back({rule, 0, 0, 0, 0});
}

Windings::Operand& Windings::OperandOf(int32_t strand) {
  return operands_[static_cast<std::size_t>(stage_.strand(strand).operand)];
}

void Windings::Enter(Operand& operand, int32_t winding) {
  operand.range = range_;
  operand.winding = winding;
  operand.balance = 0;
}

void Windings::Balance(Operand& operand, int32_t by) {
  unbalanced_ -= operand.balance != 0;
  operand.balance += by;
  unbalanced_ += operand.balance != 0;
}

void Windings::Begin(int32_t from, const Row& lower, Covered covered) {
  ++range_;
  from_ = from;
  covered_ = covered;
  unbalanced_ = 0;
  crossed_.clear();
  for (const int32_t s : lower.strands) {
    Operand& operand = OperandOf(s);
    if (operand.range != range_) Enter(operand, left_[static_cast<std::size_t>(s)]);
    Balance(operand, stage_.strand(s).direction);
  }
}

// What goes up has the inside of its loop to the left: it ends there.
void Windings::Cross(int32_t strand) {
  const int32_t number = stage_.strand(strand).operand, direction = stage_.strand(strand).direction;
  Operand& operand = OperandOf(strand);
  if (operand.range != range_) Enter(operand, FindWinding(number));
  Balance(operand, -direction);
  crossed_.push_back(operand.winding);
  const bool was = FillRule::Fills(operand.rule, operand.winding);
  operand.winding -= direction;
  const bool is = FillRule::Fills(operand.rule, operand.winding);
  if (is == was) return;
  if (number == 0) {
    covered_.first = is;
  } else {
    covered_.others += is ? 1 : -1;
  }
}

int32_t Windings::FindWinding(int32_t number) const {
  if (operands_[static_cast<std::size_t>(number)].active == 0) return 0;
  for (int32_t position = from_; position-- > 0;) {
    int32_t last = -1;
    status_.ForEachMember(position, [&](int32_t s) {
      if (stage_.strand(s).operand == number) last = s;
    });
    if (last >= 0) return left_[static_cast<std::size_t>(last)] - stage_.strand(last).direction;
  }
  return 0;
}

void Windings::Replaced(const Row& lower, const Row& upper) {
  for (const int32_t s : lower.strands) --OperandOf(s).active;
  for (std::size_t i = 0; i < upper.strands.size(); ++i) {
    ++OperandOf(upper.strands[i]).active;
    left_[static_cast<std::size_t>(upper.strands[i])] = crossed_[i];
  }
}

}  // namespace kurvo::outline
