// Bounds of polynomials in Bernstein form along a stretch, and where they are beyond them.
#pragma once

#include <algorithm>
#include <cmath>

#include "pair/alongside.h"
#include "strand/bernstein.h"

namespace kurvo::outline {

// Range of a polynomial in Bernstein form.
struct Range {
  double least = Relation::kUnbounded, most = -Relation::kUnbounded;

  void Add(double value) {
    least = std::min(least, value);
    most = std::max(most, value);
  }
};

// Divides sums of products by the binomials of their degree.
inline Range RangeOfProduct(double* product, int degree) {
  Range range;
  double binomial = 1;
  for (int k = 0; k <= degree; ++k) {
    product[k] /= binomial;
    range.Add(product[k]);
    binomial = binomial * (degree - k) / (k + 1);
  }
  return range;
}

// Where a polynomial that is beyond `most` at 0 may first be within it: where the hull of its
// Bernstein coefficients is (Bezier clipping). With sign -1 they are taken with the other sign, and
// with step -1 from 1 backwards, as 1 - t.
inline double EntranceOf(const double* coefficients, int degree, double most, double sign,
                         int step) {
  const auto at = [&](int k) { return sign * coefficients[step > 0 ? k : degree - k]; };
  double entrance = 1;
  for (int i = 0; i < degree; ++i) {
    if (!(at(i) > most)) continue;
    for (int k = i + 1; k <= degree; ++k) {
      if (at(k) > most) continue;
      entrance = std::min(entrance, (i + (k - i) * (at(i) - most) / (at(i) - at(k))) / degree);
    }
  }
  return entrance;
}

// The height at a parameter of a stretch that has control points.
inline double HeightAt(const Stretch& part, double t) {
  const int n = part.degree;
  if (!part.is_rational) return BernsteinSum(n, t, [&](int i) { return part.height[i]; });
  return BernsteinSum(n, t, [&](int i) { return part.weight[i] * part.height[i]; }) /
         BernsteinSum(n, t, [&](int i) { return part.weight[i]; });
}

// Apart but between two parameters of a stretch, whose heights grow.
inline Relation ApartBut(const Stretch& part, const double* product, int degree, double far) {
  const double first = product[0], last = product[degree];
  Relation relation;
  if (std::fabs(first) > far)
    relation.low = HeightAt(part, EntranceOf(product, degree, far, first > 0 ? 1 : -1, 1));
  if (std::fabs(last) > far)
    relation.high = HeightAt(part, 1 - EntranceOf(product, degree, far, last > 0 ? 1 : -1, -1));
  return relation;
}

}  // namespace kurvo::outline
