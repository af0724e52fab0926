// Reversal of a curve's direction of travel, and knot vectors mapped onto [0, 1].
#include <algorithm>
#include <utility>

#include "calc/arc_span.h"
#include "foundation/error_codes.h"
#include "records/pieces.h"
#include "records/writable.h"

namespace kurvo {
namespace {

template <class T>
void ReverseArray(const T* array, int32_t count) {
  std::reverse(Writable(array), Writable(array) + count);
}

// Looks through all pieces first, so that nothing is half reversed.
bool CanReverse(const Curve& curve) {
  return AllLeaves(curve, Overloaded{[](const Curve&, const auto&) { return true; },
                                     [](const Curve&, Refused) { return false; }});
}

void ReverseView(const KurvoLine& line) {
  KurvoLine& writable = *Writable(&line);
  std::swap(writable.start, writable.end);
}

void ReverseView(const KurvoArc& arc) {
  KurvoArc& writable = *Writable(&arc);
  std::swap(writable.start, writable.end);
  writable.normal[2] = OppositeSense(arc);
}

template <std::size_t kDim>
void ReverseView(const BezierView<kDim>& bezier) {
  ReverseArray(bezier.points, bezier.degree + 1);
}

// Turning the knots round and negating them keeps them ascending.
template <std::size_t kDim>
void ReverseView(const SplineView<kDim>& spline) {
  const int32_t count = spline.order + spline.count;
  ReverseArray(spline.points, spline.count);
  ReverseArray(spline.knots, count);
  double* knots = Writable(spline.knots);
  for (int32_t i = 0; i < count; ++i) knots[i] = 0.0 - knots[i];  // 0 stays 0, not -0
  KurvoclNormalizeKnot(knots, count, spline.order);
}

void ReverseChecked(const Curve& curve);

void ReverseView(const CompositeView& composite) {
  ReverseArray(composite.curves, composite.count);
  ReverseArray(composite.widths, composite.count);
  std::for_each_n(composite.curves, composite.count, ReverseChecked);
}

void ReverseView(Refused) {}

void ReverseChecked(const Curve& curve) {
  VisitCurve(curve, [](const auto& view) { ReverseView(view); });
}

// Returns false, with the curve untouched, when it or one of its pieces is a record that cannot be
// right.
bool Reverse(Curve& curve) {
  if (!CanReverse(curve)) return false;
  ReverseChecked(curve);
  return true;
}

// The knot u becomes (u - a) / (b - a), [a, b] being the domain.
void NormaliseKnots(double* knots, int32_t count, int32_t order) {
  const double a = knots[order - 1];
  const double b = knots[count - order];
  if (a == b || (a == 0.0 && b == 1.0)) return;
  for (int32_t i = 0; i < count; ++i) knots[i] = (knots[i] - a) / (b - a);
}

}  // namespace
}  // namespace kurvo

extern "C" {

int64_t KurvocvChgOrder(Curve* curve, GlobalVar* g) noexcept {
  if (kurvo::ErrorPending(*g)) return KurvoErrSeverity(g->error);
  if (curve && kurvo::Reverse(*curve)) return 0;
  kurvo::Fail(*g, KURVO_ERR_CURVE);
  return KURVO_SEVERITY_ERROR;
}

void KurvoclNormalizeKnot(double* knots, int32_t count, int32_t order) noexcept {
  if (!knots || order < 1 || count < order || count - order < order) return;
  kurvo::NormaliseKnots(knots, count, order);
}

}  // extern "C"
