// The Bezier pieces that free-form curves are made of.
#include "control/bezier_pieces.h"

#include <algorithm>
#include <cstring>

#include "control/blossom.h"
#include "control/homogeneous.h"

namespace kurvo {
namespace {

template <std::size_t kDim>
void CopyPoint(const double (&from)[kDim], double (&to)[kDim]) {
  std::copy_n(from, kDim, to);
}

}  // namespace

int32_t CountSpans(const KnotVector& knots) {
  int32_t count = 0;
  for (int32_t i = knots.order - 1; i < knots.count; ++i)
    if (knots.u[i] < knots.u[i + 1]) ++count;
  return count;
}

template <std::size_t kDim>
void ExtractBezier(const SplineView<kDim>& spline, int32_t i, double (*out)[kDim]) {
  const int32_t k = spline.order;
  const double* u = spline.knots + i;
  const double(*points)[kDim] = spline.points + (i - k + 1);
  std::memcpy(out, points, static_cast<std::size_t>(k) * sizeof(*out));
  const bool starts_clamped = k == 1 || u[2 - k] == u[0];
  const bool ends_clamped = k == 1 || u[k - 1] == u[1];
  if (starts_clamped && ends_clamped) return;  // a Bezier piece already
  ToHomogeneous(out, k);
  WithOrder(k, [&](auto order) { RaiseSpanKnots(order, u, out); });
  ToCartesian(out, k);
  if (starts_clamped) CopyPoint(points[0], out[0]);  // weights must not round the ends
  if (ends_clamped) CopyPoint(points[k - 1], out[k - 1]);
}

template void ExtractBezier(const SplineView<3>&, int32_t, double (*)[3]);
template void ExtractBezier(const SplineView<4>&, int32_t, double (*)[4]);

std::optional<SpanCounts> CountBezierSpans(const Curve& curve, int32_t max_degree) {
  SpanCounts counts;
  const auto add = [&](std::size_t spans, int32_t degree) {
    counts.spans = counts.spans + spans;
    counts.points =
        counts.points + ClampedSize(spans) * static_cast<std::size_t>(std::max(degree + 1, 2));
    return degree <= max_degree;
  };
  const auto count = Overloaded{
      [](const Curve&, const auto&) { return true; }, [](const Curve&, Refused) { return false; },
      [&]<std::size_t kDim>(const Curve&, const BezierView<kDim>& bezier) {
        return add(1, bezier.degree);
      },
      [&]<std::size_t kDim>(const Curve&, const SplineView<kDim>& spline) {
        if (spline.order > kMaxSplineOrder || spline.order - 1 > max_degree) return false;
        return add(static_cast<std::size_t>(CountSpans(KnotsOf(spline))), spline.order - 1);
      }};
  if (!AllLeaves(curve, count)) return std::nullopt;
  return counts;
}

}  // namespace kurvo
