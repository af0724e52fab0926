// Sizes of memory, right for a size_t of any width.
#pragma once

#include <cstddef>
#include <limits>

namespace kurvo {

// A number of bytes or elements that stays at the largest Size when it grows beyond: no allocator
// grants that many. Sums and products of what was clamped are the clamped sums and products.
template <class Size = std::size_t>
class ClampedSize {
 public:
  constexpr ClampedSize(Size value) : value_(value) {}

  constexpr Size value() const { return value_; }

  friend constexpr ClampedSize operator+(ClampedSize a, ClampedSize b) {
    Size sum = 0;
    return __builtin_add_overflow(a.value_, b.value_, &sum) ? kLargest : sum;
  }
  friend constexpr ClampedSize operator*(ClampedSize a, ClampedSize b) {
    Size product = 0;
    return __builtin_mul_overflow(a.value_, b.value_, &product) ? kLargest : product;
  }

 private:
  static constexpr Size kLargest = std::numeric_limits<Size>::max();
  Size value_;
};

}  // namespace kurvo
