// Sturm chains: how many distinct real roots a polynomial has in an interval.
#pragma once

#include <cstddef>

#include "eval/polynomial.h"

namespace kurvo {

// f without leading coefficients below 1e-13 of the largest: they are rounding noise (of degree
// elevation, for instance) and would put roots far outside any interval of interest, at the price
// of a chain that is noise from its first remainder on.
Polynomial WithoutNoise(const Polynomial& f);

// The chain f, f', -rem(f, f'), ... (Sturm 1829). Each member is scaled by a positive factor, and a
// remainder whose coefficients are all rounding noise of the division ends the chain: the last
// member is then the common factor of f and f', and multiple roots count once.
class SturmChain {
 public:
  // `f` must have at least one coefficient and a leading one other than 0.
  explicit SturmChain(const Polynomial& f);

  // Sign changes along the chain at t; members that are exactly 0 there are passed over.
  int SignChanges(double t) const;

 private:
  struct Member {
    std::size_t first;  // index of coefficient 0
    std::size_t count;
  };
  static constexpr std::size_t kMembers = Polynomial::kCapacity;
  static constexpr std::size_t kStorage =
      kMembers * (kMembers + 1) / 2;  // degrees fall by 1 at least

  void Append(const double* coefficients, std::size_t count);
  bool AppendRemainder();

  std::size_t size_ = 0;
  Member members_[kMembers];
  double storage_[kStorage];
};

}  // namespace kurvo
