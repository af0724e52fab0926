// Sums over a Bezier curve, halved until its parts are simple.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "control/bezier_pieces.h"
#include "control/casteljau_split.h"
#include "foundation/point.h"
#include "foundation/work_area.h"
#include "foundation/work_budget.h"

namespace kurvo {

// Work is counted in interpolations between two control points.
constexpr int64_t kHalvingCost = 128;  // of one halving, besides its interpolations
constexpr int32_t kFreeDegree = 40;    // up to it a span is cut out of its spline at no charge

inline void ChargeSpan(int32_t degree, WorkBudget& work) {
  if (degree > kFreeDegree) work.Spend(2 * int64_t{degree} * degree);
}

// True when no number of halvings makes a curve of it: halving spreads a coordinate or a weight
// that is not a number to an end of both halves, and never takes it away.
template <std::size_t kDim>
bool IsNoCurve(const double (*points)[kDim], int32_t n) {
  const Vec2 start = Planar(points[0]);
  const Vec2 end = Planar(points[n]);
  return std::isnan(start.x + start.y) || std::isnan(end.x + end.y);
}

// The sum of value_of(points, n, depth) over the parts of the curve for which it has a value, those
// of the first half first; `depth` is how often a part may still be halved, and at 0 there has to
// be a value. `points` are used up.
template <class Value, std::size_t kDim, class ValueOf>
Value SumOverHalves(double (*points)[kDim], int32_t n, int depth, WorkBudget& work,
                    const ValueOf& value_of) {
  const std::optional<Value> value = value_of(points, n, depth);
  if (value) return *value;
  work.Spend(kHalvingCost + int64_t{n} * n / 2);
  WorkArea<double[kDim], kStackOrder> before(static_cast<std::size_t>(n) + 1);
  SplitBezier(points, n, 0.5, before.data());
  const Value sum = SumOverHalves<Value>(before.data(), n, depth - 1, work, value_of);
  return sum + SumOverHalves<Value>(points, n, depth - 1, work, value_of);
}

}  // namespace kurvo
