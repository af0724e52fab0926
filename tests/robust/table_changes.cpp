// Calls of the functions that change a curve in place.
#include "robust/table.h"

namespace kurvo_test {
namespace {

// `whole` says that a failure leaves every piece as it was.
template <class Body>
void InPlace(Call& c, bool whole, Body&& body) {
  Curve* const curve = c.OwnCurve();
  const Curve before = curve ? *curve : Curve{};
  const double* const p = c.Point();
  const double* const q = c.Point();
  c.Run([&] { body(curve, p, q); });
  if (curve) c.Expect(curve->data == before.data && curve->type == before.type, "another block");
  if (c.OutOfMemory() || (whole && !KurvoOk(&c.g))) c.Unchanged();
  c.AddOwn();
}

const Entry kEntries[] = {
    {"KurvocvChgOrder",
     [](Call& c) {
       InPlace(c, true, [&](Curve* cv, const double*, const double*) {
         c.Expect(KurvocvChgOrder(cv, &c.g) == 0 || !KurvoOk(&c.g), "severity without an error");
       });
     }},
    {"KurvoclNormalizeKnot",
     [](Call& c) {
       const int count = c.in().Between(0, 16), order = c.in().Between(c.hostile() ? -1 : 1, 6);
       double* const knots = c.OwnNumbers(count);
       for (int i = 0; i < count; ++i) knots[i] = c.hostile() ? c.Number() : i * c.in().Fraction();
       const int said = c.hostile() && c.in().OneIn(8) ? c.in().Pick({0, -1, INT32_MIN}) : count;
       c.Run([&] { KurvoclNormalizeKnot(knots, said, order); });
       c.AddOwn();
     }},
    {"KurvocvMove",
     [](Call& c) {
       InPlace(c, false,
               [&](Curve* cv, const double* p, const double*) { KurvocvMove(cv, p, &c.g); });
     }},
    {"KurvocvRotate",
     [](Call& c) {
       const double angle = c.Number();
       InPlace(c, false, [&](Curve* cv, const double* p, const double* q) {
         constexpr Coord kUp = {0, 0, 1};
         KurvocvRotate(cv, p, c.hostile() ? q : kUp, angle, &c.g);
       });
     }},
    {"KurvocvMirror",
     [](Call& c) {
       InPlace(c, false,
               [&](Curve* cv, const double* p, const double* q) { KurvocvMirror(cv, p, q, &c.g); });
     }},
    {"KurvocvScale",
     [](Call& c) {
       const double s = c.hostile() ? c.Number() : c.in().Pick({.5, 2., 3., 1.});
       InPlace(c, false, [&](Curve* cv, const double* p, const double* q) {
         constexpr Coord kUniform = {0, 0, 0};
         KurvocvScale(cv, p, s < 2 ? q : kUniform, s, &c.g);
       });
     }},
    {"KurvocvMvStartPoint",
     [](Call& c) {
       InPlace(c, false, [&](Curve* cv, const double* p, const double*) {
         KurvocvMvStartPoint(cv, p, &c.g);
       });
     }},
    {"KurvocvMvEndPoint",
     [](Call& c) {
       InPlace(c, false,
               [&](Curve* cv, const double* p, const double*) { KurvocvMvEndPoint(cv, p, &c.g); });
     }},
};

}  // namespace

std::span<const Entry> ChangeEntries() { return kEntries; }

}  // namespace kurvo_test
