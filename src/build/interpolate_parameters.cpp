// Where along its domain an interpolating B-spline passes the data points, and its knots.
#include "build/interpolate_parameters.h"

#include <algorithm>

namespace kurvo {

bool ChordLengthParameters(const double* points, int32_t count, double scale, double* t) {
  t[0] = 0.0;
  Vec2 before = scale * Planar(points);
  for (int32_t i = 1; i < count; ++i) {
    const Vec2 point = scale * Planar(points + 3 * static_cast<std::ptrdiff_t>(i));
    t[i] = t[i - 1] + Length(point - before);
    before = point;
  }
  const double inverse = 1.0 / t[count - 1];
  bool apart = true;
  for (int32_t i = 1; i < count - 1; ++i) {
    t[i] *= inverse;
    apart = apart && t[i] - t[i - 1] > kParametersApart;
  }
  t[count - 1] = 1.0;
  return apart && 1.0 - t[count - 2] > kParametersApart;
}

void EvenParameters(int32_t count, double* t) {
  for (int32_t i = 0; i < count; ++i) t[i] = static_cast<double>(i) / (count - 1);
}

void AveragedKnots(const double* t, int32_t count, int32_t order, double* knots) {
  const int32_t degree = order - 1;
  std::fill_n(knots, order, 0.0);
  for (int32_t j = 1; j + degree < count; ++j) {
    double sum = t[j];  // in one order for all knots, so that rounding keeps them ascending
    for (int32_t i = j + 1; i < j + degree; ++i) sum += t[i];
    knots[j + degree] = sum / degree;
  }
  std::fill_n(knots + count, order, 1.0);
}

}  // namespace kurvo
