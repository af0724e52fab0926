// Power-basis polynomials of bounded degree, held by value.
#include "eval/polynomial.h"

#include <algorithm>
#include <cmath>

namespace kurvo {

namespace {

// The number of coefficients without the leading ones that are exactly 0.
std::size_t TrimmedCount(const Polynomial& f) {
  std::size_t count = f.count();
  while (count > 0 && f[count - 1] == 0.0) --count;
  return count;
}

}  // namespace

// Every function below has one result object for all its ways out, which the compiler then builds
// in the caller's place.

Polynomial Derivative(const Polynomial& f) {
  const std::size_t count = TrimmedCount(f);
  Polynomial result(count > 1 ? count - 1 : 0);
  for (std::size_t i = 0; i < result.count(); ++i)
    result[i] = static_cast<double>(i + 1) * f[i + 1];
  return result;
}

Polynomial SumScaled(const Polynomial& f, double s, const Polynomial& g) {
  Polynomial result(std::max(f.count(), g.count()));
  for (std::size_t i = 0; i < result.count(); ++i) {
    const double left = i < f.count() ? f[i] : 0.0;
    const double right = i < g.count() ? s * g[i] : 0.0;
    result[i] = left + right;
  }
  return result;
}

Polynomial MinusConstant(Polynomial f, double c) {
  if (f.IsZero()) {
    f.Truncate(1);
    f[0] = -c;
  } else {
    f[0] -= c;
  }
  return f;
}

Polynomial Product(const Polynomial& f, const Polynomial& g) {
  const bool zero = f.IsZero() || g.IsZero();
  Polynomial result(zero ? 0 : f.count() + g.count() - 1);
  for (std::size_t m = 0; m < result.count(); ++m) {
    double sum = 0.0;  // in ascending order of the coefficients of f
    const std::size_t last = std::min(m, f.count() - 1);
    for (std::size_t i = m < g.count() ? 0 : m - g.count() + 1; i <= last; ++i)
      sum += f[i] * g[m - i];
    result[m] = sum;
  }
  return result;
}

double LargestMagnitude(const double* coefficients, std::size_t count) {
  double largest = 0.0;
  for (std::size_t i = 0; i < count; ++i) largest = std::max(largest, std::fabs(coefficients[i]));
  return largest;
}

Polynomial Normalised(const Polynomial& f) {
  Polynomial result(TrimmedCount(f));
  const double largest = LargestMagnitude(f.data(), result.count());
  const bool scaled = result.count() > 1 && largest < 1.0;
  const double scale = scaled ? 1.0 / largest : 1.0;
  for (std::size_t i = 0; i < result.count(); ++i) result[i] = f[i] * scale;
  return result;
}

}  // namespace kurvo
