// The one dispatch from a curve record to its evaluator.
#pragma once

#include "eval/parc2d.h"
#include "eval/pbezcurve.h"
#include "eval/pbsplinecurve.h"
#include "eval/pline2d.h"
#include "eval/prationalbezcurve.h"
#include "eval/prationalbsplinecurve.h"
#include "records/views.h"

namespace kurvo {

// Builds the evaluator that fits the view on the stack and calls use(evaluator). Composites have no
// evaluator: callers walk their pieces.
template <class Use>
decltype(auto) WithEvaluator(const KurvoLine& line, GlobalVar& g, Use&& use) {
  return use(PLine2D(line, g));
}
template <class Use>
decltype(auto) WithEvaluator(const KurvoArc& arc, GlobalVar& g, Use&& use) {
  return use(PArc2D(arc, g));
}
template <class Use>
decltype(auto) WithEvaluator(const BezierView<3>& bezier, GlobalVar& g, Use&& use) {
  return use(PBezCurve(bezier, g));
}
template <class Use>
decltype(auto) WithEvaluator(const BezierView<4>& bezier, GlobalVar& g, Use&& use) {
  return use(PRationalBezCurve(bezier, g));
}
template <class Use>
decltype(auto) WithEvaluator(const SplineView<3>& spline, GlobalVar& g, Use&& use) {
  return use(PBSplineCurve(spline, g));
}
template <class Use>
decltype(auto) WithEvaluator(const SplineView<4>& spline, GlobalVar& g, Use&& use) {
  return use(PRationalBSplineCurve(spline, g));
}

}  // namespace kurvo
