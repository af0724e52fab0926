// What one call may do on curves of high order.
#pragma once

#include <cstdint>

namespace kurvo {

// Steps that cost O(order^2), such as a cut or the removal of a knot, are counted where the order
// is above those in use, so that a list of thousands of cuts does not take minutes. At the orders
// in use the cost of a call is in proportion to what it is given, and nothing is refused.
class HighOrderWork {
 public:
  // Counts so many steps; false once they are too many for one call.
  bool Allows(int32_t order, int64_t steps) {
    if (kFreeOrder >= order) return true;
    done_ += static_cast<double>(order) * order * static_cast<double>(steps);
    return kMost >= done_;
  }

 private:
  static constexpr int32_t kFreeOrder = 40;
  static constexpr double kMost = 0x1p28;  // some tenths of a second

  double done_ = 0.0;
};

}  // namespace kurvo
