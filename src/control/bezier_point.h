// Points of Bezier curves.
#pragma once

#include "control/bernstein.h"
#include "control/load_points.h"
#include "foundation/point.h"
#include "records/views.h"

namespace kurvo {

inline Vec3 PointOnBezier(const BezierView<3>& bezier, double t) {
  const auto [x, y] = BezierValue<2>(bezier.degree, t, LoadPlanar(bezier.points));
  return {x, y, 0.0};
}

// `polynomial`: the weights count as 1.
inline Vec3 PointOnBezier(const BezierView<4>& bezier, double t, bool polynomial) {
  if (polynomial) {
    const auto [x, y] = BezierValue<2>(bezier.degree, t, LoadPlanar(bezier.points));
    return {x, y, 0.0};
  }
  const auto [x, y, w] = BezierValue<3>(bezier.degree, t, LoadHomogeneous(bezier.points));
  return {x / w, y / w, 0.0};
}

}  // namespace kurvo
