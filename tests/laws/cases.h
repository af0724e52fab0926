// What the laws share: sizes and degrees of curves.
#pragma once

#include <algorithm>
#include <cmath>

#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {

inline Owned Scaled(const Curve& cv, double factor) {
  Owned copy = Copy(cv);
  ForEachPoint(
      *copy, [&](double* p) { KurvoclSetCoord(p, p[0] * factor, p[1] * factor, p[2] * factor); },
      [&](double& radius) { radius *= factor; });
  return copy;
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
  if (!IsRational(cv.type)) return 1;
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

// The shares of the domain that the first and the last span have.
inline std::pair<double, double> EndSpans(const Curve& cv) {
  const auto [start, length] = Domain(cv);
  const Oracle oracle(cv);
  return {static_cast<double>(oracle.JetAt<1>(start).span) / length,
          static_cast<double>(oracle.JetAt<1>(L(start) + length).span) / length};
}

// Whether a piece is of degree 0: parts of a division need not run like the whole then.
inline bool StandsStill(const Curve& cv) {
  if (cv.type != CV_SEGCV) return Degree(cv) == 0;
  const auto& block = *static_cast<KurvoSegcv*>(cv.data);
  return std::any_of(block.curves, block.curves + block.count, StandsStill);
}

}  // namespace kurvo_test
