// Division of a curve in two.
#include <cmath>

#include "build/cut_curve.h"
#include "build/point_curve.h"
#include "foundation/guard.h"
#include "foundation/high_order_work.h"
#include "records/copied_curve.h"
#include "records/domain.h"
#include "records/well_formed.h"

namespace kurvo {
namespace {

// Fixed behaviour: the interface divides Bezier curves, plain and rational, of at most 5 control
// points; wherever else the library cuts one, its degree does not matter. Do not unify.
constexpr int32_t kMaxDividedDegree = 4;

bool CanDivide(const Curve& curve) {
  return VisitCurve(curve, Overloaded{[](const auto&) { return true; },
                                      []<std::size_t kDim>(const BezierView<kDim>& bezier) {
                                        return bezier.degree <= kMaxDividedDegree;
                                      }});
}

struct Halves {
  Curve first{};
  Curve second{};
};

Halves Release(OwnedCurve first, OwnedCurve second) { return {first.Release(), second.Release()}; }

// Empty halves where the curve is not divided. At an end, one half is that point.
Halves Divided(const Curve& curve, double t, GlobalVar& g) {
  if (!WellFormed(curve)) return {};
  const Domain domain = DomainOf(curve);
  const double param_tol = g.epsilon;
  if (!(t >= domain.start - param_tol && domain.end + param_tol >= t)) return {};
  if (param_tol >= std::fabs(t - domain.start))
    return Release(PointCurve(curve, domain.start, g), CopyOf(curve, g));
  if (param_tol >= std::fabs(t - domain.end))
    return Release(CopyOf(curve, g), PointCurve(curve, domain.end, g));
  OwnedCurve halves[2];
  HighOrderWork work;
  if (!CanDivide(curve) || !CutCurve(curve, &t, 1, param_tol, halves, work, g)) return {};
  return {halves[0].Release(), halves[1].Release()};
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvDivide(const Curve* curve, double t, Curve* first, Curve* second,
                              GlobalVar* g) noexcept {
  using kurvo::Divided;
  using kurvo::Halves;
  if (first) *first = Curve{};
  if (second) *second = Curve{};
  if (kurvo::ErrorPending(*g) || !curve || !first || !second) return;
  const Halves halves = kurvo::Guard(*g, Halves{}, [&] { return Divided(*curve, t, *g); });
  *first = halves.first;
  *second = halves.second;
}
