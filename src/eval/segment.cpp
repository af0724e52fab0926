// One polynomial or rational piece over [0, 1] in power basis, and the questions asked of it.
#include "eval/segment.h"

#include <algorithm>

namespace kurvo {
namespace {

Polynomial CoordinateEquation(const Segment& segment, const Polynomial& coordinate, double value) {
  if (!segment.rational) return MinusConstant(coordinate, value);
  return SumScaled(coordinate, -value, segment.w);
}

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

Polynomial FootPointPolynomial(const Segment& segment, Vec2 p) {
  const Polynomial ex = CoordinateEquation(segment, segment.x, p.x);
  const Polynomial ey = CoordinateEquation(segment, segment.y, p.y);
  if (!segment.rational)
    return SumScaled(Product(ex, Derivative(segment.x)), 1.0, Product(ey, Derivative(segment.y)));
  return SumScaled(Product(ex, Wronskian(segment.x, segment.w)), 1.0,
                   Product(ey, Wronskian(segment.y, segment.w)));
}

}  // namespace

RootList FootPoints(const Segment& segment, Vec2 p, double slack) {
  const RootList roots = FindRoots(Normalised(FootPointPolynomial(segment, p)), 0.0, 1.0);
  RootList inside;
  for (const double r : roots)
    if (OnUnitInterval(r, slack)) inside.Append(std::clamp(r, 0.0, 1.0));
  return inside;
}

CoordinateRoots RootsOfCoordinates(const Segment& segment, Vec2 p) {
  return {FindRoots(Normalised(CoordinateEquation(segment, segment.x, p.x)), 0.0, 1.0),
          FindRoots(Normalised(CoordinateEquation(segment, segment.y, p.y)), 0.0, 1.0)};
}

}  // namespace kurvo
