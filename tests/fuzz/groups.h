// Which fuzz target calls a function.
#pragma once

#include <span>
#include <string_view>

#include "robust/records.h"

namespace kurvo_test {

// The curves and chains that the first of the bytes stand for, which are taken away; null when they
// stand for none. Of the second library alone.
const Gallery* TakeGiven(std::span<const uint8_t>& bytes);

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

// Records, transforms and the planar calculus are the group of all others; the second library is
// one group.
constexpr std::string_view GroupOf(std::string_view function) {
  for (const std::string_view start : {"KurvoOutline", "KurvoRegion", "KurvoChain"})
    if (function.starts_with(start)) return "outline";
  for (const Grouped& row : kGrouped)
    if (row.function == function) return row.group;
  return "records";
}

}  // namespace kurvo_test
