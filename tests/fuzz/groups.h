// Which fuzz target calls a function.
#pragma once

#include <string_view>

namespace kurvo_test {

struct Grouped {
  std::string_view function;
  std::string_view group;
};

constexpr Grouped kGrouped[] = {
    // Foot points: the root finder, through the interface.
    {"KurvocvParameter", "roots"},          {"KurvofcPOntoCurve", "roots"},
    {"KurvocvDistPoint", "roots"},          {"KurvocvPosition", "evaluators"},
    {"KurvocvDeriv", "evaluators"},         {"KurvocvNDeriv", "evaluators"},
    {"KurvocvCurvature", "evaluators"},     {"KurvocvCurveLen", "evaluators"},
    {"KurvocvStartPoint", "evaluators"},    {"KurvocvEndPoint", "evaluators"},
    {"KurvocvDegree", "evaluators"},        {"KurvocvIsLine", "evaluators"},
    {"KurvocvDegenerate", "evaluators"},    {"KurvocvBoundBox", "evaluators"},
    {"KurvocvCvseqBoundBox", "evaluators"}, {"KurvocrCurveCurve", "intersection"},
    {"KurvocvConvert", "conversion"},       {"KurvocvDivide", "conversion"},
    {"KurvocvNDivide", "conversion"},       {"KurvocvBsplRemoveKnots", "conversion"},
    {"KurvocvChgOrder", "conversion"},      {"KurvocvMatch", "conversion"},
    {"KurvocvExtendCurve", "extension"},    {"KurvocvOffsetCurve", "offset"},
    {"KurvosfPntBoundForPlane", "region"},  {"KurvocvCvseqNormal", "region"},
    {"KurvocvCvseqToSegcv", "region"},      {"KurvocvGenBspl", "generation"},
    {"KurvocvDistCurve", "generation"},
};

// Records, transforms and the planar calculus are the group of all others.
constexpr std::string_view GroupOf(std::string_view function) {
  for (const Grouped& row : kGrouped)
    if (row.function == function) return row.group;
  return "records";
}

}  // namespace kurvo_test
