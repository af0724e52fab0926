// Where a point lies with respect to the region that a closed chain of curves bounds.
#include <cmath>

#include "calc/boxes.h"
#include "foundation/guard.h"
#include "records/views.h"
#include "relate/region/chain_sense.h"
#include "relate/region/winding_number.h"

namespace kurvo {
namespace {

bool IsUpward(const double* normal) {
  return normal[0] == 0.0 && normal[1] == 0.0 && normal[2] == 1.0;
}

bool TypesAreKnown(const Cvseq& seq) {
  for (int32_t i = 0; i < seq.count; ++i)
    if (!IsTypeCode(seq.curves[i].type)) return false;
  return true;
}

// NaN, which is no point, for a curve without points.
Vec3 StartOf(const Curve& curve, GlobalVar& g) {
  Coord p = {NAN, NAN, NAN};
  KurvocvStartPoint(&curve, p, &g);
  return Spatial(p);
}

Vec3 EndOf(const Curve& curve, GlobalVar& g) {
  Coord p = {NAN, NAN, NAN};
  KurvocvEndPoint(&curve, p, &g);
  return Spatial(p);
}

// The vertices that belong to curve i. The end of the last curve is none of them: in a closed chain
// it is the start.
bool OnVertexOf(const Cvseq& seq, int32_t i, Vec3 p, GlobalVar& g) {
  if (i == seq.count - 1) return false;
  if (i == 0 && SamePoint(p, StartOf(seq.curves[0], g), g.epsilon)) return true;
  return SamePoint(p, EndOf(seq.curves[i], g), g.epsilon);
}

bool OnVertex(const Cvseq& seq, Vec3 p, GlobalVar& g) {
  for (int32_t i = 0; i < seq.count; ++i)
    if (OnVertexOf(seq, i, p, g)) return true;
  return false;
}

bool IsClosed(const Cvseq& seq, GlobalVar& g) {
  const Vec3 start = StartOf(seq.curves[0], g);
  return SamePoint(start, EndOf(seq.curves[seq.count - 1], g), g.epsilon);
}

bool InBoxOf(const Cvseq& seq, Vec2 p, GlobalVar& g) {
  Box of_chain;
  KurvocvCvseqBoundBox(&seq, of_chain, &g);
  return Contains({Planar(of_chain), Planar(of_chain + 3)}, p, g.epsilon);
}

// A closed chain on one line encloses nothing and has no sense in which it could run.
void WarnOfStraightChain(const Cvseq& seq, Vec2 p, GlobalVar& g) {
  if (IsStraight(seq, g) && !ErrorPending(g) && InBoxOf(seq, p, g))
    Fail(g, KURVO_WARN_NO_ORIENTATION);
}

uint32_t Locate(const Cvseq& seq, Vec3 p, GlobalVar& g) {
  // No distance can be asked with an error pending.
  if (ErrorPending(g)) return OnVertex(seq, p, g) ? KURVO_REGION_ON : KURVO_REGION_OUTSIDE;
  WindingNumber winding(Planar(p), g);
  // Fixed behaviour: what lies outside the box of the chain is outside, also where a curve leaves
  // its box.
  const auto in_box = [&](uint32_t location) -> uint32_t {
    if (winding.LeavesBoxes() && !InBoxOf(seq, Planar(p), g)) return KURVO_REGION_OUTSIDE;
    return location;
  };
  for (int32_t i = winding.PassBy(seq, 0); i < seq.count; i = winding.PassBy(seq, i + 1)) {
    const bool near = winding.Add(seq.curves[i]);
    if (ErrorPending(g)) return KURVO_REGION_OUTSIDE;
    if (winding.OnCurve() || (near && OnVertexOf(seq, i, p, g))) return in_box(KURVO_REGION_ON);
  }
  if (!winding.Decided() || !IsClosed(seq, g)) return KURVO_REGION_OUTSIDE;
  winding.Close();
  if (winding.OnCurve()) return in_box(KURVO_REGION_ON);
  if (winding.Turns() == 0) {
    WarnOfStraightChain(seq, Planar(p), g);
    return KURVO_REGION_OUTSIDE;
  }
  // The directions at the crossings of an inner point are judged with a tolerance of their own. A
  // caller whose stack has no room left for the one in force learns it here.
  if (g.depth < 0 || g.depth >= KURVO_STACK_SIZE) Fail(g, KURVO_ERR_STACK_EMPTY);
  return in_box(KURVO_REGION_INSIDE);
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvosfPntBoundForPlane(const Coord normal, const Cvseq* seq, const Coord p,
                                        uint32_t* result, GlobalVar* g) noexcept {
  using namespace kurvo;
  *result = KURVO_REGION_OUTSIDE;
  if (!IsUpward(normal) || !seq || !seq->curves || seq->count < 1) return;
  if (!TypesAreKnown(*seq)) return Fail(*g, KURVO_ERR_CURVE);
  if (std::isnan(p[0]) || std::isnan(p[1])) return;
  const auto locate = [&] { return Locate(*seq, Spatial(p), *g); };
  *result = Guard(*g, uint32_t{KURVO_REGION_OUTSIDE}, locate);
}
