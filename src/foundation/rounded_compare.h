// Comparison of parameters, knots and weights to six decimals.
#pragma once

#include <cmath>

namespace kurvo {

constexpr double kUnitsPerOne = 1e6;  // values are equal when they round to the same millionth

constexpr double kClearlyApart = 2e-6;  // two millionths round to different counts
constexpr double kExactlyScaled = 1e9;  // below it a millionth is many units in the last place

constexpr double kAllIntegers = 4503599627370496.0;  // 2^52: doubles from here on are integers

// `value` as a count of millionths, halves rounded away from zero. The count stays a double, so
// that no conversion to an integer type can overflow.
inline double Millionths(double value) {
  const double scaled = std::fabs(value) * kUnitsPerOne;
  return std::copysign(kAllIntegers > scaled ? std::floor(scaled + 0.5) : scaled, value);
}

// -1, 0 or 1 as `a` lies before, with or after `b` in a total order: by millionths; where these
// overflow to infinity, by the values themselves; a NaN after everything and equal to a NaN.
inline int CompareRounded(double a, double b) {
  // Clearly apart, and small enough for the products below to keep that apart: no rounding needed.
  if (std::fabs(a - b) > kClearlyApart && kExactlyScaled > std::fabs(a) &&
      kExactlyScaled > std::fabs(b))
    return a < b ? -1 : 1;
  const double left = Millionths(a);
  const double right = Millionths(b);
  if (left < right) return -1;
  if (left > right) return 1;
  if (left == right) {
    if (std::isfinite(left)) return 0;
    return a < b ? -1 : (a > b ? 1 : 0);
  }
  return int{std::isnan(a)} - int{std::isnan(b)};
}

}  // namespace kurvo
