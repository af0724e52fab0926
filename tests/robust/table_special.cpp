// Calls that no signature tells.

#include "robust/row.h"

namespace kurvo_test {

void CallRealloc(Call& c) {
  const uint32_t before = c.in().Below(4) ? 1 + c.in().Below(4096) : 0, size = Bytes(c);
  auto* const old = before ? static_cast<unsigned char*>(std::malloc(before)) : nullptr;
  for (uint32_t i = 0; i < before; ++i) old[i] = static_cast<unsigned char>(i);
  void* const block = c.Run([&] { return KurvoRealloc(old, size, &c.g); });
  const bool failed = size > 0 && !block;
  c.Expect(c.OutOfMemory() == (failed || (old && size == 0)), "block and error disagree");
  const auto* const kept = static_cast<unsigned char*>(failed ? old : block);
  for (uint32_t i = 0; kept && i < before && (failed || i < size); ++i)
    c.Expect(kept[i] == static_cast<unsigned char>(i), "content lost");
  std::free(failed ? old : block);
}

void CallMallocCurve(Call& c) {
  Curve curve = {-1, nullptr, 0, 0, 0};
  const int32_t type = c.in().Pick({int{CV_LINE}, int{CV_ARC}, int{CV_BEZIER}, int{CV_RBEZIER},
                                    int{CV_BSPLINE}, int{CV_RBSPLINE}, int{CV_SEGCV}, 0, 17, -1});
  const int32_t first = Items(c), second = Items(c);
  Curve* const header = c.hostile() && c.in().OneIn(50) ? nullptr : &curve;
  void* const data = c.Run([&] { return KurvocvMallocCurve(header, type, first, second); });
  c.Expect(header || !data, "a block without a header");
  if (!header || curve.type == -1) return c.Expect(!data, "a block without a type");
  c.Expect(data == curve.data && (data ? curve.type == type : curve.type == 0), "another block");
  c.Add(double{1. * curve.type});
  const bool pieces = data && type == CV_SEGCV;
  for (int32_t i = 0; pieces && i < first; ++i)
    c.Expect(!static_cast<KurvoSegcv*>(data)->curves[i].data, "a piece that is not empty");
  KurvocvFreeCurve(&curve);
}

// The array belongs to the allocator, so that it may move; the curves stay where they are.
void CallCvseqInsert(Call& c) {
  const Cvseq chain = c.own().Sequence();
  Cvseq seq = chain;
  const auto bytes = static_cast<size_t>(chain.count > 0 ? chain.count : 0) * sizeof(Curve);
  if (chain.curves && bytes > 0) {
    seq.curves = static_cast<Curve*>(std::malloc(bytes));
    std::memcpy(seq.curves, chain.curves, bytes);
  }
  const int32_t index = c.hostile() && c.in().OneIn(8)
                            ? c.in().Pick({-1, INT32_MIN, INT32_MAX, 6})
                            : c.in().Between(0, chain.count > 0 ? chain.count : 0);
  const Curve* curve = c.AnyCurve();
  const bool known = chain.curves && chain.count > 0;
  if (known && c.in().Below(2)) curve = &chain.curves[index == 0 ? 0 : chain.count - 1];
  // A line from the end that it meets.
  KurvoLine line{};
  const Curve fitting = {CV_LINE, &line, 0, 0, 0};
  if (known && c.in().Below(2)) {
    GlobalVar g;
    KurvoInitGlobalVar(&g);
    KurvocvEndPoint(&chain.curves[std::clamp(index, 1, chain.count) - 1], line.start, &g);
    KurvocvStartPoint(&chain.curves[std::clamp(index, 0, chain.count - 1)], line.end, &g);
    curve = &fitting;
  }
  const Cvseq before = seq;
  c.Run([&] { KurvocvCvseqInsert(curve, &seq, index, &c.g); });
  if (seq.count == before.count + 1) {
    c.Read(seq.curves[index], true);
    KurvocvFreeCurve(seq.curves + index);
  } else {
    c.Expect(seq.count == before.count && seq.curves == before.curves,
             "changed although it failed");
    c.Expect(bytes == 0 || !seq.curves || std::memcmp(seq.curves, chain.curves, bytes) == 0,
             "headers changed although it failed");
    c.Unchanged();
  }
  if (seq.curves != chain.curves) std::free(seq.curves);
}

void CallConvert(Call& c) {
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

}  // namespace kurvo_test
