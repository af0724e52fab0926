// The Bezier pieces that free-form curves are made of.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "control/knot_spans.h"
#include "records/views.h"

namespace kurvo {

// The order up to which the points of one piece lie on the stack.
constexpr std::size_t kStackOrder = 40;

// The number of spans of the domain that have a width: the pieces a B-spline splits into.
int32_t CountSpans(const KnotVector& knots);

// Writes the `order` Bezier control points of span i, which must have a width: O(order^2), no copy
// of the curve.
template <std::size_t kDim>
void ExtractBezier(const SplineView<kDim>& spline, int32_t i, double (*out)[kDim]);

// Extracts every span in ascending order, span i into room(i). Neighbours share their joint point
// to the bit, unless a knot between them has full multiplicity, where the curve may jump.
template <std::size_t kDim, class Room>
void ExtractAllBeziers(const SplineView<kDim>& spline, Room&& room) {
  const double* joint = nullptr;  // the last point of the piece before
  int32_t before = 0;
  AnySpan(KnotsOf(spline), [&](int32_t i) {
    double(*points)[kDim] = room(i);
    ExtractBezier(spline, i, points);
    if (joint && i - before < spline.order) std::copy_n(joint, kDim, points[0]);
    joint = points[spline.order - 1];
    before = i;
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

// All Bezier pieces of a curve in order: a Bezier curve itself, one piece for each span of a
// B-spline, and those of a composite's pieces, however they nest. Lines and arcs have none. Points
// of Bezier curves stay in their records, those of B-splines lie in one array; two blocks of memory
// whatever the number of pieces.
class BezierSpans {
 public:
  // Nothing for a record that cannot be right, and for a degree above max_degree, which shows
  // before anything is computed. Throws std::bad_alloc.
  static std::optional<BezierSpans> Of(const Curve& curve, int32_t max_degree);

  const BezierSpan* begin() const { return spans_.data(); }
  const BezierSpan* end() const { return spans_.data() + spans_.size(); }
  std::size_t size() const { return spans_.size(); }
  const BezierSpan& operator[](std::size_t i) const { return spans_[i]; }

 private:
  BezierSpans(std::vector<BezierSpan> spans, std::unique_ptr<double[]> storage)
      : spans_(std::move(spans)), storage_(std::move(storage)) {}

  std::vector<BezierSpan> spans_;
  std::unique_ptr<double[]> storage_;
};

}  // namespace kurvo
