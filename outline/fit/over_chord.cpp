#include "fit/over_chord.h"

#include <algorithm>
#include <cmath>

#include "fit/cubic.h"

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

// With the derivatives by both lengths.
Under OverChord::At(double a, double b, double& area_a, double& area_b, double& moment_a,
                    double& moment_b) const {
  const Vec2 points[] = {{0, 0}, a * leaves_, Vec2{1, 0} - b * arrives_, {1, 0}};
  Under under = {0, 0};
  area_a = area_b = moment_a = moment_b = 0;
  for (int i = 0; i < 5; ++i) {
    const double t = kFiveNodes[i], s = 1 - t, w = kFiveWeights[i];
    const Vec2 p = CubicAt(points, t), v = CubicDerivatives(points, t).first;
    const double first = 3 * s * s * t, last = 3 * s * t * t;
    const double first_slope = 3 * s * (s - 2 * t), last_slope = 3 * t * (2 * s - t);
    const Vec2 by_a = first * leaves_, by_b = -last * arrives_;
    const double slope_a = first_slope * leaves_.x, slope_b = -last_slope * arrives_.x;
    under.area += w * p.y * v.x;
    under.moment += w * p.x * p.y * v.x;
    area_a += w * (by_a.y * v.x + p.y * slope_a);
    area_b += w * (by_b.y * v.x + p.y * slope_b);
    moment_a += w * ((by_a.x * p.y + p.x * by_a.y) * v.x + p.x * p.y * slope_a);
    moment_b += w * ((by_b.x * p.y + p.x * by_b.y) * v.x + p.x * p.y * slope_b);
  }
  return under;
}

}  // namespace kurvo::outline
