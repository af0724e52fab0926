// Pieces of a composite that are too far from a point to matter.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "calc/boxes.h"
#include "eval/segment.h"
#include "records/views.h"

namespace kurvo {

namespace internal {

// Rounding of positions, relative to the sum of all coordinates; power bases lose 3^9 units.
constexpr double kPositionNoise = 1e-10;

template <std::size_t kDim>
std::optional<double> BoundOf(const BezierView<kDim>& bezier, Vec2 p) {
  if (bezier.degree > (kDim == 4 ? kMaxRationalFootDegree : kMaxPlainFootDegree))
    return std::nullopt;
  PlanarBox box;
  double sum = 0.0;
  for (int32_t i = 0; i <= bezier.degree; ++i) {
    const double* q = bezier.points[i];
    if (kDim == 4 && !(q[kDim - 1] > 0.0)) return std::nullopt;
    box.Widen(Planar(q));
    sum += std::fabs(q[0]) + std::fabs(q[1]);
  }
  if (!std::isfinite(sum)) return std::nullopt;
  return Length(GapBetween(box, p)) - kPositionNoise * sum;
}

}  // namespace internal

// A distance from p below which no point of a Bezier curve lies, by the box of its control points.
// Nothing for other curves, and where a foot point may be refused or the curve may leave the box.
[[gnu::flatten]] inline std::optional<double> DistanceBound(const Curve& curve, Vec2 p) {
  using Bound = std::optional<double>;
  return VisitCurve(curve, Overloaded{[&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                                        return internal::BoundOf(bezier, p);
                                      },
                                      [](const auto&) { return Bound(); }});
}

// The piece with the least bound: the one to begin with, so that others can be passed over. -1 when
// no piece has one.
inline int32_t MostPromisingPiece(const CompositeView& composite, Vec2 p) {
  int32_t promising = -1;
  double least = std::numeric_limits<double>::infinity();
  for (int32_t i = 0; i < composite.count; ++i) {
    const auto bound = DistanceBound(composite.curves[i], p);
    if (!bound || !(*bound < least)) continue;
    least = *bound;
    promising = i;
  }
  return promising;
}

}  // namespace kurvo
