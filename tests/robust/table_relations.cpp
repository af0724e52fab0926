// Calls of the functions on several curves.
#include <cmath>

#include "robust/table.h"

namespace kurvo_test {
namespace {

void CurveCurve(Call& c) {
  const Curve* const a = c.AnyCurve();
  const Curve* const b = c.in().OneIn(16) ? a : c.AnyCurve();
  CvParam pa = {5, nullptr}, pb = {5, nullptr};
  const bool lists = !c.in().OneIn(16);
  const int mode =
      c.hostile() && c.in().OneIn(8) ? c.in().Pick({-1, 4, INT32_MIN, 7}) : c.in().Between(0, 3);
  const uint32_t result = c.Run([&] {
    return KurvocrCurveCurve(a, b, lists ? &pa : nullptr, lists ? &pb : nullptr, mode, &c.g);
  });
  c.Code(result, {KURVO_FOUND, KURVO_OVERLAP, KURVO_NOTHING, KURVO_REFUSED});
  if (!lists) return;
  c.Expect(pa.count == pb.count, "lists of different lengths");
  c.Expect((result == KURVO_FOUND) == (pa.count > 0), "result and lists disagree");
  c.Take(pa);
  c.Take(pb);
}

void Match(Call& c) {
  const Curve* const a = c.AnyCurve();
  const Curve* const b = c.in().OneIn(4) ? a : c.AnyCurve();
  const uint32_t result = c.Run([&] { return KurvocvMatch(a, b, &c.g); });
  c.Code(result, {KURVO_MATCH_NONE, KURVO_MATCH_CONVERTED, KURVO_MATCH_SAME});
  c.Neutral(result == KURVO_MATCH_NONE);
}

void CvseqToSegcv(Call& c) {
  const Cvseq* const seq = c.AnySequence();
  Curve out = {9, nullptr, 9, 9, 9};
  c.Run([&] { KurvocvCvseqToSegcv(seq, &out, &c.g); });
  c.Take(out, true);
}

void CvseqNormal(Call& c) {
  const Cvseq* const seq = c.AnySequence();
  double *const centre = c.Room(3), *const normal = c.Room(3);
  c.Run([&] { KurvocvCvseqNormal(seq, centre, normal, &c.g); });
  c.Expect(normal[0] == 0 && normal[1] == 0 && std::fabs(normal[2]) <= 1, "not a normal");
  c.Expect(normal[2] == 0 || std::fabs(normal[2]) == 1, "not a normal");
  c.Neutral(normal[2] == 0);
  c.Add(centre, 3);
  c.Add(normal, 3);
}

void PntBoundForPlane(Call& c) {
  const Cvseq* const seq = c.AnySequence();
  double *const normal = c.OwnNumbers(3), *const p = c.OwnNumbers(3);
  normal[2] = c.in().OneIn(16) ? c.Number() : 1;
  for (int i = 0; i < 2; ++i) p[i] = c.Number();
  uint32_t result = 0;
  c.Run([&] { KurvosfPntBoundForPlane(normal, seq, p, &result, &c.g); });
  c.Code(result, {KURVO_REGION_ON, KURVO_REGION_INSIDE, KURVO_REGION_OUTSIDE});
  c.Neutral(result == KURVO_REGION_OUTSIDE);
}

void DistCurve(Call& c) {
  const Curve* const a = c.AnyCurve();
  const Curve* const b = c.in().OneIn(16) ? a : c.AnyCurve();
  double *const ta = c.in().OneIn(16) ? nullptr : c.Room(1), *const tb = c.Room(1);
  const double distance = c.Run([&] { return KurvocvDistCurve(a, b, ta, tb, &c.g); });
  c.Expect(!(distance < 0), "negative distance");
  c.Neutral(distance == 0);
  c.Add(distance);
  if (ta) c.Add(*ta);
  c.Add(*tb);
}

const Entry kEntries[] = {
    {"KurvocvMatch", Match},
    {"KurvocrCurveCurve", CurveCurve, kHeavy},
    {"KurvocvCvseqToSegcv", CvseqToSegcv},
    {"KurvocvCvseqNormal", CvseqNormal},
    {"KurvosfPntBoundForPlane", PntBoundForPlane},
    {"KurvocvDistCurve", DistCurve, kHeavy},
};

}  // namespace

std::span<const Entry> RelationEntries() { return kEntries; }

}  // namespace kurvo_test
