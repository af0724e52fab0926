// Division of a curve at several parameters.
#include <algorithm>
#include <cmath>
#include <vector>

#include "build/cut_curve.h"
#include "build/divide_spline.h"
#include "build/remove_knots.h"
#include "foundation/guard.h"
#include "foundation/high_order_work.h"
#include "records/copied_curve.h"
#include "records/domain.h"
#include "records/owned_sequence.h"
#include "records/well_formed.h"

namespace kurvo {
namespace {

// True for parameters in [0, 1], each greater than the one before.
bool IsDivisionList(const CvParam& list) {
  if (list.count < 0 || list.count > kMaxIndex || (list.count > 0 && !list.values)) return false;
  for (int32_t i = 0; i < list.count; ++i) {
    const double t = list.values[i];
    if (!(t >= 0.0 && 1.0 >= t) || (i > 0 && !(list.values[i - 1] < t))) return false;
  }
  return true;
}

// False when a parameter lies beyond the end of the curve.
bool LieIn(const CvParam& list, const Domain& domain, double param_tol) {
  return list.values[0] >= domain.start - param_tol &&
         domain.end + param_tol >= list.values[list.count - 1];
}

// Where a curve is cut, ascending: a parameter within tolerance of the cut before it or of an end
// is that cut or end. Fixed behaviour: the tolerance is a share of what remains of the curve after
// the cut before, which is what is divided next; only the end of a composite has it absolute.
std::vector<double> CutsOf(const CvParam& list, const Domain& domain, bool composite,
                           double param_tol) {
  std::vector<double> cuts;
  cuts.reserve(static_cast<std::size_t>(list.count));
  double from = domain.start;
  for (int32_t i = 0; i < list.count; ++i) {
    const double t = list.values[i];
    const double rest_tol = param_tol * (from > domain.start ? domain.end - from : 1.0);
    const double end_tol = composite ? param_tol : rest_tol;
    if (!(rest_tol >= t - from)) from = end_tol >= domain.end - t ? domain.end : t;
    cuts.push_back(from);
  }
  return cuts;
}

// Where a B-spline is cut, ascending: at the nearest knot within the tolerance, the cut before and
// the ends of the domain included, otherwise at t.
template <std::size_t kDim>
std::vector<CutPlace> KnotsToCutAt(const CvParam& list, const SplineView<kDim>& spline,
                                   double param_tol) {
  const Domain domain = DomainOf(spline);
  const double* first = spline.knots + spline.order - 1;
  const double* last = spline.knots + spline.count + 1;
  std::vector<CutPlace> places;
  places.reserve(static_cast<std::size_t>(list.count));
  double before = domain.start;
  for (int32_t i = 0; i < list.count; ++i) {
    const double t = list.values[i];
    const double* after = std::clamp(std::lower_bound(first, last, t), first + 1, last - 1);
    double cut = t;
    double gap = param_tol;
    for (const double knot : {before, *(after - 1), *after, domain.start, domain.end}) {
      if (!(gap >= std::fabs(knot - t))) continue;
      gap = std::fabs(knot - t);
      cut = knot;
    }
    before = std::max(cut, before);
    places.push_back({before, before});
  }
  return places;
}

// Writes the pieces; false when the curve cannot be cut.
bool Divide(const Curve& curve, const auto& view, const CvParam& list, OwnedSequence& pieces,
            GlobalVar& g) {
  HighOrderWork work;
  const std::vector<double> cuts = CutsOf(list, DomainOf(view), curve.type == CV_SEGCV, g.epsilon);
  return CutCurve(curve, cuts.data(), list.count, g.epsilon, pieces.data(), work, g);
}

// Knots left over from earlier insertions would make needless control points in every piece.
template <std::size_t kDim>
bool Divide(const Curve& curve, const SplineView<kDim>& spline, const CvParam& list,
            OwnedSequence& pieces, GlobalVar& g) {
  if (!HighOrderWork().Allows(spline.order, list.count)) return false;
  const OwnedCurve fewer = WithoutKnots(curve, spline, g);
  return VisitCurve(fewer.curve(),
                    Overloaded{[&](const SplineView<kDim>& working) {
                                 const auto places = KnotsToCutAt(list, working, g.epsilon);
                                 return CutSpline(fewer.curve(), working, places.data(), list.count,
                                                  pieces.data(), g);
                               },
                               [](const auto&) { return false; }});
}

// Empty, with the error recorded, when the curve is not divided.
Cvseq Divided(const Curve& curve, const CvParam& list, GlobalVar& g) {
  OwnedSequence pieces(static_cast<std::size_t>(list.count) + 1);
  if (list.count == 0) {
    pieces[0] = CopyOf(curve, g);
    return ReleaseSequence(pieces);
  }
  if (!LieIn(list, DomainOf(curve), g.epsilon)) {
    Fail(g, KURVO_ERR_RANGE);
    return {};
  }
  if (!VisitCurve(curve, [&](const auto& view) { return Divide(curve, view, list, pieces, g); })) {
    Fail(g, KURVO_ERR_CURVE);
    return {};
  }
  return ReleaseSequence(pieces);
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvNDivide(const Curve* curve, const CvParam* params, Cvseq* pieces,
                               GlobalVar* g) noexcept {
  if (pieces) *pieces = Cvseq{};
  if (kurvo::ErrorPending(*g) || !curve || !curve->data || !pieces) return;
  if (!kurvo::WellFormed(*curve)) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  if (!params || !kurvo::IsDivisionList(*params)) return kurvo::Fail(*g, KURVO_ERR_RANGE);
  const auto divide = [&] { return kurvo::Divided(*curve, *params, *g); };
  *pieces = kurvo::Guard(*g, Cvseq{}, divide);
}
