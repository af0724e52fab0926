#include "fit/over_chord.h"

#include <algorithm>
#include <cmath>

namespace kurvo::outline {
namespace {

constexpr double kLongestHandle = 2;  // of a cubic against its chord

}  // namespace

bool OverChord::Solve(const Under& want, double& a, double& b) const {
  constexpr int kMostSteps = 12;
  constexpr double kClose = 1e-12, kMostStep = 0.5;
  for (int i = 0; i < kMostSteps; ++i) {
    double area_a, area_b, moment_a, moment_b;
    const Under under = At(a, b, area_a, area_b, moment_a, moment_b);
    const double area = want.area - under.area, moment = want.moment - under.moment;
    const double determinant = area_a * moment_b - area_b * moment_a;
    const double step_a = (area * moment_b - area_b * moment) / determinant;
    const double step_b = (area_a * moment - area * moment_a) / determinant;
    const double longest = std::max(std::fabs(step_a), std::fabs(step_b));
    if (!(longest < 1 / kClose)) return false;
    const double share = std::min(1.0, kMostStep / longest);
    a += share * step_a;
    b += share * step_b;
    if (kClose >= longest) break;
  }
  return a > 0 && b > 0 && a <= kLongestHandle && b <= kLongestHandle;
}

// Both integrals from products of Bernstein polynomials, with the derivatives by both lengths.
Under OverChord::At(double a, double b, double& area_a, double& area_b, double& moment_a,
                    double& moment_b) const {
  const double p = a * leaves_.x, q = 1 - b * arrives_.x;     // sides of the inner control points
  const double up_p = a * leaves_.y, up_q = -b * arrives_.y;  // and their heights
  const double of_p = (9 * p * q + 6 * p + 9 * q * q + 15 * q + 10) / 280;
  const double of_q = (-9 * p * p - 9 * p * q + 15 * q + 35) / 280;
  area_a = 0.15 * (leaves_.y * (1 + q) - up_q * leaves_.x);
  area_b = -0.15 * (arrives_.y * (2 - p) + up_p * arrives_.x);
  moment_a = leaves_.y * of_p + leaves_.x * (up_p * (9 * q + 6) - up_q * (18 * p + 9 * q)) / 280;
  moment_b =
      -arrives_.y * of_q - arrives_.x * (up_p * (9 * p + 18 * q + 15) + up_q * (15 - 9 * p)) / 280;
  return {0.15 * (up_p * (1 + q) + up_q * (2 - p)), up_p * of_p + up_q * of_q};
}

}  // namespace kurvo::outline
