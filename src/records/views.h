// Typed views of a curve record: checked once, then used without casts or further checks.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kurvo.h"

namespace kurvo {

constexpr int32_t kMaxIndex = INT32_MAX - 1;  // no array is longer: indices can count past it
constexpr int kMaxNesting = 64;               // composites within composites; deeper are refused

// A point of a B-spline costs O(order^2): orders above this are refused, so that none takes
// seconds.
constexpr int32_t kMaxSplineOrder = 4096;

template <std::size_t kDim>  // 3: x, y, z; 4: x, y, z, weight
struct BezierView {
  int32_t degree;
  const double (*points)[kDim];
};

template <std::size_t kDim>
struct SplineView {
  int32_t order;
  int32_t count;
  const double (*points)[kDim];
  const double* knots;
};

struct CompositeView {
  int32_t count;
  const Curve* curves;
  const double* widths;
};

constexpr bool IsTypeCode(int32_t type) {
  return type == CV_LINE || type == CV_ARC || type == CV_BEZIER || type == CV_RBEZIER ||
         type == CV_BSPLINE || type == CV_RBSPLINE || type == CV_SEGCV;
}

// Stands for a record that cannot be used: unknown type, missing data or arrays, impossible sizes.
struct Refused {};

// One visitor from several lambdas.
template <class... Visitors>
struct Overloaded : Visitors... {
  using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

namespace internal {

template <class Block, std::size_t kDim, class Visitor>
decltype(auto) VisitBezier(const void* data, Visitor&& visit) {
  const auto& block = *static_cast<const Block*>(data);
  if (block.degree < 0 || block.degree > kMaxIndex || !block.points) return visit(Refused{});
  return visit(BezierView<kDim>{block.degree, block.points});
}

template <class Block, std::size_t kDim, class Visitor>
decltype(auto) VisitSpline(const void* data, Visitor&& visit) {
  const auto& block = *static_cast<const Block*>(data);
  if (block.order < 1 || block.count < block.order || block.count > kMaxIndex - block.order ||
      !block.points || !block.knots)
    return visit(Refused{});
  return visit(SplineView<kDim>{block.order, block.count, block.points, block.knots});
}

template <class Visitor>
decltype(auto) VisitComposite(const void* data, Visitor&& visit) {
  const auto& block = *static_cast<const KurvoSegcv*>(data);
  if (block.count < 0 || (block.count > 0 && (!block.curves || !block.widths)))
    return visit(Refused{});
  return visit(CompositeView{block.count, block.curves, block.widths});
}

}  // namespace internal

// Calls `visit` with the view that fits the record: const KurvoLine&, const KurvoArc&,
// BezierView<3|4>, SplineView<3|4>, CompositeView, or Refused. The one place that reads a type code
// to find a block.
template <class Visitor>
decltype(auto) VisitCurve(const Curve& curve, Visitor&& visit) {
  if (!curve.data) return visit(Refused{});
  switch (curve.type) {
    case CV_LINE:
      return visit(*static_cast<const KurvoLine*>(curve.data));
    case CV_ARC:
      return visit(*static_cast<const KurvoArc*>(curve.data));
    case CV_BEZIER:
      return internal::VisitBezier<KurvoBezier, 3>(curve.data, visit);
    case CV_RBEZIER:
      return internal::VisitBezier<KurvoRBezier, 4>(curve.data, visit);
    case CV_BSPLINE:
      return internal::VisitSpline<KurvoBSpline, 3>(curve.data, visit);
    case CV_RBSPLINE:
      return internal::VisitSpline<KurvoRBSpline, 4>(curve.data, visit);
    case CV_SEGCV:
      return internal::VisitComposite(curve.data, visit);
    default:
      return visit(Refused{});
  }
}

}  // namespace kurvo
