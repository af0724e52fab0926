// The Bezier pieces that free-form curves are made of.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "control/knot_spans.h"
#include "foundation/clamped_size.h"
#include "foundation/work_area.h"
#include "records/pieces.h"

namespace kurvo {

// The order up to which the points of one piece lie on the stack.
constexpr std::size_t kStackOrder = 40;

// The number of spans of the domain that have a width: the pieces a B-spline splits into.
int32_t CountSpans(const KnotVector& knots);

// Writes the `order` Bezier control points of span i, which must have a width: O(order^2), no copy
// of the curve.
template <std::size_t kDim>
void ExtractBezier(const SplineView<kDim>& spline, int32_t i, double (*out)[kDim]);

// Extracts every span in ascending order, span i into room(i), and calls use(i). Neighbours share
// their joint point to the bit, unless a knot between them has full multiplicity, where the curve
// may jump.
template <std::size_t kDim, class Room, class Use>
void ExtractAllBeziers(const SplineView<kDim>& spline, Room&& room, Use&& use) {
  double joint[kDim];  // the last point of the piece before
  int32_t before = -1;
  AnySpan(KnotsOf(spline), [&](int32_t i) {
    double(*points)[kDim] = room(i);
    ExtractBezier(spline, i, points);
    if (before >= 0 && i - before < spline.order) std::copy_n(joint, kDim, points[0]);
    std::copy_n(points[spline.order - 1], kDim, joint);
    before = i;
    use(i);
    return false;
  });
}

// One Bezier piece, and the stretch of the whole curve's parameters that it covers.
struct BezierSpan {
  const double* points;  // degree + 1 times x, y, z, or x, y, z, weight when rational
  int32_t degree;
  bool rational;
  double start;
  double width;

  int32_t stride() const { return rational ? 4 : 3; }  // doubles from one point to the next
};

// What the Bezier pieces of a curve come to: a Bezier curve is one piece, a B-spline has one for
// each span, a composite those of its pieces, however they nest. Lines and arcs have none.
struct SpanCounts {
  ClampedSize<> spans = 0;
  ClampedSize<> points = 0;  // two at least for each span
};

// Nothing for a record that cannot be right, and for a degree above max_degree: before anything is
// computed.
std::optional<SpanCounts> CountBezierSpans(const Curve& curve, int32_t max_degree);

// Calls use(span) for all of them in order, for a curve that has been counted. The points of
// B-splines are gone when it returns. Throws std::bad_alloc.
template <class Use>
void ForEachBezierSpan(const Curve& curve, const Use& use) {
  const auto walk = Overloaded{
      [](const auto&, LeafStretch) {},
      [&]<std::size_t kDim>(const BezierView<kDim>& bezier, LeafStretch on) {
        use(BezierSpan{bezier.points[0], bezier.degree, kDim == 4, on.start, on.width});
      },
      [&]<std::size_t kDim>(const SplineView<kDim>& spline, LeafStretch on) {
        WorkArea<double[kDim], kStackOrder> points(static_cast<std::size_t>(spline.order));
        const auto room = [&](int32_t) { return points.data(); };
        ExtractAllBeziers(spline, room, [&](int32_t i) {
          const double* u = spline.knots + i;
          use(BezierSpan{points[0], spline.order - 1, kDim == 4, on.start + u[0] * on.width,
                         (u[1] - u[0]) * on.width});
        });
      }};
  AllLeafStretches(curve, [&](const Curve&, const auto& view, LeafStretch on) {
    walk(view, on);
    return true;
  });
}

}  // namespace kurvo
