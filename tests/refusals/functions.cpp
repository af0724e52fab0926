// Every function that is given a GlobalVar, and what it does when it must not or cannot work.
#include "refusals/functions.h"

namespace kurvo_test {

// clang-format off
const std::vector<Function> kFunctions = {
    //  function, its records, its numbers, works | error pending | null | no data | cannot be right
    {"KurvoInitGlobalVar", Of<KurvoInitGlobalVar>, "", "", "0"}, {"GetEpsilon", Of<GetEpsilon>, "", "", "1e-06"},
    {"GetEpsilon_1", Of<GetEpsilon_1>, "", "", "1e-06"}, {"GetEpsilon2", Of<GetEpsilon2>, "", "", "1e-12"},
    {"GetEpsilon0", Of<GetEpsilon0>, "", "", "1e-06"}, {"KurvoclSetEpsilon", Of<KurvoclSetEpsilon>, "", "1e-3, 1e-3", "g"},
    {"KurvoclSetEpsilon0", Of<KurvoclSetEpsilon0>, "", "1e-3", "g"}, {"KurvoclPushEpsilon", Of<KurvoclPushEpsilon>, "", "1e-3", "g"},
    {"KurvoclPopEpsilon", Of<KurvoclPopEpsilon>, "", "", "1e-06 STACK_EMPTY"}, {"KurvoclPushEpsilon0", Of<KurvoclPushEpsilon0>, "", "1e-3", "g"},
    {"KurvoclPopEpsilon0", Of<KurvoclPopEpsilon0>, "", "", "1e-06 STACK_EMPTY"}, {"KurvoErrGet", Of<KurvoErrGet>, "", "", "0"},
    {"KurvoErrReset", Of<KurvoErrReset>, "", "", ""}, {"KurvoOk", Of<KurvoOk>, "", "", "1", "0"},
    {"KurvoMalloc", Of<KurvoMalloc>, "", "8", "block"}, {"KurvoRealloc", Of<KurvoRealloc>, "", "null, 8", "block"},

    {"KurvocvCopyCurve", Of<KurvocvCopyCurve>, "l 0 0 4 0", "", "block *", "null 0", "null 0", "null T", "null T CURVE"},
    {"KurvocvCopyCvseq", Of<KurvocvCopyCvseq>, "(l 0 0 4 0)(l 4 0 5 0)", "", "block *", "null 0", "null 0", "block *", "null 0 CURVE"},
    {"KurvocvSegcvToCvseq", Of<KurvocvSegcvToCvseq>, "c 1 (l 0 0 4 0)", "", "*", "=", "0", "0", "0 CURVE"},
    {"KurvocvCvseqInsert", Of<KurvocvCvseqInsert>, "l 0 0 4 0; ()", "0", "*", "=", "= CURVE", "= CURVE", "= CURVE"},
    {"KurvocvCvseqBoundBox", Of<KurvocvCvseqBoundBox>, "(l 0 0 4 0)(l 4 0 5 1)", "", "*", "=", "000000 CURVE", "000000", "000000 CURVE"},

    {"KurvoclCompare", Of<KurvoclCompare>, "", "2, 1", "1"}, {"KurvoclPositive", Of<KurvoclPositive>, "", "2", "1"},
    {"KurvoclNegative", Of<KurvoclNegative>, "", "-2", "1"}, {"KurvoclSame", Of<KurvoclSame>, "", "2, 2", "1"},
    {"KurvoclZero2", Of<KurvoclZero2>, "", "0", "1"}, {"KurvoclZeroVector", Of<KurvoclZeroVector>, "", "0 0 0", "1"},
    {"KurvoclZeroVector2", Of<KurvoclZeroVector2>, "", "0 0 0", "1"}, {"KurvoclSameCoord", Of<KurvoclSameCoord>, "", "1 2 3, 1 2 3", "1"},
    {"KurvoclSameHCoord", Of<KurvoclSameHCoord>, "", "1 2 3 4, 1 2 3 4", "1"}, {"KurvoclUnitVector", Of<KurvoclUnitVector>, "", "3 4 0", "*"},
    {"KurvoclSameVector", Of<KurvoclSameVector>, "", "1 2 3, 1 2 3", "1"},
    {"KurvoclVectorAngle", Of<KurvoclVectorAngle>, "", "1 0 0, -2 0 0", "3.14159"},
    {"KurvoclParaVector", Of<KurvoclParaVector>, "", "1 0 0, -2 0 0", "1"},
    {"KurvoclScalePoint", Of<KurvoclScalePoint>, "", "0 0 0, 0 0 0, 2, 1 1 0", "block *"},
    {"KurvoclMirrorPoint", Of<KurvoclMirrorPoint>, "", "0 0 0, 1 0 0, 1 1 0", "*"},
    {"KurvoclProjLine", Of<KurvoclProjLine>, "", "1 1 0, 0 0 0 4 0 0", "*"}, {"KurvoclOnLine", Of<KurvoclOnLine>, "", "9 0 0, 0 0 0 4 0 0", "1"},
    {"KurvoclOnLineSeg", Of<KurvoclOnLineSeg>, "", "1 0 0, 0 0 0 4 0 0", "1 *"},
    {"KurvoclOnCirc", Of<KurvoclOnCirc>, "a 0 0 1 0 1", "1 0 0", "1", nullptr, "0"},
    {"KurvoclOnArc", Of<KurvoclOnArc>, "a 0 0 1 0 1", "0.8 0.6 0", "1 *", nullptr, "0 0"},
    {"KurvoclIsLine", Of<KurvoclIsLine>, "", "0 0 0, 1 1 0, 2 2 0", "1"},
    {"KurvofcRPPcirc", Of<KurvofcRPPcirc>, "", "5, 0 0 0, 6 0 0, out, 0", "1 *"},
    {"KurvoclBoxPoint", Of<KurvoclBoxPoint>, "", "0 0 0 1 1 0, .5 .5 0", "1"},
    {"KurvoclBoxBox", Of<KurvoclBoxBox>, "", "0 0 0 1 1 0, .5 .5 0 2 2 0", "1"},

    {"KurvocvStartPoint", Of<KurvocvStartPoint>, "l 1 2 4 0", "", "*", nullptr, "= CURVE", "= CURVE", "= CURVE"},
    {"KurvocvEndPoint", Of<KurvocvEndPoint>, "l 0 0 4 1", "", "*", nullptr, "= CURVE", "= CURVE", "= CURVE"},
    {"KurvocvDegree", Of<KurvocvDegree>, "b 0 0 1 2 4 0", "", "2", nullptr, "0 CURVE", "0 CURVE", "0 CURVE"},
    {"KurvocvIsLine", Of<KurvocvIsLine>, "l 0 0 4 0", "", "2", "-1", "-1", "-1", "0 CURVE"},
    {"KurvocvDegenerate", Of<KurvocvDegenerate>, "l 3 3 3 3", "", "1 *", nullptr, "0 000", "0 000", "0 000 CURVE"},
    {"KurvocvBoundBox", Of<KurvocvBoundBox>, "l 1 2 4 0", "", "*", nullptr, "= CURVE", "=", "= CURVE"},
    {"KurvocvPosition", Of<KurvocvPosition>, "l 0 0 4 0", ".5", "*", "000", "000 CURVE", "000 CURVE", "000 CURVE"},
    {"KurvocvParameter", Of<KurvocvParameter>, "l 0 0 4 0", "1 0 0", "2 *", "2 =", "2 = CURVE", "2 = CURVE", "2 = CURVE"},
    {"KurvofcPOntoCurve", Of<KurvofcPOntoCurve>, "l 0 0 4 0", "2 3 4", "*", nullptr, "= CURVE", "= CURVE", "= CURVE"},
    {"KurvocvDistPoint", Of<KurvocvDistPoint>, "l 0 0 4 0", "1 3 0", "3 *", "0 =", "0 = CURVE", "0 = CURVE", "0 = CURVE"},
    {"KurvocvDeriv", Of<KurvocvDeriv>, "l 0 0 4 0", ".5", "*", "=", "000 CURVE", "000 CURVE", "000 CURVE"},
    {"KurvocvNDeriv", Of<KurvocvNDeriv>, "l 0 0 4 0", ".5, out, 1", "*", "000", "000", "000", "000 CURVE"},
    {"KurvocvCurvature", Of<KurvocvCurvature>, "b -1 1 0 -1 1 1", ".5", "*", "=", "=", "=", "000 CURVE"},
    {"KurvocvCurveLen", Of<KurvocvCurveLen>, "l 0 0 4 0", "0, 1", "*", "0", "0 CURVE", "0 CURVE", "0 CURVE"},

    {"KurvocvConvert", Of<KurvocvConvert>, "l 0 0 4 0; out 48", "", "1 *", "refused =", "refused =", "refused =", "0 0"},
    {"KurvocvConvert", Of<KurvocvConvert>, "l 0 0 4 0; out 16", "", "1 *", "refused =", "refused =", "refused =", "0 0"},
    {"KurvocvConvert", Of<KurvocvConvert>, "l 0 0 4 0; out 64", "", "1 *", "refused =", "refused =", "refused =", "0 0"},
    {"KurvocvConvert", Of<KurvocvConvert>, "l 0 0 4 0; out 80", "", "1 *", "refused =", "refused =", "refused =", "0 0"},
    {"KurvocvConvert", Of<KurvocvConvert>, "l 0 0 4 0; out 96", "", "1 *", "refused =", "refused =", "refused =", "0 0"},
    {"KurvocvConvert", Of<KurvocvConvert>, "l 0 0 4 0; out 1008", "", "1 *", "refused =", "refused =", "refused =", "0 0"},
    {"KurvocvConvert", Of<KurvocvConvert>, "r 1 0 1 1 1 .70710678118654752 0 1 1; out 32", "", "1 *", "refused =", "refused =", "refused =", "0 0"},
    {"KurvocvChgOrder", Of<KurvocvChgOrder>, "l 0 0 4 0", "", "0 *", "2 =", "2 = CURVE", "2 = CURVE", "2 = CURVE"},
    {"KurvocvDivide", Of<KurvocvDivide>, "l 0 0 4 0", ".5", "**", "00", "00", "00", "00"},
    {"KurvocvNDivide", Of<KurvocvNDivide>, "l 0 0 4 0", ".5", "*", "0", "0", "0", "0 CURVE"},
    {"KurvocvExtendCurve", Of<KurvocvExtendCurve>, "l 0 0 4 0", ".1, .1", "*", "0", "0", "0", "0 CURVE"},
    {"KurvocvBsplRemoveKnots", Of<KurvocvBsplRemoveKnots>, "B 0 0 1 1 2 2 | 0 0 .5 1 1", "", "*", "0", "0", "0", "0 CURVE"},
    {"KurvocvMove", Of<KurvocvMove>, "l 0 0 4 0", "1 1 0", "*", nullptr, "=", "=", "= CURVE"},
    {"KurvocvRotate", Of<KurvocvRotate>, "l 0 0 4 0", "0 0 0, 0 0 1, 1", "*", nullptr, "=", "=", "= CURVE"},
    {"KurvocvMirror", Of<KurvocvMirror>, "l 0 0 4 0", "1 0 0, 1 0 0", "*", nullptr, "=", "=", "= CURVE"},
    {"KurvocvScale", Of<KurvocvScale>, "l 0 0 4 0", "1 0 0, 0 0 0, 2", "*", nullptr, "=", "=", "= CURVE"},
    {"KurvocvMvStartPoint", Of<KurvocvMvStartPoint>, "l 0 0 4 0", "1 1 0", "*", "=", "=", "=", "= CURVE"},
    {"KurvocvMvEndPoint", Of<KurvocvMvEndPoint>, "l 0 0 4 0", "1 1 0", "*", "=", "=", "=", "= CURVE"},
    {"KurvocvGenBspl", Of<KurvocvGenBspl>, "", "0 0 0 1 1 0, 2, 2", "*", "0"},
    {"KurvocvOffsetCurve", Of<KurvocvOffsetCurve>, "l 0 0 4 0", "0 0 1, 1, 1e-3", "*", "0", "0", "0", "0 CURVE"},
    {"KurvocvMatch", Of<KurvocvMatch>, "l 0 0 4 0; l 0 0 4 0", "", "2", "0", "0", "0", "0 CURVE"},
    {"KurvocrCurveCurve", Of<KurvocrCurveCurve>, "l 0 0 1 1; l 0 1 1 0", "out, out, 3", "1 **", "refused 00", "refused 00", "refused 00", "7 00 CURVE"},
    {"KurvocrCurveCurve", Of<KurvocrCurveCurve>, "l 0 0 1 1; a 0 1 1 -1.5707963267948966 1", "out, out, 0", "1 **", "refused 00", "refused 00", "refused 00", "7 00 CURVE"},
    {"KurvocvDistCurve", Of<KurvocvDistCurve>, "l 0 0 4 0; b 1 2 3 2", "", "2 *0", "0 ==", "0 ==", "0 ==", "0 == CURVE"},
    {"KurvocvCvseqToSegcv", Of<KurvocvCvseqToSegcv>, "(l 0 0 4 0)(l 4 0 4 1)", "", "*", "0", "0", "0 CURVE", "0 CURVE"},
    {"KurvocvCvseqNormal", Of<KurvocvCvseqNormal>, "(l 0 0 4 0)(l 4 0 4 1)", "", "**", "000000", "000000 CURVE", "000000 CURVE", "000000 CURVE"},
    {"KurvosfPntBoundForPlane", Of<KurvosfPntBoundForPlane>, "(l 0 0 4 0)(b 4 0 2 4 0 0)", "0 0 1, 2 1 0", "3", "4", "4", "4 CURVE", "4 CURVE"},
    {"KurvocvMallocCurve", OfMallocCurve, "out", "48, 3", "block *", nullptr, "null"},
};

// They have no record to look at or to write to.
const std::vector<std::string> kWithoutRecord = {
    "KurvoErrAction", "KurvoErrGroup", "KurvoErrModule", "KurvoErrSeverity", "KurvoFree",
    "KurvoclCopyVector", "KurvoclDistBoxBox", "KurvoclDistBoxPoint", "KurvoclDistPoint", "KurvoclFabs",
    "KurvoclInnerProduct", "KurvoclNormalizeKnot", "KurvoclOuterProduct", "KurvoclRotatePoint",
    "KurvoclRotateVector", "KurvoclSclVector", "KurvoclSetCoord", "KurvoclSetHCoord", "KurvoclSubVector",
    "KurvoclTransPoint", "KurvoclVectorSize", "KurvocrFreeCvParam", "KurvocrInitCvParam",
    "KurvocrMallocCvParam", "KurvocvFreeCurve", "KurvocvFreeCvseq", "KurvocvInitCurve",
    "KurvocvInitCvseq", "KurvocvMallocCvseq", "KurvofcRotateVector",
};

const std::vector<Code> kCodes = {
    {"MEMORY", KURVO_ERR_MEMORY}, {"CURVE", KURVO_ERR_CURVE}, {"TOLERANCE", KURVO_ERR_TOLERANCE},
    {"STACK_EMPTY", KURVO_ERR_STACK_EMPTY}, {"CHAIN_INDEX", KURVO_ERR_CHAIN_INDEX},
    {"CHAIN_BREAK", KURVO_ERR_CHAIN_BREAK}, {"CHAIN_ENDS", KURVO_ERR_CHAIN_ENDS}, {"RANGE", KURVO_ERR_RANGE}, {"WEIGHT", KURVO_ERR_WEIGHT},
    {"CHAIN_DEGENERATE", KURVO_ERR_CHAIN_DEGENERATE}, {"CHAIN_CONVERT", KURVO_ERR_CHAIN_CONVERT},
    {"NO_ORIENTATION", KURVO_WARN_NO_ORIENTATION}, {"DERIVATIVE_ORDER", KURVO_ERR_DERIVATIVE_ORDER},
    {"SCALE", KURVO_ERR_SCALE}, {"ROTATED_TYPE", KURVO_ERR_ROTATED_TYPE},
    {"FIT_MISSING", KURVO_ERR_FIT_MISSING}, {"FIT_POINTS", KURVO_ERR_FIT_POINTS},
    {"ZERO_WEIGHT", KURVO_ERR_ZERO_WEIGHT}, {"SHORT_TANGENT", KURVO_ERR_SHORT_TANGENT},
    {"SHORT_VECTOR", KURVO_WARN_SHORT_VECTOR}, {"SAME_POINTS", KURVO_ERR_SAME_POINTS}, {"RADIUS_TOO_SMALL", KURVO_ERR_RADIUS_TOO_SMALL},
};
// clang-format on

std::string NameOf(int code) {
  for (const Code& row : kCodes)
    if (row.code == code) return row.name;
  return code == 0 ? "cleared" : "unknown code";
}

}  // namespace kurvo_test
