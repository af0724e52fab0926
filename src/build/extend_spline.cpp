// Extension of B-splines.
#include <algorithm>
#include <cmath>

#include "build/extend_rules.h"
#include "control/knot_insertion.h"
#include "control/weights.h"
#include "foundation/error_codes.h"
#include "foundation/rounded_compare.h"
#include "records/domain.h"
#include "records/new_records.h"

namespace kurvo {
namespace {

// The knot parameter at share s of the domain. Inside, a knot that is the same at six decimals of
// the domain is taken instead, so that no sliver of a span remains beside it.
double KnotAt(const KnotVector& knots, double s) {
  const Domain domain{knots.Start(), knots.End()};
  const double t = domain.start + s * domain.width();
  if (!(domain.start < t && t < domain.end)) return t;
  const double* first = knots.u + knots.order;
  const double* last = knots.u + knots.count;
  const double* after = std::lower_bound(first, last, t);
  const auto is_same = [&](double knot) {
    return CompareRounded((knot - domain.start) / domain.width(), s) == 0;
  };
  const double right = *after;
  const double left = *(after - 1);
  const bool nearer_right = std::fabs(right - t) <= std::fabs(t - left);
  const double nearer = nearer_right ? right : left;
  const double other = nearer_right ? left : right;
  if (is_same(nearer)) return nearer;
  return is_same(other) ? other : t;
}

}  // namespace

// A trimmed end is cut, an extended one has the polynomials of its span continued; both are the
// insertion of a knot up to full multiplicity.
template <std::size_t kDim>
OwnedCurve ExtendSpline(const SplineView<kDim>& spline, Extension by, GlobalVar& g) {
  const KnotVector knots = KnotsOf(spline);
  std::optional<KnotCut> start, end;
  if (by.start != 0.0) start = FindCut(knots, KnotAt(knots, -by.start));
  if (by.end != 0.0) end = FindCut(knots, KnotAt(knots, 1.0 + by.end));
  const bool found = (start || by.start == 0.0) && (end || by.end == 0.0);
  OwnedCurve result = found ? SplinePart(spline, start, end) : OwnedCurve();
  // Knots not in order, or a domain without length.
  if (!result.curve().data) return Refuse<OwnedCurve>(g, KURVO_ERR_CURVE);
  auto& block = result.block<SplineBlock<kDim>>();
  KurvoclNormalizeKnot(block.knots, block.count + block.order, block.order);
  // Fixed behaviour: the first `order` weights stand for all, as they do in conversion.
  if (!HasPositiveWeights(block.points, block.order))
    return Refuse<OwnedCurve>(g, KURVO_ERR_WEIGHT);
  return result;
}

template OwnedCurve ExtendSpline(const SplineView<3>&, Extension, GlobalVar&);
template OwnedCurve ExtendSpline(const SplineView<4>&, Extension, GlobalVar&);

}  // namespace kurvo
