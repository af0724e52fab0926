// Knot spans of a B-spline and the basis values on one of them.
#include "control/knot_spans.h"

#include <algorithm>
#include <cstddef>

#include "foundation/rounded_compare.h"

namespace kurvo {

int32_t LastSpan(const KnotVector& knots) {
  const double* first = knots.u + knots.order - 1;
  const double* last = knots.u + knots.count;
  const double* end_knot = std::lower_bound(first, last, *last);
  return static_cast<int32_t>(std::max(end_knot - 1, first) - knots.u);
}

namespace {

// The first of the ascending values in [first, last) that is greater than t, where first[-1] exists
// and starts the domain. Begins at a guess that takes the values to be evenly spaced: a constant
// number of steps when they nearly are, a logarithmic one whatever they are.
const double* FirstAfter(const double* first, const double* last, double t) {
  const std::ptrdiff_t size = last - first;
  const double start = *(first - 1);
  const double guess = (t - start) / (*(last - 1) - start) * static_cast<double>(size);
  const double* low = first;
  if (guess >= static_cast<double>(size))
    low = last - 1;
  else if (guess > 0.0)
    low = first + static_cast<std::ptrdiff_t>(guess);
  if (t < *low && (low == first || !(t < *(low - 1)))) return low;

  const double* high = low;
  std::ptrdiff_t step = 1;
  while (low != first && t < *low) {  // gallop down until low is not after t
    high = low;
    low = low - first > step ? low - step : first;
    step *= 2;
  }
  while (high != last && !(t < *high)) {  // gallop up until high is after t
    low = high;
    high = last - high > step ? high + step : last;
    step *= 2;
  }
  return std::upper_bound(low, high, t);
}

}  // namespace

int32_t FindSpan(const KnotVector& knots, double t) {
  const double* first = knots.u + knots.order;
  const double* last = knots.u + knots.count + 1;
  const double* right = FirstAfter(first, last, t);
  if (right != last && CompareRounded(*right, t) <= 0) {  // after t, but not by six decimals
    right = std::partition_point(right, last,
                                 [t](double knot) { return CompareRounded(knot, t) <= 0; });
  }
  // Before the domain, whose first knot may be repeated in it.
  if (right != last && !(knots.Start() < *right))
    right = std::upper_bound(first, last, knots.Start());
  return right == last ? LastSpan(knots) : static_cast<int32_t>(right - 1 - knots.u);
}

BasisValues::BasisValues(const KnotVector& knots, int32_t i, double t) {
  const int32_t k = knots.order;
  if (k > kStackOrder) {
    heap_ = std::make_unique<double[]>(3 * static_cast<std::size_t>(k));
    values_ = heap_.get();
  }
  const double* u = knots.u + i;
  double* left = values_ + k;
  double* right = left + k;
  WithOrder(k, [&](auto order) { FillBasis(order, u, t, values_, left, right); });
}

}  // namespace kurvo
