// Insertion into a chain of curves.
#include <algorithm>
#include <cstdlib>
#include <limits>

#include "foundation/clamped_size.h"
#include "foundation/error_codes.h"
#include "foundation/point.h"
#include "records/owned_curve.h"

namespace kurvo {
namespace {

// True when the second curve starts where the first one ends. A curve that has no such point, a
// composite without pieces for instance, joins nothing.
bool Joined(const Curve& first, const Curve& second, GlobalVar& g) {
  constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();
  Coord end = {kNowhere, kNowhere, kNowhere};
  Coord start = {kNowhere, kNowhere, kNowhere};
  KurvocvEndPoint(&first, end, &g);
  KurvocvStartPoint(&second, start, &g);
  return SamePoint(Spatial(end), Spatial(start), g.epsilon);
}

// Whether `cv` fits before position `index`: the joint after it first, then the one before it.
bool Fits(const Curve& cv, const Cvseq& seq, int32_t index, GlobalVar& g) {
  if (index < seq.count && !Joined(cv, seq.curves[index], g)) return false;
  return index == 0 || Joined(seq.curves[index - 1], cv, g);
}

// Makes room for one more header at `index`. Returns false, with the sequence as it was, when
// memory fails. Headers move, the blocks that they own stay; the record has no room to remember a
// capacity, so the array always has the exact size that any owner may count on.
bool OpenGap(Cvseq& seq, int32_t index) {
  const auto count = static_cast<std::size_t>(seq.count);
  Curve* old_array = seq.count > 0 ? seq.curves : nullptr;  // an empty sequence owns nothing
  const auto bytes = ClampedSize(sizeof(Curve)) * (count + 1);
  void* grown = std::realloc(old_array, bytes.value());
  if (!grown) return false;
  seq.curves = static_cast<Curve*>(grown);
  std::copy_backward(seq.curves + index, seq.curves + count, seq.curves + count + 1);
  ++seq.count;
  return true;
}

void Insert(const Curve& cv, Cvseq& seq, int32_t index, GlobalVar& g) {
  OwnedCurve copy;
  KurvocvCopyCurve(&cv, &copy.curve(), &g);
  if (ErrorPending(g)) return;
  if (!Fits(copy.curve(), seq, index, g)) {
    // A curve without an end point breaks the chain too, but not one for which memory failed.
    if (g.error != KURVO_ERR_MEMORY) Fail(g, KURVO_ERR_CHAIN_BREAK);
    return;
  }
  if (!OpenGap(seq, index)) return Fail(g, KURVO_ERR_MEMORY);
  seq.curves[index] = copy.Release();
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvCvseqInsert(const Curve* cv, Cvseq* seq, int32_t index,
                                   GlobalVar* g) noexcept {
  if (kurvo::ErrorPending(*g)) return;
  if (!seq) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  if (index < 0 || index > seq->count) return kurvo::Fail(*g, KURVO_ERR_CHAIN_INDEX);
  const bool possible = seq->count < INT32_MAX && (seq->count == 0 || seq->curves);
  if (!possible || !cv || !cv->data) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  kurvo::Insert(*cv, *seq, index, *g);
}
