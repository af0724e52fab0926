// Where a function of one number changes its sign between two others.
#pragma once

#include <cmath>

namespace kurvo::outline {

// To the last bits, or to a value no larger than `enough`, from values of different signs at the
// ends: false position whose held end is halved (Dowell and Jarratt, the Illinois method, 1971),
// and a bisection every third step.
template <class F>
double SignChangeBetween(const F& f, double low, double high, double at_low, double at_high,
                         double enough = 0) {
  constexpr int kMostSteps = 100;
  enum { kNone, kHigh, kLow } held = kNone;
  for (int step = 0; step < kMostSteps; ++step) {
    double t =
        step % 3 == 2 ? 0.5 * (low + high) : (low * at_high - high * at_low) / (at_high - at_low);
    if (!(t > low && t < high)) t = 0.5 * (low + high);
    if (!(t > low && t < high)) break;
    const double value = f(t);
    if (enough >= std::fabs(value)) return t;
    if ((value < 0) == (at_low < 0)) {
      low = t;
      at_low = value;
      if (held == kHigh) at_high *= 0.5;
      held = kHigh;
    } else {
      high = t;
      at_high = value;
      if (held == kLow) at_low *= 0.5;
      held = kLow;
    }
  }
  return std::fabs(at_low) < std::fabs(at_high) ? low : high;
}

}  // namespace kurvo::outline
