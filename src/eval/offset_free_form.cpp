// The offset of the free-form evaluators.
#include "eval/offset_free_form.h"

#include <algorithm>
#include <cstddef>
#include <memory>

#include "control/bezier_pieces.h"
#include "eval/offset_bezier.h"
#include "eval/offset_polygon.h"
#include "foundation/work_area.h"

namespace kurvo {
namespace {

// A polygon's offset does not depend on the length of the normal, only on its sense.
OffsetTask TaskOf(Vec3 normal, double distance, double tolerance, const OwnedSequence& before,
                  const GlobalVar& g) {
  const std::size_t left = kMaxOffsetPieces - std::min(kMaxOffsetPieces, before.size());
  return {normal.z < 0.0 ? -distance : distance, tolerance, g.epsilon,
          std::max(kLeastOffsetPieces, left)};
}

bool IsTooHigh(int32_t degree, GlobalVar& g) {
  if (kMaxOffsetDegree >= degree) return false;
  Fail(g, KURVO_ERR_CURVE);
  return true;
}

}  // namespace

template <std::size_t kDim>
bool OffsetFreeForm(const BezierView<kDim>& bezier, Vec3 normal, double distance, double tolerance,
                    OwnedSequence& pieces, GlobalVar& g) {
  if (IsTooHigh(bezier.degree, g)) return false;
  OffsetBezier(bezier.points, bezier.degree, TaskOf(normal, distance, tolerance, pieces, g),
               pieces);
  return true;
}

template <std::size_t kDim>
bool OffsetFreeForm(const SplineView<kDim>& spline, Vec3 normal, double distance, double tolerance,
                    OwnedSequence& pieces, GlobalVar& g) {
  if (IsTooHigh(spline.order - 1, g)) return false;
  OffsetTask task = TaskOf(normal, distance, tolerance, pieces, g);
  const auto spans = static_cast<std::size_t>(CountSpans(KnotsOf(spline)));
  if (spans > 0) task.most_pieces = std::max(kLeastOffsetPieces, task.most_pieces / spans);
  WorkArea<double[kDim], kStackOrder> points(static_cast<std::size_t>(spline.order));
  const auto room = [&](int32_t) { return points.data(); };
  ExtractAllBeziers(spline, room,
                    [&](int32_t) { OffsetBezier(points.data(), spline.order - 1, task, pieces); });
  return true;
}

template bool OffsetFreeForm(const BezierView<3>&, Vec3, double, double, OwnedSequence&,
                             GlobalVar&);
template bool OffsetFreeForm(const BezierView<4>&, Vec3, double, double, OwnedSequence&,
                             GlobalVar&);
template bool OffsetFreeForm(const SplineView<3>&, Vec3, double, double, OwnedSequence&,
                             GlobalVar&);
template bool OffsetFreeForm(const SplineView<4>&, Vec3, double, double, OwnedSequence&,
                             GlobalVar&);

}  // namespace kurvo
