// What the long tests share: how many cases they take, and curves looked at as numbers.
#pragma once

#include <algorithm>
#include <cmath>

#include "build/division.h"

namespace kurvo_test {

inline void Rescale(const Curve& cv, double factor) {
  ForEachPoint(
      cv,
      [&](double* p) {
        for (int i = 0; i < 3; ++i) p[i] *= factor;
      },
      [&](double& radius) { radius *= factor; });
}

// The largest coordinate or radius.
inline double Size(const Curve& cv) {
  double size = 0;
  ForEachPoint(
      cv,
      [&](const double* p) {
        size = std::max({size, std::fabs(p[0]), std::fabs(p[1])});
      },
      [&](double radius) { size = std::max(size, std::fabs(radius)); });
  return size;
}

// The highest degree; 1 for lines and arcs.
inline int Degree(const Curve& cv) {
  if (cv.type == CV_LINE || cv.type == CV_ARC) return 1;
  if (cv.type != CV_SEGCV) return FreeForm(cv).order - 1;
  const auto& block = *static_cast<KurvoSegcv*>(cv.data);
  int degree = 0;
  for (int i = 0; i < block.count; ++i) degree = std::max(degree, Degree(block.curves[i]));
  return degree;
}

// The largest weight over the least; 1 but for the rational Bezier and B-spline.
inline double WeightRatio(const Curve& cv) {
  if (cv.type != CV_RBEZIER && cv.type != CV_RBSPLINE) return 1;
  double least = kInfinity, largest = 0;
  ForEachPoint(
      cv,
      [&](const double* p) {
        least = std::min(least, p[3]);
        largest = std::max(largest, p[3]);
      },
      [](double) {});
  return largest / least;
}

// Whether a piece is of degree 0: parts of a division need not run like the whole then.
inline bool StandsStill(const Curve& cv) {
  if (cv.type == CV_SEGCV) {
    const auto& block = *static_cast<KurvoSegcv*>(cv.data);
    return std::any_of(block.curves, block.curves + block.count,
                       [](const Curve& piece) { return StandsStill(piece); });
  }
  return Degree(cv) == 0;
}

// A curve of any type but the composite whose radius of curvature is well above `kGentle`: control
// points along a shallow wave.
constexpr double kGentle = .4;
inline Owned GentleCurve(Random& random, int32_t type) {
  if (type == CV_LINE || type == CV_ARC) return RandomCurve(random, type, 1);
  const bool rational = type == CV_RBEZIER || type == CV_RBSPLINE;
  const int order = static_cast<int>(random.Uniform(3, 6)),
            count = type == CV_BEZIER || type == CV_RBEZIER ? order : order + 2;
  Numbers points, knots;
  for (int i = 0; i < count; ++i) {
    points.insert(points.end(), {i * 4. + random.Uniform(-.3, .3), random.Uniform(-.8, .8)});
    if (rational) points.push_back(random.Uniform(.8, 1.25));
  }
  if (type == CV_BSPLINE || type == CV_RBSPLINE)
    for (int i = 0; i < order + count; ++i)
      knots.push_back(std::clamp((i - order + 1) / 3.0, 0., 1.));
  return MakeFreeForm(type, points, knots);
}

}  // namespace kurvo_test
