// Calls of the functions that make new curves.
#include "robust/table.h"

namespace kurvo_test {
namespace {

// Anything that a header may hold before it becomes a result.
Curve Stale() { return {-1, nullptr, 9, 9, 9}; }

void Convert(Call& c) {
  const Curve* const source = c.AnyCurve();
  Curve target{};
  target.type = c.hostile() && c.in().OneIn(16)
                    ? c.in().Pick({0, -1, 17})
                    : c.in().Pick({int{CV_LINE}, int{CV_ARC}, int{CV_BEZIER}, int{CV_RBEZIER},
                                   int{CV_BSPLINE}, int{CV_RBSPLINE}, int{CV_SEGCV}});
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

// One time in two a cut within the domain of the curve.
void Divide(Call& c) {
  const Curve* const curve = c.AnyCurve();
  const double t = c.Parameter();
  Curve first = Stale(), second = Stale();
  c.Run([&] { KurvocvDivide(curve, t, &first, &second, &c.g); });
  c.Expect((first.type == 0) == (second.type == 0) || !KurvoOk(&c.g) ||
               (curve && curve->type == CV_SEGCV),
           "one part alone");
  c.Expect(!first.data == !first.type && !second.data == !second.type, "type without data");
  c.Take(first, true);  // pieces without a block are copied as they are
  c.Take(second, true);
}

void NDivide(Call& c) {
  const Curve* const curve = c.AnyCurve();
  const CvParam* const list = c.AnyList();
  Cvseq pieces = {9, nullptr};
  c.Run([&] { KurvocvNDivide(curve, list, &pieces, &c.g); });
  c.Expect(pieces.count == 0 || !list || pieces.count == (list->count > 0 ? list->count : 0) + 1,
           "number of pieces");
  c.Take(pieces, true);
}

double Amount(Call& c) {
  if (c.hostile() && c.in().OneIn(3)) return c.Number();
  return c.in().Pick({0., .1, -.1, .25, -.25, 1., 1e-7, -.5});
}

void ExtendCurve(Call& c) {
  const Curve* const curve = c.AnyCurve();
  const double a = Amount(c), b = Amount(c);
  Curve result = Stale();
  c.Run([&] { KurvocvExtendCurve(curve, a, b, &result, &c.g); });
  c.Take(result, true);
}

void BsplRemoveKnots(Call& c) {
  const Curve* const curve = c.AnyCurve(kSplines);
  Curve result = Stale();
  c.Run([&] { KurvocvBsplRemoveKnots(curve, &result, &c.g); });
  c.Take(result);
}

void OffsetCurve(Call& c) {
  const Curve* const curve = c.AnyCurve();
  double* const normal = c.OwnNumbers(3);
  normal[2] = c.in().Pick({1., -1., 2.});
  if (c.hostile() && c.in().OneIn(4)) normal[c.in().Below(3)] = c.Number();
  const double distance = c.hostile() ? c.Number() : c.in().Pick({.5, -.5, 2., .01});
  const double tolerance = c.hostile() && c.in().OneIn(2) ? c.Number() : c.in().Pick({.01, 1e-3});
  Cvseq result = {9, nullptr};
  c.Run([&] { KurvocvOffsetCurve(curve, normal, distance, tolerance, &result, &c.g); });
  c.Take(result);
}

// Points that may coincide when hostile.
void GenBspl(Call& c) {
  const int count = c.hostile() && c.in().OneIn(50) ? 4000 : c.in().Between(2, 12);
  const double* const points = c.hostile() && c.in().OneIn(50) ? nullptr : c.Array(3 * count);
  const int said = c.hostile() && c.in().OneIn(8) ? c.in().Pick({0, -1, INT32_MIN, 1}) : count;
  const int order = c.hostile() && c.in().OneIn(4)
                        ? c.in().Pick({0, 1, 2, 15, 16, 24, 40, 41, 64, count, -1, INT32_MAX})
                        : c.in().Between(2, count < 5 ? count : 5);
  Curve result = Stale();
  c.Run([&] { KurvocvGenBspl(points, said, order, &result, &c.g); });
  c.Take(result);
}

const Entry kEntries[] = {
    {"KurvocvConvert", Convert},
    {"KurvocvDivide", Divide},
    {"KurvocvNDivide", NDivide},
    {"KurvocvExtendCurve", ExtendCurve},
    {"KurvocvBsplRemoveKnots", BsplRemoveKnots},
    {"KurvocvOffsetCurve", OffsetCurve, kHeavy},
    {"KurvocvGenBspl", GenBspl},
};

}  // namespace

std::span<const Entry> BuildEntries() { return kEntries; }

}  // namespace kurvo_test
