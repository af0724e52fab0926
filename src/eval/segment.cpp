// One polynomial or rational piece over [0, 1] in power basis, and the questions asked of it.
#include "eval/segment.h"

#include <algorithm>

namespace kurvo {
namespace {

// f' g - f g' for f and g of the same degree n. The terms of degree 2n - 1 cancel exactly and are
// left out, so that the result has degree 2n - 2.
Polynomial Wronskian(const Polynomial& f, const Polynomial& g) {
  const std::size_t count = std::max(f.count(), g.count());
  if (count < 2) return Polynomial();
  Polynomial result = Polynomial::Zeros(2 * count - 3);
  for (std::size_t i = 0; i < f.count(); ++i) {
    for (std::size_t j = 0; j < g.count(); ++j) {
      if (i == j) continue;
      result[i + j - 1] += (static_cast<double>(i) - static_cast<double>(j)) * (f[i] * g[j]);
    }
  }
  return result;
}

Polynomial FootPointPolynomial(const Segment& s) {
  if (!s.rational)
    return SumScaled(Product(s.x, Derivative(s.x)), 1.0, Product(s.y, Derivative(s.y)));
  return SumScaled(Product(s.x, Wronskian(s.x, s.w)), 1.0, Product(s.y, Wronskian(s.y, s.w)));
}

}  // namespace

RootList FootRoots(const Segment& relative) {
  return FindRoots(Normalised(FootPointPolynomial(relative)), 0.0, 1.0);
}

RootList FootPoints(const RootList& roots, double slack) {
  RootList inside;
  for (const double r : roots)
    if (OnUnitInterval(r, slack)) inside.Append(std::clamp(r, 0.0, 1.0));
  return inside;
}

CoordinateRoots RootsOfCoordinates(const Segment& relative) {
  return {FindRoots(Normalised(relative.x), 0.0, 1.0), FindRoots(Normalised(relative.y), 0.0, 1.0)};
}

}  // namespace kurvo
