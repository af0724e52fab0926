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

}  // namespace kurvo_test
