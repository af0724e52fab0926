// The one dispatch from a curve record to its evaluator.
#pragma once

#include "eval/bezier_evaluators.h"
#include "eval/parc2d.h"
#include "eval/pline2d.h"
#include "eval/spline_evaluators.h"
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
template <std::size_t kDim, class Use>
decltype(auto) WithEvaluator(const BezierView<kDim>& bezier, GlobalVar& g, Use&& use) {
  return use(BezierEvaluator<kDim>(bezier, g));
}
template <std::size_t kDim, class Use>
decltype(auto) WithEvaluator(const SplineView<kDim>& spline, GlobalVar& g, Use&& use) {
  return use(SplineEvaluator<kDim>(spline, g));
}

}  // namespace kurvo
