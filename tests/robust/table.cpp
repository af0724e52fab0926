#include "robust/table.h"

#include <cmath>
#include <cstdlib>

#include "robust/row.h"
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

#define ROW(function, ...) Row(#function, function __VA_OPT__(, ) __VA_ARGS__)
// A function whose calls no signature tells.
#define SPECIAL(function, call)                                              \
  {                                                                          \
#function, call, [](WrittenCall & c) { return Told(c, function); }, true \
  }

// The new array or block, which is that of the record that follows the source.
constexpr auto kNewBlock = [](Call& c, const void* block, const auto*, auto* copy, GlobalVar*) {
  const void* held = nullptr;
  if (copy) std::memcpy(&held, reinterpret_cast<const char*>(copy) + 8, sizeof held);
  c.Expect(block == held, "another block");
};

void JudgeDivide(Call& c, const Curve* curve, double, Curve* first, Curve* second, GlobalVar*) {
  c.Expect(!first->type == !second->type || !KurvoOk(&c.g) || (curve && curve->type == CV_SEGCV),
           "one part alone");
  c.Expect(!first->data == !first->type && !second->data == !second->type, "type without data");
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

void JudgeSense(Call& c, const Cvseq*, double*, double* normal, GlobalVar*) {
  const double size = std::fabs(normal[2]);
  c.Expect(normal[0] == 0 && normal[1] == 0 && (size == 0 || size == 1), "not a normal");
  c.Neutral(size == 0);
}

// ---- calls that no signature tells

void CallRealloc(Call& c) {
  const uint32_t before = c.in().Below(4) ? 1 + c.in().Below(4096) : 0, size = Bytes(c);
  auto* const old = before ? static_cast<unsigned char*>(std::malloc(before)) : nullptr;
  for (uint32_t i = 0; i < before; ++i) old[i] = static_cast<unsigned char>(i);
  void* const block = c.Run([&] { return KurvoRealloc(old, size, &c.g); });
  const bool failed = size > 0 && !block;
  c.Expect(c.OutOfMemory() == (failed || (old && size == 0)), "block and error disagree");
  const auto* const kept = static_cast<unsigned char*>(failed ? old : block);
  for (uint32_t i = 0; kept && i < before && (failed || i < size); ++i)
    c.Expect(kept[i] == static_cast<unsigned char>(i), "content lost");
  std::free(failed ? old : block);
}

void CallMallocCurve(Call& c) {
  Curve curve = {-1, nullptr, 0, 0, 0};
  const int32_t type = c.in().OneIn(4) ? c.in().Pick({0, 17, -1}) : c.in().Pick(kAllTypes);
  const int32_t first = Items(c), second = Items(c);
  Curve* const header = c.hostile() && c.in().OneIn(50) ? nullptr : &curve;
  void* const data = c.Run([&] { return KurvocvMallocCurve(header, type, first, second); });
  c.Expect(header || !data, "a block without a header");
  if (!header || curve.type == -1) return c.Expect(!data, "a block without a type");
  c.Expect(data == curve.data && (data ? curve.type == type : curve.type == 0), "another block");
  c.Add(double{1. * curve.type});
  const bool pieces = data && type == CV_SEGCV;
  for (int32_t i = 0; pieces && i < first; ++i)
    c.Expect(!static_cast<KurvoSegcv*>(data)->curves[i].data, "a piece that is not empty");
  KurvocvFreeCurve(&curve);
}

void CallCvseqInsert(Call& c) {
  Cvseq seq = c.own().Sequence();
  const Cvseq before = seq;
  const bool known = seq.curves && seq.count > 0;
  const int32_t count = known ? seq.count : 0;
  const int32_t index = c.hostile() && c.in().OneIn(8) ? c.in().Pick({-1, INT32_MIN, INT32_MAX, 6})
                                                       : c.in().Between(0, count);
  const Curve* curve = c.AnyCurve();
  if (known && c.in().Below(2)) curve = &seq.curves[index == 0 ? 0 : count - 1];
  // A line from the end that it meets.
  KurvoLine line{};
  const Curve fitting = {CV_LINE, &line, 0, 0, 0};
  if (known && c.in().Below(2)) {
    Globals g;
    KurvocvEndPoint(&seq.curves[std::clamp(index, 1, count) - 1], line.start, &g);
    KurvocvStartPoint(&seq.curves[std::clamp(index, 0, count - 1)], line.end, &g);
    curve = &fitting;
  }
  c.Run([&] { KurvocvCvseqInsert(curve, &seq, index, &c.g); });
  if (seq.count == before.count + 1) {
    c.Read(seq.curves[index], true);
    return Settle(c.own_store(), seq, before);
  }
  c.Expect(seq.count == before.count && seq.curves == before.curves, "changed although it failed");
  c.Unchanged();
}

void CallConvert(Call& c) {
  const Curve* const source = c.AnyCurve();
  Curve target{};
  target.type = c.hostile() && c.in().OneIn(16) ? c.in().Pick({0, -1, 17}) : c.in().Pick(kAllTypes);
  const int32_t wanted = target.type;
  Curve* const to = c.hostile() && c.in().OneIn(64) ? nullptr : &target;
  const uint32_t result = c.Run([&] { return KurvocvConvert(source, to, &c.g); });
  c.Code(result, {KURVO_CONVERTED, KURVO_NOT_CONVERTED, KURVO_REFUSED});
  if (result == KURVO_REFUSED || !to)
    return c.Expect(target.type == wanted && !target.data, "refused, but changed");
  c.Expect(result == KURVO_CONVERTED ? target.type == wanted : target.type == 0, "another type");
  c.Expect(!target.data == !target.type, "type without data");
  c.Take(target, true);  // pieces without a block are copied as they are
}

// As many sizes as there may be.
std::string TellMallocCurve(WrittenCall& call) {
  Curve* const cv = call.Take<Curve*>();
  const int type = call.Take<int>(), size = call.Take<int>(), count = call.Take<int>();
  return call.Outcome(Shown(KurvocvMallocCurve(cv, type, size, count), false));
}

// clang-format off
std::vector<Entry> Rows() {
  return {
      // ---- state
      {ROW(KurvoInitGlobalVar, Codes({0}), State), {"", "", "0"}}, {ROW(GetEpsilon), {"", "", "1e-06"}}, {ROW(GetEpsilon_1), {"", "", "1e-06"}},
      {ROW(GetEpsilon2), {"", "", "1e-12"}}, {ROW(GetEpsilon0), {"", "", "1e-06"}},
      {ROW(KurvoclSetEpsilon, Epsilon, Choice({1e-5}, 2), State), {"", "1e-3, 1e-3", "g"}},
      {ROW(KurvoclSetEpsilon0, Epsilon, State), {"", "1e-3", "g"}}, {ROW(KurvoclPushEpsilon, Epsilon, State), {"", "1e-3", "g"}},
      {ROW(KurvoclPopEpsilon, State), {"", "", "1e-06 STACK_EMPTY"}}, {ROW(KurvoclPushEpsilon0, Epsilon, State), {"", "1e-3", "g"}},
      {ROW(KurvoclPopEpsilon0, State), {"", "", "1e-06 STACK_EMPTY"}},
      {ROW(KurvoErrGet, Gives{[](Call& c, int code, auto) { c.Expect(code == c.g.error, "another code"); }}), {"", "", "0"}},
      {ROW(KurvoErrReset, Gives{[](Call& c, auto) { c.Expect(c.g.error == 0, "not cleared"); }}), {"", "", ""}}, {ROW(KurvoOk), {"", "", "1", "0"}},
      {ROW(KurvoErrSeverity, Within(0, 3), ErrorCode)}, {ROW(KurvoErrModule, Within(0, 255), ErrorCode)},
      {ROW(KurvoErrGroup, Within(0, 4095), ErrorCode)}, {ROW(KurvoErrAction, Within(0, 15), ErrorCode)},
      {ROW(KurvoMalloc, Gives{[](Call& c, void* block, uint32_t size, auto) {
          c.Expect(!block == (size == 0 || c.OutOfMemory()), "block and error disagree"), std::free(block); }}, Bytes), {"", "8", "block"}, kAsks}, {SPECIAL(KurvoRealloc, CallRealloc), {"", "null, 8", "block"}, kAsks},
      {ROW(KurvoFree, Block)},

      // ---- records
      {ROW(KurvocvInitCurve, OrNull(Fresh<Curve>))},
      {{"KurvocvMallocCurve", CallMallocCurve, TellMallocCurve}, {"out", "48, 3", "block *", nullptr, "null"}, kAsks | kSilent},
      {ROW(KurvocvFreeCurve, Gives{[](Call& c, Curve* curve) { c.Expect(!curve || (curve->type == 0 && !curve->data && curve->attr == 5), "not empty"); }}, OrNull(OwnedCurve))},
      {ROW(KurvocvCopyCurve, Gives{kNewBlock}, _, OrNull(Bare<Curve>)), {"l 0 0 4 0", "", "block *", "null 0", "null 0", "null T", "null T CURVE"}},
      {ROW(KurvocvInitCvseq, OrNull(Fresh<Cvseq>))},
      {ROW(KurvocvMallocCvseq, Gives{[](Call& c, Curve* curves, Cvseq* seq, int32_t count) { c.Expect(curves == seq->curves && seq->count == (curves ? count : 0), "another array"); }}, _, Items), {}, kAsks | kSilent},
      {ROW(KurvocvFreeCvseq, Gives{[](Call& c, Cvseq* seq) { c.Expect(!seq || (!seq->curves && seq->count <= 0), "not emptied"); }}, OrNull(OwnedSequence))},
      {ROW(KurvocvCopyCvseq, Gives{kNewBlock}, _, OrNull(Bare<Cvseq>)), {"(l 0 0 4 0)(l 4 0 5 0)", "", "block *", "null 0", "null 0", "block *", "null 0 CURVE"}},
      {ROW(KurvocvSegcvToCvseq, CurveOf<CV_SEGCV>, OrNull(Emptied)), {"c 1 (l 0 0 4 0)", "", "*", "=", "0", "0", "0 CURVE"}},
      {SPECIAL(KurvocvCvseqInsert, CallCvseqInsert), {"l 0 0 4 0; ()", "0", "*", "=", "= CURVE", "= CURVE", "= CURVE"}},
      {ROW(KurvocvCvseqBoundBox, _, Out(6)), {"(l 0 0 4 0)(l 4 0 5 1)", "", "*", "=", "000000 CURVE", "000000", "000000 CURVE"}},
      {ROW(KurvocrInitCvParam, OrNull(Fresh<CvParam>))}, {ROW(KurvocrMallocCvParam, OrNull(WantedList)), {}, kAsks | kSilent},
      {ROW(KurvocrFreeCvParam, OrNull(OwnedList))},

      // ---- numbers and vectors
      {ROW(KurvoclCompare, Codes({-1, 0, 1})), {"", "2, 1", "1"}}, {ROW(KurvoclPositive), {"", "2", "1"}}, {ROW(KurvoclNegative), {"", "-2", "1"}},
      {ROW(KurvoclSame), {"", "2, 2", "1"}}, {ROW(KurvoclZero2), {"", "0", "1"}}, {ROW(KurvoclFabs)}, {ROW(KurvoclCopyVector)},
      {ROW(KurvoclSubVector)}, {ROW(KurvoclSclVector)}, {ROW(KurvoclInnerProduct)}, {ROW(KurvoclOuterProduct)}, {ROW(KurvoclVectorSize)},
      {ROW(KurvoclDistPoint)}, {ROW(KurvoclSetCoord)}, {ROW(KurvoclSetHCoord, Out(4))}, {ROW(KurvoclRotateVector)}, {ROW(KurvofcRotateVector)},
      {ROW(KurvoclZeroVector), {"", "0 0 0", "1"}}, {ROW(KurvoclZeroVector2), {"", "0 0 0", "1"}}, {ROW(KurvoclSameCoord), {"", "1 2 3, 1 2 3", "1"}},
      {ROW(KurvoclSameHCoord, HPoint, HPoint), {"", "1 2 3 4, 1 2 3 4", "1"}}, {ROW(KurvoclUnitVector, Vector), {"", "3 4 0", "*"}},
      {ROW(KurvoclSameVector), {"", "1 2 3, 1 2 3", "1"}}, {ROW(KurvoclVectorAngle), {"", "1 0 0, -2 0 0", "3.14159"}},
      {ROW(KurvoclParaVector), {"", "1 0 0, -2 0 0", "1"}},

      // ---- points, lines, circles and boxes
      {ROW(KurvoclTransPoint, Array<16>)}, {ROW(KurvoclRotatePoint)}, {ROW(KurvoclScalePoint), {"", "0 0 0, 0 0 0, 2, 1 1 0", "block *"}},
      {ROW(KurvoclMirrorPoint), {"", "0 0 0, 1 0 0, 1 1 0", "*"}}, {ROW(KurvoclProjLine, _, OneLine), {"", "1 1 0, 0 0 0 4 0 0", "*"}},
      {ROW(KurvoclOnLine, _, OneLine), {"", "9 0 0, 0 0 0 4 0 0", "1"}}, {ROW(KurvoclOnLineSeg, _, OneLine, Out(1)), {"", "1 0 0, 0 0 0 4 0 0", "1 *"}},
      {ROW(KurvoclOnCirc), {"a 0 0 1 0 1", "1 0 0", "1", nullptr, "0"}},
      {ROW(KurvoclOnArc, _, _, Out(1)), {"a 0 0 1 0 1", "0.8 0.6 0", "1 *", nullptr, "0 0"}}, {ROW(KurvoclIsLine), {"", "0 0 0, 1 1 0, 2 2 0", "1"}},
      {ROW(KurvofcRPPcirc, Gives{[](Call& c, int found, double, const double*, const double*, double* centre, auto...) {
          c.Code(found, {0, 1}), c.Expect(found || centre[0] == Call::kUnwritten, "written although it failed"); }}, Choice({16, 3, .5, 40}, 2), _, _, _, Choice({-1, 0, 1, 2}, {INT32_MIN, INT32_MAX}, 16)), {"", "5, 0 0 0, 6 0 0, out, 0", "1 *"}},
      {ROW(KurvoclBoxPoint, SomeBox), {"", "0 0 0 1 1 0, .5 .5 0", "1"}},
      {ROW(KurvoclBoxBox, SomeBox, SomeBox), {"", "0 0 0 1 1 0, .5 .5 0 2 2 0", "1"}}, {ROW(KurvoclDistBoxPoint, SomeBox)},
      {ROW(KurvoclDistBoxBox, SomeBox, SomeBox)},

      // ---- one curve
      {ROW(KurvocvStartPoint), {"l 1 2 4 0", "", "*", nullptr, "= CURVE", "= CURVE", "= CURVE"}},
      {ROW(KurvocvEndPoint), {"l 0 0 4 1", "", "*", nullptr, "= CURVE", "= CURVE", "= CURVE"}},
      {ROW(KurvocvDegree, Within(0, INT32_MAX)), {"b 0 0 1 2 4 0", "", "2", nullptr, "0 CURVE", "0 CURVE", "0 CURVE"}},
      {ROW(KurvocvIsLine, Codes({-1, 0, 1, 2})), {"l 0 0 4 0", "", "2", "-1", "-1", "-1", "0 CURVE"}},
      {ROW(KurvocvDegenerate, Gives{[](Call& c, int is, auto, double* p, auto) {
          c.Code(is, {0, 1}), c.Expect(is || std::count(p, p + 3, 0.) == 3, "point of a curve that is none"); }}), {"l 3 3 3 3", "", "1 *", nullptr, "0 000", "0 000", "0 000 CURVE"}},
      {ROW(KurvocvBoundBox, _, Out(6)), {"l 1 2 4 0", "", "*", nullptr, "= CURVE", "=", "= CURVE"}},
      {ROW(KurvocvPosition, _, Parameter, ZeroedOut), {"l 0 0 4 0", ".5", "*", "000", "000 CURVE", "000 CURVE", "000 CURVE"}},
      {ROW(KurvocvParameter, Codes({KURVO_ON_CURVE, KURVO_OFF_CURVE}), _, Near<false>, Out(1)), {"l 0 0 4 0", "1 0 0", "2 *", "2 =", "2 = CURVE", "2 = CURVE", "2 = CURVE"}, kHeavy},
      {ROW(KurvofcPOntoCurve, _, Near<true>), {"l 0 0 4 0", "2 3 4", "*", nullptr, "= CURVE", "= CURVE", "= CURVE"}, kHeavy},
      {ROW(KurvocvDistPoint, _, Near<false>, Out(1)), {"l 0 0 4 0", "1 3 0", "3 *", "0 =", "0 = CURVE", "0 = CURVE", "0 = CURVE"}, kHeavy},
      {ROW(KurvocvDeriv, _, Parameter, ZeroedOut), {"l 0 0 4 0", ".5", "*", "=", "000 CURVE", "000 CURVE", "000 CURVE"}},
      {ROW(KurvocvNDeriv, _, Parameter, ZeroedOut, Choice({1, 2, 3, 4}, {0, -1, INT32_MIN, INT32_MAX, 39, 40, 41, 1000, 1001}, 4)), {"l 0 0 4 0", ".5, out, 1", "*", "000", "000", "000", "000 CURVE"}},
      {ROW(KurvocvCurvature, _, Parameter, ZeroedOut), {"b -1 1 0 -1 1 1", ".5", "*", "=", "=", "=", "000 CURVE"}},
      {ROW(KurvocvCurveLen, Gives{[](Call& c, const Curve*, double, double, double* length, auto) {
          c.Neutral(*length == 0), c.Expect(*length != Call::kUnwritten, "length not written"); }}, _, Parameter, Parameter, Out(1)), {"l 0 0 4 0", "0, 1", "*", "0", "0 CURVE", "0 CURVE", "0 CURVE"}, kHeavy},

      // ---- new curves, and curves changed in place
      {SPECIAL(KurvocvConvert, CallConvert), {"l 0 0 4 0; out 48 / l 0 0 4 0; out 16 / l 0 0 4 0; out 64 / l 0 0 4 0; out 80 / l 0 0 4 0; out 96 / l 0 0 4 0; out 1008 / r 1 0 1 1 1 .70710678118654752 0 1 1; out 32", "", "1 *", "refused =", "refused =", "refused =", "0 0"}},
      {ROW(KurvocvChgOrder, Gives{[](Call& c, int64_t severity, auto...) { c.Expect(severity == 0 || !KurvoOk(&c.g), "severity without an error"); }}, Changed<true>), {"l 0 0 4 0", "", "0 *", "2 =", "2 = CURVE", "2 = CURVE", "2 = CURVE"}},
      {ROW(KurvoclNormalizeKnot, KnotArray, Count, Choice({1, 2, 3, 4, 5, 6}, {0, -1}, 4))},
      {ROW(KurvocvDivide, Gives{JudgeDivide}, _, Parameter, Bare<Curve>, Bare<Curve>), {"l 0 0 4 0", ".5", "**", "00", "00", "00", "00"}},
      {ROW(KurvocvNDivide, Gives{[](Call& c, const Curve*, const CvParam* list, Cvseq* all, auto) {
          c.Expect(all->count == 0 || !list || all->count == std::max(list->count, 0) + 1, "number of pieces"); }}, _, _, Bare<Cvseq>), {"l 0 0 4 0", ".5", "*", "0", "0", "0", "0 CURVE"}},
      {ROW(KurvocvExtendCurve, _, Choice({0, .1, -.1, .25, -.25, 1, 1e-7, -.5}, 3), Choice({0, .1, -.1, .25, -.25, 1, 1e-7, -.5}, 3), Bare<Curve>), {"l 0 0 4 0", ".1, .1", "*", "0", "0", "0", "0 CURVE"}},
      {ROW(KurvocvBsplRemoveKnots, CurveOf<CV_BSPLINE>), {"B 0 0 1 1 2 2 | 0 0 .5 1 1", "", "*", "0", "0", "0", "0 CURVE"}},
      {ROW(KurvocvMove, Changed<false>), {"l 0 0 4 0", "1 1 0", "*", nullptr, "=", "=", "= CURVE"}},
      {ROW(KurvocvRotate, Changed<false>, _, Normal), {"l 0 0 4 0", "0 0 0, 0 0 1, 1", "*", nullptr, "=", "=", "= CURVE"}},
      {ROW(KurvocvMirror, Changed<false>), {"l 0 0 4 0", "1 0 0, 1 0 0", "*", nullptr, "=", "=", "= CURVE"}},
      {ROW(KurvocvScale, Changed<false>, _, Direction, Choice({.5, 2, 3, 1}, 1)), {"l 0 0 4 0", "1 0 0, 0 0 0, 2", "*", nullptr, "=", "=", "= CURVE"}},
      {ROW(KurvocvMvStartPoint, Changed<false>), {"l 0 0 4 0", "1 1 0", "*", "=", "=", "=", "= CURVE"}},
      {ROW(KurvocvMvEndPoint, Changed<false>), {"l 0 0 4 0", "1 1 0", "*", "=", "=", "=", "= CURVE"}},
      {ROW(KurvocvGenBspl, Points, Count, Order), {"", "0 0 0 1 1 0, 2, 2", "*", "0"}},
      {ROW(KurvocvOffsetCurve, _, Normal, Choice({.5, -.5, 2, .01}, 1), Choice({.01, 1e-3}, 2)), {"l 0 0 4 0", "0 0 1, 1, 1e-3", "*", "0", "0", "0", "0 CURVE"}, kHeavy},

      // ---- several curves
      {ROW(KurvocvMatch, Gives{[](Call& c, uint32_t result, auto...) {
          c.Code(result, {KURVO_MATCH_NONE, KURVO_MATCH_CONVERTED, KURVO_MATCH_SAME}), c.Neutral(result == KURVO_MATCH_NONE); }}), {"l 0 0 4 0; l 0 0 4 0", "", "2", "0", "0", "0", "0 CURVE"}},
      {ROW(KurvocrCurveCurve, Gives{JudgeCrossings}, _, _, OrNull(Fresh<CvParam>), OrNull(Fresh<CvParam>), Choice({0, 1, 2, 3}, {-1, 4, INT32_MIN, 7}, 8)), {"l 0 0 1 1; l 0 1 1 0 / l 0 0 1 1; a 0 1 1 -1.5707963267948966 1", "out, out, 3 / out, out, 0", "1 **", "refused 00", "refused 00", "refused 00", "7 00 CURVE"}, kHeavy},
      {ROW(KurvocvDistCurve, Gives{[](Call& c, double distance, auto...) {
          c.Expect(!(distance < 0), "negative distance"), c.Neutral(distance == 0), c.Add(distance); }}, _, _, OrNull(Out(1)), OrNull(Out(1))), {"l 0 0 4 0; b 1 2 3 2", "", "2 *0", "0 ==", "0 ==", "0 ==", "0 == CURVE"}, kHeavy},
      {ROW(KurvocvCvseqToSegcv, _, Bare<Curve>), {"(l 0 0 4 0)(l 4 0 4 1)", "", "*", "0", "0", "0 CURVE", "0 CURVE"}},
      {ROW(KurvocvCvseqNormal, Gives{JudgeSense}), {"(l 0 0 4 0)(l 4 0 4 1)", "", "**", "000000", "000000 CURVE", "000000 CURVE", "000000 CURVE"}},
      {ROW(KurvosfPntBoundForPlane, Gives{[](Call& c, const double*, const Cvseq*, const double*, uint32_t* region, auto) {
          c.Code(*region, {KURVO_REGION_ON, KURVO_REGION_INSIDE, KURVO_REGION_OUTSIDE}), c.Neutral(*region == KURVO_REGION_OUTSIDE); }}, Normal, _, _, Word), {"(l 0 0 4 0)(b 4 0 2 4 0 0)", "0 0 1, 2 1 0", "3", "4", "4", "4 CURVE", "4 CURVE"}}};
}
// clang-format on

}  // namespace

const std::vector<Entry>& Table() {
  static const std::vector<Entry> kTable = Rows();
  return kTable;
}

}  // namespace kurvo_test
