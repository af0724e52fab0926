// Calls of the functions that ask one curve.
#include "robust/table.h"

namespace kurvo_test {
namespace {

// A function of a curve that writes `size` numbers.
template <class Body>
void Written(Call& c, int size, Body&& body) {
  const Curve* const curve = c.AnyCurve();
  double* const out = c.Room(size);
  c.Run([&] { body(curve, out); });
  c.Add(out, size);
  // Nothing is half written.
  int untouched = 0;
  for (int i = 0; i < size; ++i) untouched += out[i] == Call::kUnwritten;
  c.Expect(untouched == 0 || untouched == size, "partly written");
}

bool Zero(const double* p) { return p[0] == 0 && p[1] == 0 && p[2] == 0; }

template <class Body>
void AtParameter(Call& c, Body&& body) {
  const Curve* const curve = c.AnyCurve();
  const double t = c.Parameter();
  double* const out = c.Room(3);
  c.Run([&] { body(curve, t, out); });
  c.Neutral(Zero(out));
  c.Add(out, 3);
}

// A point, one in two of them from the curve.
double* PointNear(Call& c, const Curve* curve) {
  double* const p = c.OwnNumbers(3);
  for (int i = 0; i < 2; ++i) p[i] = c.Number();
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  if (c.in().Below(2)) KurvocvStartPoint(curve, p, &g);
  return p;
}

const Entry kEntries[] = {
    {"KurvocvCvseqBoundBox",
     [](Call& c) {
       const Cvseq* const seq = c.AnySequence();
       double* const box = c.Room(6);
       c.Run([&] { KurvocvCvseqBoundBox(seq, box, &c.g); });
       c.Add(box, 6);
     }},
    {"KurvocvStartPoint",
     [](Call& c) {
       Written(c, 3, [&](const Curve* cv, double* out) { KurvocvStartPoint(cv, out, &c.g); });
     }},
    {"KurvocvEndPoint",
     [](Call& c) {
       Written(c, 3, [&](const Curve* cv, double* out) { KurvocvEndPoint(cv, out, &c.g); });
     }},
    {"KurvocvDegree",
     [](Call& c) {
       const Curve* const curve = c.AnyCurve();
       const int degree = c.Run([&] { return KurvocvDegree(curve, &c.g); });
       c.Expect(degree >= 0, "negative degree");
       c.Add(double{1. * degree});
     }},
    {"KurvocvIsLine",
     [](Call& c) {
       const Curve* const curve = c.AnyCurve();
       c.Code(c.Run([&] { return KurvocvIsLine(curve, &c.g); }), {-1, 0, 1, 2});
     }},
    {"KurvocvDegenerate",
     [](Call& c) {
       const Curve* const curve = c.AnyCurve();
       double* const out = c.Room(3);
       const int is = c.Run([&] { return KurvocvDegenerate(curve, out, &c.g); });
       c.Code(is, {0, 1});
       c.Expect(is || Zero(out), "point of a curve that is none");
       c.Add(out, 3);
     }},
    {"KurvocvBoundBox",
     [](Call& c) {
       Written(c, 6, [&](const Curve* cv, double* out) { KurvocvBoundBox(cv, out, &c.g); });
     }},
    {"KurvocvPosition",
     [](Call& c) {
       AtParameter(
           c, [&](const Curve* cv, double t, double* out) { KurvocvPosition(cv, t, out, &c.g); });
     }},
    {"KurvocvParameter",
     [](Call& c) {
       const Curve* const curve = c.AnyCurve();
       const double* const p = PointNear(c, curve);
       double* const t = c.Room(1);
       c.Code(c.Run([&] { return KurvocvParameter(curve, p, t, &c.g); }),
              {KURVO_ON_CURVE, KURVO_OFF_CURVE});
       c.Add(*t);
     },
     kHeavy},
    {"KurvofcPOntoCurve",
     [](Call& c) {
       const Curve* const curve = c.AnyCurve();
       double* const p = PointNear(c, curve);
       c.Run([&] { KurvofcPOntoCurve(curve, p, &c.g); });
       c.Add(p, 3);
     },
     kHeavy},
    {"KurvocvDistPoint",
     [](Call& c) {
       const Curve* const curve = c.AnyCurve();
       const double* const p = PointNear(c, curve);
       double* const t = c.Room(1);
       c.Add(c.Run([&] { return KurvocvDistPoint(curve, p, t, &c.g); }));
       c.Add(*t);
     },
     kHeavy},
    {"KurvocvDeriv",
     [](Call& c) {
       AtParameter(c,
                   [&](const Curve* cv, double t, double* out) { KurvocvDeriv(cv, t, out, &c.g); });
     }},
    {"KurvocvNDeriv",
     [](Call& c) {
       const int n = c.hostile() && c.in().OneIn(4)
                         ? c.in().Pick({0, -1, INT32_MIN, INT32_MAX, 39, 40, 41, 1000, 1001})
                         : c.in().Between(1, 4);
       AtParameter(
           c, [&](const Curve* cv, double t, double* out) { KurvocvNDeriv(cv, t, out, n, &c.g); });
     }},
    {"KurvocvCurvature",
     [](Call& c) {
       AtParameter(
           c, [&](const Curve* cv, double t, double* out) { KurvocvCurvature(cv, t, out, &c.g); });
     }},
    {"KurvocvCurveLen",
     [](Call& c) {
       const Curve* const curve = c.AnyCurve();
       const double from = c.Parameter(), to = c.Parameter();
       double* const length = c.Room(1);
       c.Run([&] { KurvocvCurveLen(curve, from, to, length, &c.g); });
       c.Neutral(*length == 0);
       c.Expect(*length != Call::kUnwritten, "length not written");
       c.Add(*length);
     },
     kHeavy},
};

}  // namespace

std::span<const Entry> QueryEntries() { return kEntries; }

}  // namespace kurvo_test
