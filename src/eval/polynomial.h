// Power-basis polynomials of bounded degree, held by value.
#pragma once

#include <cassert>
#include <cstdint>
#include <cstring>

namespace kurvo {

// Coefficient i multiplies t^i. A count of 0 is the zero polynomial. Only the first `count`
// coefficients exist; the rest of the storage is neither initialised nor copied.
class Polynomial {
 public:
  static constexpr std::size_t kCapacity = 40;  // degree 39

  Polynomial() = default;
  explicit Polynomial(std::size_t count) : count_(count) { assert(count <= kCapacity); }
  Polynomial(const Polynomial& other) : count_(other.count_) { CopyCoefficients(other); }
  Polynomial& operator=(const Polynomial& other) {
    if (this != &other) {
      count_ = other.count_;
      CopyCoefficients(other);
    }
    return *this;
  }

  // `count` coefficients that are all 0.
  static Polynomial Zeros(std::size_t count) {
    Polynomial result(count);
    for (std::size_t i = 0; i < count; ++i) result[i] = 0.0;
    return result;
  }
  static Polynomial Constant(double value) {
    Polynomial result(1);
    result[0] = value;
    return result;
  }

  std::size_t count() const { return static_cast<std::size_t>(count_); }
  bool IsZero() const { return count_ == 0; }
  double& operator[](std::size_t i) { return coefficients_[i]; }
  double operator[](std::size_t i) const { return coefficients_[i]; }
  const double* data() const { return coefficients_; }
  void Truncate(std::size_t count) { count_ = count; }

 private:
  // In steps of a fixed size, which the compiler turns into a few moves: a copy of a variable size
  // would be a call that costs more than a short polynomial.
  void CopyCoefficients(const Polynomial& other) {
    static_assert(kCapacity % kStep == 0);
    for (std::size_t i = 0; i < count(); i += kStep)
      std::memcpy(coefficients_ + i, other.coefficients_ + i, sizeof(double) * kStep);
  }

  static constexpr std::size_t kStep = 4;

  uint64_t count_ = 0;
  double coefficients_[kCapacity];
};

// The sum of coefficient i times t^i in ascending order, the power built by repeated
// multiplication; exactly coefficient 0 at t = 0, and 0 for the zero polynomial. The order of
// operations is part of the result: positions on curves are these sums.
inline double Value(const Polynomial& f, double t) {
  if (f.IsZero()) return 0.0;
  double sum = f[0];
  if (t == 0.0) return sum;
  double power = 1.0;
  for (std::size_t i = 1; i < f.count(); ++i) {
    power *= t;
    sum += f[i] * power;
  }
  return sum;
}

// The first derivative of f, leading coefficients of exactly 0 left out; the zero polynomial for a
// constant.
Polynomial Derivative(const Polynomial& f);

// f + s g, the shorter one padded with zeros.
Polynomial SumScaled(const Polynomial& f, double s, const Polynomial& g);

// f - c.
Polynomial MinusConstant(Polynomial f, double c);

// f g. Counts must satisfy f.count() + g.count() - 1 <= kCapacity.
Polynomial Product(const Polynomial& f, const Polynomial& g);

// f trimmed and, when its coefficients are all below 1 in magnitude, divided by the largest, so
// that the absolute tolerances of the root finder mean the same for small curves.
Polynomial Normalised(const Polynomial& f);

// Largest magnitude among the coefficients, 0 for none. NaN coefficients are passed over.
double LargestMagnitude(const double* coefficients, std::size_t count);
inline double LargestCoefficient(const Polynomial& f) {
  return LargestMagnitude(f.data(), f.count());
}

}  // namespace kurvo
