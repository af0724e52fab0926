// Moving one end of a curve, the rest of it staying where it is as far as it can.
#include "control/spline_point.h"
#include "foundation/guard.h"
#include "foundation/work_area.h"
#include "records/pieces.h"
#include "records/writable.h"

namespace kurvo {
namespace {

constexpr std::size_t kStackBases = 64;  // larger orders take their work area from the heap

void Add(Vec3 delta, const double* p) { Store(Spatial(p) + delta, Writable(p)); }

// a[j], 0 <= j < order, with which the point of the span at t is the sum of a[j] times the control
// points that act on it.
template <std::size_t kDim>
void FillShares(const SplineView<kDim>& spline, SpanPoint at, double* a) {
  const BasisValues basis(KnotsOf(spline), at.span, at.t);
  const double(*points)[kDim] = spline.points + (at.span - spline.order + 1);
  double weight = 0.0;
  for (int32_t j = 0; j < spline.order; ++j) {
    a[j] = basis[j] * WeightOf(points[j]);
    weight += a[j];
  }
  if (kDim == 3 || weight == 0.0) return;  // a weight sum of 0 leaves the point undivided
  for (int32_t j = 0; j < spline.order; ++j) a[j] /= weight;
}

// Moves the point of the span at t by delta with the smallest sum of squared displacements: control
// point j moves by a[j] delta / (sum of a[i]^2), and those that do not act there stay (Piegl and
// Tiller, The NURBS Book, section 11.5.1, with one constraint).
template <std::size_t kDim>
void MovePoint(const SplineView<kDim>& spline, SpanPoint at, Vec3 delta) {
  const auto order = static_cast<std::size_t>(spline.order);
  WorkArea<double, kStackBases> a(order);
  FillShares(spline, at, a.data());
  double norm = 0.0;
  for (std::size_t j = 0; j < order; ++j) norm += a[j] * a[j];
  const double(*points)[kDim] = spline.points + (at.span - spline.order + 1);
  for (std::size_t j = 0; j < order; ++j)
    if (a[j] != 0.0) Add(a[j] / norm * delta, points[j]);
}

template <std::size_t kDim>
void MoveEnd(const SplineView<kDim>& spline, End end, Vec3 delta) {
  const bool start = end == End::kStart;
  const auto at = start ? EvaluatedStart(spline) : EvaluatedEnd(spline);
  if (at) return MovePoint(spline, *at, delta);
  Add(delta, spline.points[start ? 0 : spline.count - 1]);
}

// Moves the end of the first (last) leaf. One without data, like such a curve, has nothing to move;
// arcs are refused, since moving one end would break the circle.
void MoveEnd(const Curve& curve, End end, Vec3 delta, GlobalVar& g) {
  const bool start = end == End::kStart;
  const Curve* leaf = EndLeaf(curve, end);
  if (!leaf) return Fail(g, KURVO_ERR_CURVE);
  if (!leaf->data) return;
  VisitCurve(*leaf,
             Overloaded{[&](const KurvoLine& line) { Add(delta, start ? line.start : line.end); },
                        [&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                          Add(delta, bezier.points[start ? 0 : bezier.degree]);
                        },
                        [&]<std::size_t kDim>(const SplineView<kDim>& spline) {
                          if (spline.order > kMaxSplineOrder) return Fail(g, KURVO_ERR_CURVE);
                          MoveEnd(spline, end, delta);
                        },
                        [&](const auto&) { Fail(g, KURVO_ERR_CURVE); }});
}

void GuardedMoveEnd(const Curve* curve, End end, const double* delta, GlobalVar& g) {
  if (ErrorPending(g) || !curve || !curve->data) return;
  const auto move = [&] {
    MoveEnd(*curve, end, Spatial(delta), g);
    return true;
  };
  Guard(g, false, move);
}

}  // namespace
}  // namespace kurvo

extern "C" {

void KurvocvMvStartPoint(Curve* curve, const Coord delta, GlobalVar* g) noexcept {
  kurvo::GuardedMoveEnd(curve, kurvo::End::kStart, delta, *g);
}

void KurvocvMvEndPoint(Curve* curve, const Coord delta, GlobalVar* g) noexcept {
  kurvo::GuardedMoveEnd(curve, kurvo::End::kEnd, delta, *g);
}

}  // extern "C"
