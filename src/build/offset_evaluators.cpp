// The offset operation of the free-form evaluators.
#include <algorithm>
#include <cstddef>
#include <memory>

#include "build/bezier_pieces.h"
#include "build/offset_bezier.h"
#include "build/offset_polygon.h"
#include "eval/pbezcurve.h"
#include "eval/pbsplinecurve.h"
#include "eval/prationalbezcurve.h"
#include "eval/prationalbsplinecurve.h"
#include "foundation/clamped_size.h"
#include "foundation/new_array.h"

namespace kurvo {
namespace {

// A polygon's offset does not depend on the length of the normal, only on its sense.
OffsetTask TaskOf(Vec3 normal, double distance, double tolerance, const OwnedSequence& before,
                  const GlobalVar& g) {
  const std::size_t left = kMaxOffsetPieces - std::min(kMaxOffsetPieces, before.size());
  return {normal.z < 0.0 ? -distance : distance, tolerance, g.epsilon,
          std::max(kLeastOffsetPieces, left)};
}

template <std::size_t kDim>
bool OffsetFreeForm(const BezierView<kDim>& bezier, const OffsetTask& task, OwnedSequence& pieces,
                    GlobalVar& g) {
  if (bezier.degree > kMaxOffsetDegree) {
    Fail(g, KURVO_ERR_CURVE);
    return false;
  }
  OffsetBezier(bezier.points, bezier.degree, task, pieces);
  return true;
}

// Offsets the Bezier piece of each span.
template <std::size_t kDim>
bool OffsetFreeForm(const SplineView<kDim>& spline, OffsetTask task, OwnedSequence& pieces,
                    GlobalVar& g) {
  const int32_t degree = spline.order - 1;
  if (degree > kMaxOffsetDegree) {
    Fail(g, KURVO_ERR_CURVE);
    return false;
  }
  const auto spans = static_cast<std::size_t>(CountSpans(KnotsOf(spline)));
  const auto order = static_cast<std::size_t>(spline.order);
  const auto points = NewArray<double[kDim]>((ClampedSize(spans) * order).value());
  double(*next)[kDim] = points.get();
  ExtractAllBeziers(spline, [&](int32_t) {
    double(*piece)[kDim] = next;
    next += order;
    return piece;
  });
  if (spans > 0) task.most_pieces = std::max(kLeastOffsetPieces, task.most_pieces / spans);
  for (std::size_t i = 0; i < spans; ++i)
    OffsetBezier(points.get() + i * order, degree, task, pieces);
  return true;
}

}  // namespace

bool PBezCurve::Offset(Vec3 normal, double distance, double tolerance,
                       OwnedSequence& pieces) const {
  return OffsetFreeForm(bezier_, TaskOf(normal, distance, tolerance, pieces, g_), pieces, g_);
}

bool PRationalBezCurve::Offset(Vec3 normal, double distance, double tolerance,
                               OwnedSequence& pieces) const {
  return OffsetFreeForm(bezier_, TaskOf(normal, distance, tolerance, pieces, g_), pieces, g_);
}

bool PBSplineCurve::Offset(Vec3 normal, double distance, double tolerance,
                           OwnedSequence& pieces) const {
  return OffsetFreeForm(spline_, TaskOf(normal, distance, tolerance, pieces, g_), pieces, g_);
}

bool PRationalBSplineCurve::Offset(Vec3 normal, double distance, double tolerance,
                                   OwnedSequence& pieces) const {
  return OffsetFreeForm(spline_, TaskOf(normal, distance, tolerance, pieces, g_), pieces, g_);
}

}  // namespace kurvo
