// A short list of parameters, on the stack.
#pragma once

#include <algorithm>
#include <cstddef>

#include "eval/polynomial.h"

namespace kurvo {

// Roots of one polynomial, ascending. A polynomial of capacity degree has at most 39, and its
// derivative adds at most 38 more before the two are merged.
class RootList {
 public:
  static constexpr std::size_t kCapacity = 2 * Polynomial::kCapacity;

  void Append(double root) {
    if (count_ < kCapacity) roots_[count_++] = root;
  }
  bool empty() const { return count_ == 0; }
  std::size_t size() const { return count_; }
  double front() const { return roots_[0]; }
  double& operator[](std::size_t i) { return roots_[i]; }
  double operator[](std::size_t i) const { return roots_[i]; }
  const double* begin() const { return roots_; }
  const double* end() const { return roots_ + count_; }
  void Truncate(std::size_t count) { count_ = count; }
  void Sort() { std::sort(roots_, roots_ + count_); }

 private:
  std::size_t count_ = 0;
  double roots_[kCapacity];
};

}  // namespace kurvo
