// Sturm chains: how many distinct real roots a polynomial has in an interval.
#include "eval/sturm_chain.h"

#include <algorithm>
#include <cmath>

namespace kurvo {
namespace {

constexpr double kRemainderNoise =
    1e-13;  // relative to the largest coefficient, resp. term of a division

// `count` reduced by the leading coefficients that are within `floor` of 0.
std::size_t CountAbove(const double* coefficients, std::size_t count, double floor) {
  while (count > 0 && floor >= std::fabs(coefficients[count - 1])) --count;
  return count;
}

}  // namespace

Polynomial WithoutNoise(const Polynomial& f) {
  Polynomial result = f;
  result.Truncate(CountAbove(f.data(), f.count(), kRemainderNoise * LargestCoefficient(f)));
  return result;
}

SturmChain::SturmChain(const Polynomial& f) {
  Append(f.data(), f.count());
  const Polynomial derivative = Derivative(f);
  if (derivative.IsZero()) return;
  Append(derivative.data(), derivative.count());
  while (members_[size_ - 1].count > 1 && AppendRemainder()) {
  }
}

// Appends the coefficients scaled so that the largest is 1; the sign is kept.
void SturmChain::Append(const double* coefficients, std::size_t count) {
  Member& member = members_[size_];
  member.first = size_ == 0 ? 0 : members_[size_ - 1].first + members_[size_ - 1].count;
  member.count = count;
  const double largest = LargestMagnitude(coefficients, count);
  const double scale = largest > 0.0 ? 1.0 / largest : 1.0;
  for (std::size_t i = 0; i < count; ++i) storage_[member.first + i] = scale * coefficients[i];
  ++size_;
}

// Appends minus the remainder of the last two members; false when nothing but noise remains.
bool SturmChain::AppendRemainder() {
  const Member& dividend = members_[size_ - 2];
  const Member& divisor = members_[size_ - 1];
  const double* d = storage_ + divisor.first;
  double work[Polynomial::kCapacity];
  std::copy_n(storage_ + dividend.first, dividend.count, work);

  double largest_term = 1.0;  // members are scaled to a largest coefficient of 1
  for (std::size_t top = dividend.count; top >= divisor.count; --top) {
    const double quotient = work[top - 1] / d[divisor.count - 1];
    largest_term = std::max(largest_term, std::fabs(quotient));
    double* target = work + (top - divisor.count);
    for (std::size_t i = 0; i + 1 < divisor.count; ++i) target[i] -= quotient * d[i];
  }
  const std::size_t count = CountAbove(work, divisor.count - 1, kRemainderNoise * largest_term);
  if (count == 0) return false;
  for (std::size_t i = 0; i < count; ++i) work[i] = -work[i];
  Append(work, count);
  return true;
}

int SturmChain::SignChanges(double t) const {
  int changes = 0;
  double last = 0.0;  // the last value that was not 0
  for (std::size_t m = 0; m < size_; ++m) {
    const double* c = storage_ + members_[m].first;
    double value = c[members_[m].count - 1];
    for (std::size_t i = members_[m].count - 1; i-- > 0;) value = value * t + c[i];
    if (value == 0.0) continue;
    if ((value < 0.0) != (last < 0.0) && last != 0.0) ++changes;
    last = value;
  }
  return changes;
}

}  // namespace kurvo
