// Curve sequences: making, copying and freeing them.
#include <cstdlib>

#include "foundation/error_codes.h"
#include "records/views.h"

namespace kurvo {
namespace {

// Makes the empty `to` a sequence of deep copies of `count` curves; leaves it empty, with the error
// recorded, when memory fails or a curve is refused.
void CopyCurves(const Curve* from, int32_t count, Cvseq& to, GlobalVar& g) {
  if (count > 0 && !KurvocvMallocCvseq(&to, count)) return Fail(g, KURVO_ERR_MEMORY);
  for (int32_t i = 0; i < to.count; ++i) {
    KurvocvCopyCurve(from + i, to.curves + i, &g);
    if (ErrorPending(g)) return KurvocvFreeCvseq(&to);
  }
}

}  // namespace
}  // namespace kurvo

extern "C" {

void KurvocvInitCvseq(Cvseq* seq) noexcept {
  if (seq) *seq = Cvseq{};
}

Curve* KurvocvMallocCvseq(Cvseq* seq, int32_t n) noexcept {
  if (!seq) return nullptr;
  *seq = Cvseq{};
  if (n <= 0) return nullptr;
  // Cleared by the allocator: a count that memory cannot hold fails without a page being touched.
  seq->curves = static_cast<Curve*>(std::calloc(static_cast<std::size_t>(n), sizeof(Curve)));
  if (seq->curves) seq->count = n;
  return seq->curves;
}

void KurvocvFreeCvseq(Cvseq* seq) noexcept {
  if (!seq || seq->count <= 0) return;
  if (seq->curves)
    for (int32_t i = 0; i < seq->count; ++i) KurvocvFreeCurve(seq->curves + i);
  std::free(seq->curves);
  *seq = Cvseq{};
}

Curve* KurvocvCopyCvseq(const Cvseq* src, Cvseq* dst, GlobalVar* g) noexcept {
  if (dst) *dst = Cvseq{};
  if (kurvo::ErrorPending(*g) || !src || !dst) return nullptr;
  if (src->count < 1 || !src->curves) return nullptr;
  kurvo::CopyCurves(src->curves, src->count, *dst, *g);
  return dst->curves;
}

void KurvocvSegcvToCvseq(const Curve* composite, Cvseq* out, GlobalVar* g) noexcept {
  using kurvo::CompositeView;
  if (kurvo::ErrorPending(*g)) return;
  if (out) *out = Cvseq{};
  if (!composite || !composite->data) return;
  kurvo::VisitCurve(*composite,
                    kurvo::Overloaded{[&](const CompositeView& pieces) {
                                        if (out)
                                          kurvo::CopyCurves(pieces.curves, pieces.count, *out, *g);
                                      },
                                      [&](const auto&) { kurvo::Fail(*g, KURVO_ERR_CURVE); }});
}

}  // extern "C"
