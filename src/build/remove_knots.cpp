// Removal of knots that a B-spline does not need.
#include "build/remove_knots.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "control/knot_window.h"
#include "foundation/guard.h"
#include "foundation/high_order_work.h"
#include "records/copied_curve.h"
#include "records/new_records.h"
#include "records/well_formed.h"

namespace kurvo {
namespace {

// How far from a knot, as a share of the interval on that side, the curve must stay where it was.
constexpr double kTestShare = 1.0 / 5.0;

constexpr int32_t kBasesEach = 4;  // evaluated for a knot that stays: two before, two without it

bool IsAscending(const double* u, int32_t count) {
  return std::adjacent_find(u, u + count, [](double a, double b) { return !(a <= b); }) ==
         u + count;
}

template <class T>
void MoveDown(const T* from, int32_t count, T* to) {
  if (from != to && count > 0) std::memmove(to, from, static_cast<std::size_t>(count) * sizeof(T));
}

// Sweeps over the distinct inner knots of a B-spline, in its own arrays: what has been passed
// stands at their front, what is to come at `tail_`, and the gap between them is what has been
// removed.
template <std::size_t kDim>
class KnotSweep {
 public:
  KnotSweep(SplineBlock<kDim>& block, double length_tol)
      : order_(block.order),
        count_(block.count),
        u_(block.knots),
        points_(block.points),
        length_tol_(length_tol),
        now_(block.order - 1),
        next_(block.order - 1) {}

  // Result: how many knots, and control points, are gone; the others stand at the front.
  int32_t Run() {
    const double start = u_[order_ - 1];
    const double end = u_[count_];
    if (!(start < end) || !IsAscending(u_, order_ + count_)) return 0;
    head_ = tail_ = static_cast<int32_t>(std::upper_bound(u_, u_ + count_, start) - u_);
    double before = start;
    while (u_[tail_] < end) {
      const double knot = u_[tail_];
      const int32_t multiplicity = Pass(knot);
      Remove(knot, DropIdle(multiplicity), before);
      before = knot;
    }
    MoveDown(points_ + tail_, count_ - tail_, points_ + head_);
    MoveDown(u_ + tail_, count_ + order_ - tail_, u_ + head_);
    return tail_ - head_;
  }

 private:
  // Moves the next knots that are `knot`, and their points, to the front. Result: their number.
  int32_t Pass(double knot) {
    const int32_t from = tail_;
    for (; u_[tail_] == knot; ++head_, ++tail_) {
      u_[head_] = u_[tail_];
      std::copy_n(points_[tail_], kDim, points_[head_]);
    }
    return tail_ - from;
  }

  // A knot that occurs more often than `order` times has control points that act nowhere. Result:
  // the multiplicity without them.
  int32_t DropIdle(int32_t multiplicity) {
    const int32_t idle = multiplicity - order_;
    if (idle <= 0) return multiplicity;
    double(*kept)[kDim] = points_ + (head_ - order_);
    MoveDown(kept, order_, kept - idle);
    head_ -= idle;
    return order_;
  }

  // Removes the knot, which has been passed last, as often as the curve stays at two points beside
  // it. These are compared with the curve before the first removal, so that errors cannot add up.
  void Remove(double knot, int32_t multiplicity, double before) {
    const double a = knot - (knot - before) * kTestShare;
    const double b = knot + (u_[tail_] - knot) * kTestShare;
    now_.Load(u_, points_, head_ - 1, multiplicity, tail_);
    const Vec2 at_a = now_.LeftPoint(a);
    const Vec2 at_b = now_.RightPoint(b);
    while (now_.multiplicity() > 0) {
      next_.LoadWithoutOne(now_);
      if (!Same(next_.LeftPoint(a), at_a) || !Same(next_.RightPoint(b), at_b)) break;
      std::swap(now_, next_);
    }
    if (now_.multiplicity() == multiplicity) return;
    now_.Store(points_);
    head_ -= multiplicity - now_.multiplicity();
  }

  bool Same(Vec2 p, Vec2 q) const { return SamePoint(OnPlane(p), OnPlane(q), length_tol_); }

  const int32_t order_;
  const int32_t count_;
  double* const u_;
  double (*const points_)[kDim];
  const double length_tol_;
  KnotWindow<kDim> now_;
  KnotWindow<kDim> next_;
  int32_t head_ = 0;
  int32_t tail_ = 0;
};

}  // namespace

template <std::size_t kDim>
OwnedCurve WithoutKnots(const Curve& curve, const SplineView<kDim>& spline, GlobalVar& g) {
  if (!HighOrderWork().Allows(spline.order, int64_t{kBasesEach} * (spline.count - spline.order))) {
    Fail(g, KURVO_ERR_CURVE);
    return {};
  }
  OwnedCurve work = CopyOf(curve, g);
  auto& from = work.block<SplineBlock<kDim>>();
  const int32_t removed = KnotSweep<kDim>(from, g.epsilon).Run();
  if (removed == 0) return work;
  const int32_t order = spline.order;
  const int32_t count = spline.count - removed;
  OwnedCurve result(kSplineType<kDim>, {.order = order, .count = count});
  auto& to = result.block<SplineBlock<kDim>>();
  CopyArray(from.points, count, to.points);
  CopyArray(from.knots, order + count, to.knots);
  return result;
}

template OwnedCurve WithoutKnots(const Curve&, const SplineView<3>&, GlobalVar&);
template OwnedCurve WithoutKnots(const Curve&, const SplineView<4>&, GlobalVar&);

namespace {

OwnedCurve RemoveFrom(const Curve& curve, GlobalVar& g) {
  return VisitCurve(curve, Overloaded{[&]<std::size_t kDim>(const SplineView<kDim>& spline) {
                                        return WithoutKnots(curve, spline, g);
                                      },
                                      [&](const auto&) {
                                        Fail(g, KURVO_ERR_CURVE);
                                        return OwnedCurve();
                                      }});
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvBsplRemoveKnots(const Curve* curve, Curve* result, GlobalVar* g) noexcept {
  if (result) *result = Curve{};
  if (kurvo::ErrorPending(*g) || !curve || !curve->data || !result) return;
  if (!kurvo::WellFormed(*curve)) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  const auto remove = [&] { return kurvo::RemoveFrom(*curve, *g).Release(); };
  *result = kurvo::Guard(*g, Curve{}, remove);
}
