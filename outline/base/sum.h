// Sums of many numbers.
#pragma once

#include <cmath>

namespace kurvo::outline {

// With a second number for what rounding takes away (Neumaier, Zeitschrift fuer Angewandte
// Mathematik und Mechanik 54, 1974): the error does not grow with the count.
class Sum {
 public:
  void Add(double term) {
    const double sum = sum_ + term;
    lost_ += std::fabs(sum_) >= std::fabs(term) ? (sum_ - sum) + term : (term - sum) + sum_;
    sum_ = sum;
  }
  double Value() const { return sum_ + lost_; }

 private:
  double sum_ = 0, lost_ = 0;
};

}  // namespace kurvo::outline
