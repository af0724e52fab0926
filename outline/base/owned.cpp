#include "base/owned.h"

#include <algorithm>

#include "base/refusal.h"

namespace kurvo::outline {

// The kernel copies no deeper than it allows composites to nest, so neither does this recursion.
void TakeAttributes(const Curve& from, Curve& to) {
  to.attr = from.attr;
  to.attr_p1 = from.attr_p1;
  to.attr_p2 = from.attr_p2;
  if (from.type != CV_SEGCV || to.type != CV_SEGCV) return;
  const auto& sources = *static_cast<const KurvoSegcv*>(from.data);
  auto& pieces = *static_cast<KurvoSegcv*>(to.data);
  const int count = std::min(sources.count, pieces.count);
  for (int i = 0; i < count; ++i) TakeAttributes(sources.curves[i], pieces.curves[i]);
}

OwnedCurve LineBetween(Vec2 start, Vec2 end) {
  auto [curve, line] = OwnedCurve::New<KurvoLine>(CV_LINE);
  KurvoclSetCoord(line->start, start.x, start.y, 0);
  KurvoclSetCoord(line->end, end.x, end.y, 0);
  return std::move(curve);
}

OwnedCurve CopyOf(const Curve& curve) {
  OwnedCurve copy;
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  KurvocvCopyCurve(&curve, copy.Get(), &g);
  Require(KurvoOk(&g), KurvoErrGet(&g));
  Require(copy->data, KURVO_ERR_CURVE);
  TakeAttributes(curve, *copy.Get());
  return copy;
}

OwnedChain CopyOf(const Cvseq& chain) {
  OwnedChain copy;
  copy.Reserve(static_cast<std::size_t>(chain.count));
  for (int i = 0; i < chain.count; ++i) copy.Add(CopyOf(chain.curves[i]));
  return copy;
}

Cvseq OwnedChain::Release() {
  Cvseq chain;
  KurvocvInitCvseq(&chain);
  if (curves_.empty()) return chain;
  if (!KurvocvMallocCvseq(&chain, CountOf(curves_.size()))) throw std::bad_alloc();
  std::copy(curves_.begin(), curves_.end(), chain.curves);
  curves_.clear();
  return chain;
}

void FreeRegion(KurvoRegion& region) {
  for (int i = 0; region.loops && i < region.count; ++i) KurvocvFreeCvseq(&region.loops[i]);
  KurvoFree(region.loops);
  KurvoFree(region.origins);
  region = {};
}

KurvoRegion OwnedRegion::Release(int32_t rule) {
  KurvoRegion region = {CountOf(loops_.size()), rule, nullptr, nullptr};
  if (!loops_.empty()) region.loops = Handed<Cvseq>(loops_).Release();
  loops_.clear();
  return region;
}

}  // namespace kurvo::outline
