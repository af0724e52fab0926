// New curve records, filled from arrays of control points.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <type_traits>

#include "records/owned_curve.h"
#include "records/views.h"

namespace kurvo {

template <std::size_t kDim>
using BezierBlock = std::conditional_t<kDim == 3, KurvoBezier, KurvoRBezier>;
template <std::size_t kDim>
using SplineBlock = std::conditional_t<kDim == 3, KurvoBSpline, KurvoRBSpline>;
template <std::size_t kDim>
inline constexpr int32_t kBezierType = kDim == 3 ? CV_BEZIER : CV_RBEZIER;
template <std::size_t kDim>
inline constexpr int32_t kSplineType = kDim == 3 ? CV_BSPLINE : CV_RBSPLINE;

// The point as one of a curve of another kind: in the plane, of weight 1 unless it has another.
template <std::size_t kFrom, std::size_t kTo>
void FlattenPoint(const double (&from)[kFrom], double (&to)[kTo]) {
  to[0] = from[0];
  to[1] = from[1];
  to[2] = 0.0;
  if constexpr (kTo == 4) to[3] = kFrom == 4 ? from[kFrom - 1] : 1.0;
}

template <std::size_t kFrom, std::size_t kTo>
void FlattenPoints(const double (*from)[kFrom], int32_t count, double (*to)[kTo]) {
  for (int32_t i = 0; i < count; ++i) FlattenPoint(from[i], to[i]);
}

template <class T>
void CopyArray(const T* from, int32_t count, T* to) {
  if (count > 0) std::memcpy(to, from, static_cast<std::size_t>(count) * sizeof(T));
}

// A Bezier record; fill(points) writes its control points.
template <std::size_t kDim, class Fill>
OwnedCurve NewBezier(int32_t degree, Fill&& fill) {
  OwnedCurve curve(kBezierType<kDim>, {.degree = degree});
  fill(curve.block<BezierBlock<kDim>>().points);
  return curve;
}

template <std::size_t kTo, std::size_t kFrom>
OwnedCurve FlatBezier(const double (*points)[kFrom], int32_t degree) {
  return NewBezier<kTo>(degree, [&](double(*to)[kTo]) { FlattenPoints(points, degree + 1, to); });
}

template <std::size_t kDim>
OwnedCurve CopiedBezier(const double (*points)[kDim], int32_t degree) {
  return NewBezier<kDim>(degree, [&](double(*to)[kDim]) { CopyArray(points, degree + 1, to); });
}

// A B-spline record of one span over [0, 1], which has the control points of a Bezier curve.
template <std::size_t kDim, class Fill>
OwnedCurve NewSingleSpan(int32_t degree, Fill&& fill) {
  const int32_t order = degree + 1;
  OwnedCurve curve(kSplineType<kDim>, {.order = order, .count = order});
  auto& block = curve.block<SplineBlock<kDim>>();
  fill(block.points);
  std::fill_n(block.knots, order, 0.0);
  std::fill_n(block.knots + order, order, 1.0);
  return curve;
}

template <std::size_t kTo, std::size_t kFrom>
OwnedCurve FlatSingleSpan(const double (*points)[kFrom], int32_t degree) {
  return NewSingleSpan<kTo>(degree,
                            [&](double(*to)[kTo]) { FlattenPoints(points, degree + 1, to); });
}

template <std::size_t kDim>
OwnedCurve CopiedSingleSpan(const double (*points)[kDim], int32_t degree) {
  return NewSingleSpan<kDim>(degree, [&](double(*to)[kDim]) { CopyArray(points, degree + 1, to); });
}

// A record of the arc, if there is one.
inline OwnedCurve NewArc(const std::optional<KurvoArc>& arc) {
  if (!arc) return {};
  OwnedCurve curve(CV_ARC, {});
  curve.block<KurvoArc>() = *arc;
  return curve;
}

// A composite of one piece over [0, 1].
inline OwnedCurve NewComposite(OwnedCurve piece) {
  OwnedCurve curve(CV_SEGCV, {.count = 1});
  auto& block = curve.block<KurvoSegcv>();
  block.curves[0] = piece.Release();
  block.widths[0] = 1.0;
  return curve;
}

}  // namespace kurvo
