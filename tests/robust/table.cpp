#include "robust/table.h"

#include <cmath>
#include <cstdlib>
#include <ostream>

#include "robust/row.h"

namespace kurvo_test {
namespace {

#define ROW(function, ...) Row(#function, function __VA_OPT__(, ) __VA_ARGS__)

// The new array or block, which is that of the record that follows the source.
constexpr auto kNewBlock = [](Call& c, const void* block, const auto*, auto* copy, GlobalVar*) {
  const void* held = nullptr;
  if constexpr (requires { copy->data; })
    held = copy ? copy->data : nullptr;
  else
    held = copy ? copy->curves : nullptr;
  c.Expect(block == held, "another block");
};

void JudgeMalloc(Call& c, void* block, uint32_t size, GlobalVar*) {
  c.Expect(!block == (size == 0 || c.OutOfMemory()), "block and error disagree");
  std::free(block);
}

void JudgeCircle(Call& c, int found, double, const double*, const double*, double* centre, int,
                 GlobalVar*) {
  c.Code(found, {0, 1});
  c.Expect(found || centre[0] == Call::kUnwritten, "written although it failed");
}

void JudgeDegenerate(Call& c, int is, const Curve*, double* p, GlobalVar*) {
  c.Code(is, {0, 1});
  c.Expect(is || (p[0] == 0 && p[1] == 0 && p[2] == 0), "point of a curve that is none");
}

void JudgeLength(Call& c, const Curve*, double, double, double* length, GlobalVar*) {
  c.Neutral(*length == 0);
  c.Expect(*length != Call::kUnwritten, "length not written");
}

void JudgeDivide(Call& c, const Curve* curve, double, Curve* first, Curve* second, GlobalVar*) {
  c.Expect(!first->type == !second->type || !KurvoOk(&c.g) || (curve && curve->type == CV_SEGCV),
           "one part alone");
  c.Expect(!first->data == !first->type && !second->data == !second->type, "type without data");
}

void JudgeNDivide(Call& c, const Curve*, const CvParam* list, Cvseq* pieces, GlobalVar*) {
  c.Expect(pieces->count == 0 || !list || pieces->count == std::max(list->count, 0) + 1,
           "number of pieces");
}

void JudgeMatch(Call& c, uint32_t result, const Curve*, const Curve*, GlobalVar*) {
  c.Code(result, {KURVO_MATCH_NONE, KURVO_MATCH_CONVERTED, KURVO_MATCH_SAME});
  c.Neutral(result == KURVO_MATCH_NONE);
}

void JudgeCrossings(Call& c, uint32_t result, const Curve*, const Curve*, CvParam* a, CvParam* b,
                    int32_t, GlobalVar*) {
  c.Code(result, {KURVO_FOUND, KURVO_OVERLAP, KURVO_NOTHING, KURVO_REFUSED});
  c.Expect(!a || !b || a->count == b->count, "lists of different lengths");
  for (const CvParam* const list : {a, b}) {
    c.Expect(!list || (result == KURVO_FOUND) == (list->count > 0), "result and lists disagree");
    for (int32_t i = 0; list && i < list->count; ++i)
      c.Expect(std::isfinite(list->values[i]), "a parameter that is not finite");
  }
}

void JudgeDistance(Call& c, double distance, const Curve*, const Curve*, double*, double*,
                   GlobalVar*) {
  c.Expect(!(distance < 0), "negative distance");
  c.Neutral(distance == 0);
  c.Add(distance);
}

void JudgeSense(Call& c, const Cvseq*, double*, double* normal, GlobalVar*) {
  const double size = std::fabs(normal[2]);
  c.Expect(normal[0] == 0 && normal[1] == 0 && (size == 0 || size == 1), "not a normal");
  c.Neutral(size == 0);
}

void JudgeRegion(Call& c, const double*, const Cvseq*, const double*, uint32_t* region,
                 GlobalVar*) {
  c.Code(*region, {KURVO_REGION_ON, KURVO_REGION_INSIDE, KURVO_REGION_OUTSIDE});
  c.Neutral(*region == KURVO_REGION_OUTSIDE);
}

// clang-format off
std::vector<Entry> Rows() {
  return {
      // ---- state
      ROW(KurvoInitGlobalVar, Codes({0}), State),
      ROW(GetEpsilon), ROW(GetEpsilon_1), ROW(GetEpsilon2), ROW(GetEpsilon0),
      ROW(KurvoclSetEpsilon, Epsilon, Choice({1e-5}, 2), State),
      ROW(KurvoclSetEpsilon0, Epsilon, State), ROW(KurvoclPushEpsilon, Epsilon, State), ROW(KurvoclPopEpsilon, State),
      ROW(KurvoclPushEpsilon0, Epsilon, State), ROW(KurvoclPopEpsilon0, State),
      ROW(KurvoErrGet, Gives{[](Call& c, int code, auto) { c.Expect(code == c.g.error, "another code"); }}),
      ROW(KurvoErrReset, Gives{[](Call& c, auto) { c.Expect(c.g.error == 0, "not cleared"); }}),
      ROW(KurvoOk), ROW(KurvoErrSeverity, Within(0, 3), ErrorCode), ROW(KurvoErrModule, Within(0, 255), ErrorCode),
      ROW(KurvoErrGroup, Within(0, 4095), ErrorCode), ROW(KurvoErrAction, Within(0, 15), ErrorCode),
      With(kAsks, ROW(KurvoMalloc, Gives{JudgeMalloc}, Bytes)),
      {"KurvoRealloc", CallRealloc, kAsks},
      ROW(KurvoFree, Block),

      // ---- records
      ROW(KurvocvInitCurve, OrNull(Fresh<Curve>)),
      {"KurvocvMallocCurve", CallMallocCurve, kAsks | kSilent},
      ROW(KurvocvFreeCurve, Gives{[](Call& c, Curve* curve) {
        c.Expect(!curve || (curve->type == 0 && !curve->data && curve->attr == 5), "not empty"); }}, OrNull(OwnedCurve)),
      ROW(KurvocvCopyCurve, Gives{kNewBlock}, _, OrNull(Bare<Curve>)),
      ROW(KurvocvInitCvseq, OrNull(Fresh<Cvseq>)),
      With(kAsks | kSilent, ROW(KurvocvMallocCvseq, Gives{[](Call& c, Curve* curves, Cvseq* seq, int32_t count) {
        c.Expect(curves == seq->curves && (!curves || seq->count == count), "another array"); }}, _, Items)),
      ROW(KurvocvFreeCvseq, Gives{[](Call& c, Cvseq* seq) {
        c.Expect(!seq || (!seq->curves && seq->count <= 0), "not emptied"); }}, OrNull(OwnedSequence)),
      ROW(KurvocvCopyCvseq, Gives{kNewBlock}, _, OrNull(Bare<Cvseq>)),
      ROW(KurvocvSegcvToCvseq, Composite, OrNull(Emptied)),
      {"KurvocvCvseqInsert", CallCvseqInsert},
      ROW(KurvocvCvseqBoundBox, _, Out(6)), ROW(KurvocrInitCvParam, OrNull(Fresh<CvParam>)),
      With(kAsks | kSilent, ROW(KurvocrMallocCvParam, OrNull(WantedList))),
      ROW(KurvocrFreeCvParam, OrNull(OwnedList)),

      // ---- numbers and vectors
      ROW(KurvoclCompare, Codes({-1, 0, 1})),
      ROW(KurvoclPositive), ROW(KurvoclNegative), ROW(KurvoclSame), ROW(KurvoclZero2), ROW(KurvoclFabs),
      ROW(KurvoclCopyVector), ROW(KurvoclSubVector), ROW(KurvoclSclVector), ROW(KurvoclInnerProduct),
      ROW(KurvoclOuterProduct), ROW(KurvoclVectorSize), ROW(KurvoclDistPoint), ROW(KurvoclSetCoord),
      ROW(KurvoclSetHCoord, Out(4)), ROW(KurvoclRotateVector), ROW(KurvofcRotateVector), ROW(KurvoclZeroVector),
      ROW(KurvoclZeroVector2), ROW(KurvoclSameCoord), ROW(KurvoclSameHCoord, HPoint, HPoint),
      ROW(KurvoclUnitVector, Vector), ROW(KurvoclSameVector), ROW(KurvoclVectorAngle), ROW(KurvoclParaVector),

      // ---- points, lines, circles and boxes
      ROW(KurvoclTransPoint, Matrix), ROW(KurvoclRotatePoint), ROW(KurvoclScalePoint), ROW(KurvoclMirrorPoint),
      ROW(KurvoclProjLine, _, Line), ROW(KurvoclOnLine, _, Line), ROW(KurvoclOnLineSeg, _, Line, Out(1)),
      ROW(KurvoclOnCirc), ROW(KurvoclOnArc, _, _, Out(1)), ROW(KurvoclIsLine),
      ROW(KurvofcRPPcirc, Gives{JudgeCircle}, Radius, _, _, _, Choice({-1, 0, 1, 2}, {INT32_MIN, INT32_MAX}, 16)),
      ROW(KurvoclBoxPoint, SomeBox), ROW(KurvoclBoxBox, SomeBox, SomeBox), ROW(KurvoclDistBoxPoint, SomeBox),
      ROW(KurvoclDistBoxBox, SomeBox, SomeBox),

      // ---- one curve
      ROW(KurvocvStartPoint), ROW(KurvocvEndPoint), ROW(KurvocvDegree, Within(0, INT32_MAX)),
      ROW(KurvocvIsLine, Codes({-1, 0, 1, 2})),
      ROW(KurvocvDegenerate, Gives{JudgeDegenerate}),
      ROW(KurvocvBoundBox, _, Out(6)), ROW(KurvocvPosition, _, Parameter, ZeroedOut),
      With(kHeavy, ROW(KurvocvParameter, Codes({KURVO_ON_CURVE, KURVO_OFF_CURVE}), _, Near, Out(1))),
      With(kHeavy, ROW(KurvofcPOntoCurve, _, NearInPlace)),
      With(kHeavy, ROW(KurvocvDistPoint, _, Near, Out(1))),
      ROW(KurvocvDeriv, _, Parameter, ZeroedOut),
      ROW(KurvocvNDeriv, _, Parameter, ZeroedOut,
          Choice({1, 2, 3, 4}, {0, -1, INT32_MIN, INT32_MAX, 39, 40, 41, 1000, 1001}, 4)),
      ROW(KurvocvCurvature, _, Parameter, ZeroedOut),
      With(kHeavy, ROW(KurvocvCurveLen, Gives{JudgeLength}, _, Parameter, Parameter, Out(1))),

      // ---- new curves, and curves changed in place
      {"KurvocvConvert", CallConvert},
      ROW(KurvocvChgOrder, Gives{[](Call& c, int64_t severity, auto...) {
        c.Expect(severity == 0 || !KurvoOk(&c.g), "severity without an error"); }}, Whole),
      ROW(KurvoclNormalizeKnot, Knots, Count, Choice({1, 2, 3, 4, 5, 6}, {0, -1}, 4)),
      ROW(KurvocvDivide, Gives{JudgeDivide}, _, Parameter, Bare<Curve>, Bare<Curve>),
      ROW(KurvocvNDivide, Gives{JudgeNDivide}, _, _, Bare<Cvseq>),
      ROW(KurvocvExtendCurve, _, Choice({0, .1, -.1, .25, -.25, 1, 1e-7, -.5}, 3),
          Choice({0, .1, -.1, .25, -.25, 1, 1e-7, -.5}, 3), Bare<Curve>),
      ROW(KurvocvBsplRemoveKnots, Spline), ROW(KurvocvMove, Pieces), ROW(KurvocvRotate, Pieces, _, Axis),
      ROW(KurvocvMirror, Pieces),
      ROW(KurvocvScale, Pieces, _, Direction, Choice({.5, 2, 3, 1}, 1)),
      ROW(KurvocvMvStartPoint, Pieces), ROW(KurvocvMvEndPoint, Pieces), ROW(KurvocvGenBspl, Points, Count, Order),
      With(kHeavy, ROW(KurvocvOffsetCurve, _, Normal, Choice({.5, -.5, 2, .01}, 1), Choice({.01, 1e-3}, 2))),

      // ---- several curves
      ROW(KurvocvMatch, Gives{JudgeMatch}),
      With(kHeavy, ROW(KurvocrCurveCurve, Gives{JudgeCrossings}, _, _, OrNull(Fresh<CvParam>),
          OrNull(Fresh<CvParam>), Choice({0, 1, 2, 3}, {-1, 4, INT32_MIN, 7}, 8))),
      With(kHeavy, ROW(KurvocvDistCurve, Gives{JudgeDistance}, _, _, OrNull(Out(1)), OrNull(Out(1)))),
      ROW(KurvocvCvseqToSegcv, _, Bare<Curve>),
      ROW(KurvocvCvseqNormal, Gives{JudgeSense}),
      ROW(KurvosfPntBoundForPlane, Gives{JudgeRegion}, Up, _, FlatPoint, Word)};
}
// clang-format on

}  // namespace

void PrintTo(const Entry& entry, std::ostream* out) { *out << entry.name; }

const std::vector<Entry>& Table() {
  static const std::vector<Entry> kTable = Rows();
  return kTable;
}

}  // namespace kurvo_test
