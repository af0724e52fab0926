// Calls of the functions on points, lines, circles and boxes.
#include "robust/table.h"

namespace kurvo_test {
namespace {

// A box, or six numbers.
const double* SomeBox(Call& c) {
  double* const box = c.OwnNumbers(6);
  for (int i = 0; i < 6; ++i) box[i] = c.Number();
  for (int i = 0; i < 3; ++i)
    if (!c.hostile() && box[i] > box[i + 3]) std::swap(box[i], box[i + 3]);
  return box;
}

const Entry kEntries[] = {
    {"KurvoclTransPoint",
     [](Call& c) {
       const double *const matrix = c.Array(16), *const p = c.Point();
       double* const out = c.Room(3);
       c.Run([&] { KurvoclTransPoint(matrix, p, out); });
       c.Add(out, 3);
     }},
    {"KurvoclRotatePoint",
     [](Call& c) {
       const double *const centre = c.Point(), *const axis = c.Point(), *const p = c.Point();
       const double angle = c.Number();
       double* const out = c.Room(3);
       c.Expect(c.Run([&] { return KurvoclRotatePoint(centre, axis, angle, p, out); }) == out,
                "another result");
       c.Add(out, 3);
     }},
    {"KurvoclScalePoint",
     [](Call& c) {
       const double *const centre = c.Point(), *const dir = c.Point(), *const p = c.Point();
       const double s = c.Number();
       double* const out = c.Room(3);
       c.Expect(c.Run([&] { return KurvoclScalePoint(centre, dir, s, p, out, &c.g); }) == out,
                "another result");
       c.Add(out, 3);
     }},
    {"KurvoclMirrorPoint",
     [](Call& c) {
       const double *const base = c.Point(), *const normal = c.Point(), *const p = c.Point();
       double* const out = c.Room(3);
       c.Run([&] { KurvoclMirrorPoint(base, normal, p, out, &c.g); });
       c.Add(out, 3);
     }},
    {"KurvoclProjLine",
     [](Call& c) {
       const double *const line = c.Array(6), *const p = c.Point();
       double* const out = c.Room(3);
       c.Run([&] { KurvoclProjLine(p, line, out, &c.g); });
       c.Add(out, 3);
     }},
    {"KurvoclOnLine",
     [](Call& c) {
       const double *const line = c.Array(6), *const p = c.in().OneIn(4) ? line : c.Point();
       c.Code(c.Run([&] { return KurvoclOnLine(p, line, &c.g); }), {0, 1});
     }},
    {"KurvoclOnLineSeg",
     [](Call& c) {
       const double *const line = c.Array(6), *const p = c.in().OneIn(4) ? line + 3 : c.Point();
       double* const t = c.Room(1);
       c.Code(c.Run([&] { return KurvoclOnLineSeg(p, line, t, &c.g); }), {0, 1});
       c.Add(*t);
     }},
    {"KurvoclOnCirc",
     [](Call& c) {
       const KurvoArc* const arc = c.AnyArc();
       const double* const p = arc && c.in().Below(2) ? arc->start : c.Point();
       c.Code(c.Run([&] { return KurvoclOnCirc(p, arc, &c.g); }), {0, 1});
     }},
    {"KurvoclOnArc",
     [](Call& c) {
       const KurvoArc* const arc = c.AnyArc();
       const double* const p = arc && c.in().Below(2) ? arc->end : c.Point();
       double* const t = c.Room(1);
       c.Code(c.Run([&] { return KurvoclOnArc(p, arc, t, &c.g); }), {0, 1});
       c.Add(*t);
     }},
    {"KurvoclIsLine",
     [](Call& c) {
       const double *const p = c.Point(), *const q = c.Point(), *const r = c.Point();
       c.Code(c.Run([&] { return KurvoclIsLine(p, q, r, &c.g); }), {0, 1});
     }},
    {"KurvofcRPPcirc",
     [](Call& c) {
       const double *const p = c.Point(), *const q = c.Point();
       const double r = c.in().Below(2) ? 16 : c.Number();
       const int side = c.in().Between(-1, 2);
       double* const centre = c.Room(3);
       const int found = c.Run([&] { return KurvofcRPPcirc(r, p, q, centre, side, &c.g); });
       c.Code(found, {0, 1});
       c.Expect(found || centre[0] == Call::kUnwritten, "written although it failed");
       c.Add(centre, 3);
     }},
    {"KurvoclBoxPoint",
     [](Call& c) {
       const double *const box = SomeBox(c), *const p = c.Point();
       c.Code(c.Run([&] { return KurvoclBoxPoint(box, p, &c.g); }), {0, 1});
     }},
    {"KurvoclBoxBox",
     [](Call& c) {
       const double *const a = SomeBox(c), *const b = SomeBox(c);
       c.Code(c.Run([&] { return KurvoclBoxBox(a, b, &c.g); }), {0, 1});
     }},
    {"KurvoclDistBoxPoint",
     [](Call& c) {
       const double *const box = SomeBox(c), *const p = c.Point();
       c.Add(c.Run([&] { return KurvoclDistBoxPoint(box, p); }));
     }},
    {"KurvoclDistBoxBox",
     [](Call& c) {
       const double *const a = SomeBox(c), *const b = SomeBox(c);
       c.Add(c.Run([&] { return KurvoclDistBoxBox(a, b); }));
     }},
};

}  // namespace

std::span<const Entry> IncidenceEntries() { return kEntries; }

}  // namespace kurvo_test
