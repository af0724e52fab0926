// Power-basis polynomials of bounded degree, held by value.
#include "eval/polynomial.h"

#include <algorithm>
#include <cmath>

namespace kurvo {

Polynomial Trimmed(Polynomial f) {
  std::size_t count = f.count();
  while (count > 0 && f[count - 1] == 0.0) --count;
  f.Truncate(count);
  return f;
}

Polynomial Derivative(const Polynomial& f) {
  std::size_t count = f.count();
  while (count > 0 && f[count - 1] == 0.0) --count;
  if (count <= 1) return Polynomial();
  Polynomial result(count - 1);
  for (std::size_t i = 1; i < count; ++i) result[i - 1] = static_cast<double>(i) * f[i];
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
  if (f.IsZero()) return Polynomial::Constant(-c);
  f[0] -= c;
  return f;
}

Polynomial Product(const Polynomial& f, const Polynomial& g) {
  if (f.IsZero() || g.IsZero()) return Polynomial();
  Polynomial result = Polynomial::Zeros(f.count() + g.count() - 1);
  for (std::size_t i = 0; i < f.count(); ++i)
    for (std::size_t j = 0; j < g.count(); ++j) result[i + j] += f[i] * g[j];
  return result;
}

double LargestMagnitude(const double* coefficients, std::size_t count) {
  double largest = 0.0;
  for (std::size_t i = 0; i < count; ++i) largest = std::max(largest, std::fabs(coefficients[i]));
  return largest;
}

Polynomial Normalised(const Polynomial& f) {
  Polynomial result = Trimmed(f);
  const double largest = LargestCoefficient(result);
  if (result.count() <= 1 || !(largest < 1.0)) return result;
  const double scale = 1.0 / largest;
  for (std::size_t i = 0; i < result.count(); ++i) result[i] *= scale;
  return result;
}

}  // namespace kurvo
