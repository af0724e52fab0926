// The Bezier curve that a free-form curve runs along around a parameter.
#pragma once

#include <optional>

#include "control/bezier_pieces.h"
#include "control/spline_point.h"
#include "foundation/error_codes.h"
#include "foundation/point.h"
#include "foundation/work_area.h"
#include "records/pieces.h"

namespace kurvo {

template <std::size_t kDim>
struct LocalBezier {
  BezierView<kDim> bezier;
  double s;      // its own parameter
  double width;  // of the stretch of the curve's parameters that it covers; 0 when there is none
};

// The span that t is evaluated on; where that has no width, the next one that has.
template <std::size_t kDim>
int32_t SpanWithWidth(const SplineView<kDim>& spline, double t) {
  int32_t i = FindSpan(KnotsOf(spline), t);
  while (i + 1 < spline.count && !(spline.knots[i] < spline.knots[i + 1])) ++i;
  return i;
}

// Each gives the vector use(LocalBezier), or (0, 0) with the error recorded; nothing when there is
// nothing to use it on.
using MaybeVector = std::optional<Vec2>;

template <std::size_t kDim, class Use>
MaybeVector WithLocalBezier(const BezierView<kDim>& bezier, double t, GlobalVar&, Use&& use) {
  return use(LocalBezier<kDim>{bezier, t, 1.0});
}

// Knots are inserted on the span around t alone: O(order^2), however long the curve is. A curve
// whose knots leave no span stands as the Bezier curve of one span's control points, at its start.
template <std::size_t kDim, class Use>
MaybeVector WithLocalBezier(const SplineView<kDim>& spline, double t, GlobalVar& g, Use&& use) {
  const int32_t k = spline.order;
  if (k > kMaxSplineOrder) return Refuse<Vec2>(g, KURVO_ERR_CURVE);
  const int32_t i = SpanWithWidth(spline, t);
  const double* u = spline.knots + i;
  const double width = u[1] - u[0];
  if (!(width > 0.0)) return use(LocalBezier<kDim>{{k - 1, spline.points + (i - k + 1)}, 0.0, 0.0});
  WorkArea<double[kDim], kStackOrder> points(static_cast<std::size_t>(k));
  ExtractBezier(spline, i, points.data());
  return use(LocalBezier<kDim>{{k - 1, points.data()}, (t - u[0]) / width, width});
}

// Fixed behaviour: only Bezier pieces have derivatives here, of either kind; on every other piece,
// and beyond the end, nothing is done. They are left in the piece's own parameter. A boundary
// belongs to the later piece, unlike that of a position. Do not unify.
template <class Use>
MaybeVector WithLocalBezier(const CompositeView& composite, double t, GlobalVar& g, Use&& use) {
  const PieceParameter at = PieceAt(composite, t, Boundary::kLaterPiece);
  if (!at.piece || (at.piece->type != CV_BEZIER && at.piece->type != CV_RBEZIER))
    return std::nullopt;
  return VisitCurve(*at.piece, Overloaded{[&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                                            return WithLocalBezier(bezier, at.t, g, use);
                                          },
                                          [&](const auto&) -> MaybeVector {
                                            return Refuse<Vec2>(g, KURVO_ERR_CURVE);
                                          }});
}

}  // namespace kurvo
