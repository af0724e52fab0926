// Calls of the functions on numbers, vectors and coordinates.
#include "robust/table.h"

namespace kurvo_test {
namespace {

// A predicate of two points.
template <class Body>
void Predicate(Call& c, Body&& body, int size = 3) {
  const double* const a = c.Point(size);
  const double* const b = c.in().OneIn(4) ? a : c.Point(size);
  c.Code(c.Run([&] { return body(a, b); }), {0, 1});
}

template <class Body>
void Value(Call& c, Body&& body) {
  const double* const a = c.Point();
  const double* const b = c.in().OneIn(4) ? a : c.Point();
  c.Add(c.Run([&] { return body(a, b); }));
}

// A function that writes a vector.
template <class Body>
void Vector(Call& c, Body&& body, int size = 3) {
  const double* const a = c.Point();
  const double* const b = c.Point();
  double* const out = c.Room(size);
  c.Run([&] { body(a, b, out); });
  c.Add(out, size);
}

const Entry kEntries[] = {
    {"KurvoclCompare",
     [](Call& c) {
       const double a = c.Number(), b = c.in().OneIn(4) ? a + 1e-6 : c.Number();
       c.Code(c.Run([&] { return KurvoclCompare(a, b, &c.g); }), {-1, 0, 1});
     }},
    {"KurvoclPositive",
     [](Call& c) {
       const double a = c.Number();
       c.Code(c.Run([&] { return KurvoclPositive(a, &c.g); }), {0, 1});
     }},
    {"KurvoclNegative",
     [](Call& c) {
       const double a = c.Number();
       c.Code(c.Run([&] { return KurvoclNegative(a, &c.g); }), {0, 1});
     }},
    {"KurvoclSame",
     [](Call& c) {
       const double a = c.Number(), b = c.in().OneIn(4) ? a : c.Number();
       c.Code(c.Run([&] { return KurvoclSame(a, b, &c.g); }), {0, 1});
     }},
    {"KurvoclZero2",
     [](Call& c) {
       const double a = c.Number();
       c.Code(c.Run([&] { return KurvoclZero2(a, &c.g); }), {0, 1});
     }},
    {"KurvoclFabs",
     [](Call& c) {
       const double a = c.Number();
       c.Add(c.Run([&] { return KurvoclFabs(a); }));
     }},
    {"KurvoclCopyVector",
     [](Call& c) {
       Vector(c, [](const double* a, const double*, double* out) { KurvoclCopyVector(a, out); });
     }},
    {"KurvoclSubVector", [](Call& c) { Vector(c, KurvoclSubVector); }},
    {"KurvoclSclVector",
     [](Call& c) {
       const double s = c.Number();
       Vector(c, [s](const double* a, const double*, double* out) { KurvoclSclVector(s, a, out); });
     }},
    {"KurvoclInnerProduct", [](Call& c) { Value(c, KurvoclInnerProduct); }},
    {"KurvoclOuterProduct", [](Call& c) { Vector(c, KurvoclOuterProduct); }},
    {"KurvoclVectorSize",
     [](Call& c) {
       Value(c, [](const double* a, const double*) { return KurvoclVectorSize(a); });
     }},
    {"KurvoclDistPoint", [](Call& c) { Value(c, KurvoclDistPoint); }},
    {"KurvoclSetCoord",
     [](Call& c) {
       Vector(c, [](const double* a, const double*, double* out) {
         KurvoclSetCoord(out, a[0], a[1], a[2]);
       });
     }},
    {"KurvoclSetHCoord",
     [](Call& c) {
       Vector(
           c,
           [](const double* a, const double* b, double* out) {
             KurvoclSetHCoord(out, a[0], a[1], a[2], b[0]);
           },
           4);
     }},
    {"KurvoclRotateVector",
     [](Call& c) {
       const double angle = c.Number();
       Vector(c, [angle](const double* a, const double* b, double* out) {
         KurvoclRotateVector(a, angle, b, out);
       });
     }},
    {"KurvofcRotateVector",
     [](Call& c) {
       const double angle = c.Number();
       Vector(c, [angle](const double* a, const double*, double* out) {
         KurvofcRotateVector(a, angle, out);
       });
     }},
    {"KurvoclZeroVector",
     [](Call& c) {
       Predicate(c, [&](const double* a, const double*) { return KurvoclZeroVector(a, &c.g); });
     }},
    {"KurvoclZeroVector2",
     [](Call& c) {
       Predicate(c, [&](const double* a, const double*) { return KurvoclZeroVector2(a, &c.g); });
     }},
    {"KurvoclSameCoord",
     [](Call& c) {
       Predicate(c, [&](const double* a, const double* b) { return KurvoclSameCoord(a, b, &c.g); });
     }},
    {"KurvoclSameHCoord",
     [](Call& c) {
       Predicate(
           c, [&](const double* a, const double* b) { return KurvoclSameHCoord(a, b, &c.g); }, 4);
     }},
    {"KurvoclUnitVector",
     [](Call& c) {
       double* const v = c.OwnNumbers(3);
       for (int i = 0; i < 3; ++i) v[i] = c.Number();
       c.Run([&] { KurvoclUnitVector(v, &c.g); });
       c.Add(v, 3);
     }},
    {"KurvoclSameVector",
     [](Call& c) {
       Predicate(c,
                 [&](const double* a, const double* b) { return KurvoclSameVector(a, b, &c.g); });
     }},
    {"KurvoclVectorAngle",
     [](Call& c) {
       Value(c, [&](const double* a, const double* b) { return KurvoclVectorAngle(a, b, &c.g); });
     }},
    {"KurvoclParaVector",
     [](Call& c) {
       Predicate(c,
                 [&](const double* a, const double* b) { return KurvoclParaVector(a, b, &c.g); });
     }},
};

}  // namespace

std::span<const Entry> VectorEntries() { return kEntries; }

}  // namespace kurvo_test
