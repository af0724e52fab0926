// Calls of the functions that make, copy and free records.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "robust/table.h"

namespace kurvo_test {
namespace {

// A curve all of whose blocks the library may free, spoiled where that must not matter.
Curve Freeable(Call& c) {
  Store store;
  Maker maker(c.in(), c.hostile() ? Mode::kHostile : Mode::kBenign, store);
  const Curve source = maker.Curve();
  Curve curve;
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  KurvocvCopyCurve(&source, &curve, &g);
  if (!c.hostile() || !curve.data || !c.in().OneIn(4)) return curve;
  if (curve.type == CV_BEZIER)
    *static_cast<KurvoBezier*>(curve.data) = {c.in().Pick({-1, INT32_MAX}), 0, nullptr, {}};
  if (curve.type == CV_RBSPLINE)
    *static_cast<KurvoRBSpline*>(curve.data) = {0, INT32_MIN, nullptr, nullptr, {}};
  if (curve.type != CV_SEGCV) return curve;
  auto& block = *static_cast<KurvoSegcv*>(curve.data);
  for (int32_t i = 0; i < block.count; ++i) KurvocvFreeCurve(block.curves + i);
  if (c.in().Below(2))
    block.count = c.in().Pick({0, -1, INT32_MIN});
  else
    block.curves = nullptr;
  return curve;
}

// Room that the caller asks for: a little, or more than there is.
int32_t Size(Call& c) {
  if (c.hostile() && c.in().OneIn(8)) return c.in().Pick({-1, INT32_MIN, INT32_MAX, 1 << 30});
  return c.in().Between(0, 20);
}

void MallocCurve(Call& c) {
  Curve curve = {-1, nullptr, 0, 0, 0};
  const int32_t type = c.in().Pick({int{CV_LINE}, int{CV_ARC}, int{CV_BEZIER}, int{CV_RBEZIER},
                                    int{CV_BSPLINE}, int{CV_RBSPLINE}, int{CV_SEGCV}, 0, 17, -1});
  const int32_t first = Size(c), second = Size(c);
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

void CopyCurve(Call& c) {
  const Curve* const source = c.AnyCurve();
  Curve copy{};
  const void* const data = c.Run([&] { return KurvocvCopyCurve(source, &copy, &c.g); });
  c.Expect(data == copy.data, "another block");
  c.Take(copy, true);
}

void FreeCvseq(Call& c) {
  const int32_t count =
      c.hostile() && c.in().OneIn(8) ? c.in().Pick({0, -1}) : c.in().Between(1, 4);
  Cvseq seq = {count, nullptr};
  if (count > 0) seq.curves = static_cast<Curve*>(std::calloc(static_cast<size_t>(count), 40));
  for (int32_t i = 0; i < count; ++i) seq.curves[i] = Freeable(c);
  c.Run([&] { KurvocvFreeCvseq(&seq); });
  c.Expect(!seq.curves && (seq.count == 0 || count < 0), "not emptied");
}

void CopyCvseq(Call& c) {
  const Cvseq* const source = c.AnySequence();
  Cvseq copy;
  const Curve* const curves = c.Run([&] { return KurvocvCopyCvseq(source, &copy, &c.g); });
  c.Expect(curves == copy.curves, "another array");
  c.Take(copy, true);
}

void SegcvToCvseq(Call& c) {
  const Curve* const source = c.AnyCurve(kComposites);
  Cvseq out{};
  Cvseq* const to = c.hostile() && c.in().OneIn(50) ? nullptr : &out;
  c.Run([&] { KurvocvSegcvToCvseq(source, to, &c.g); });
  c.Take(out, true);
}

// The array belongs to the allocator, so that it may move; the curves stay where they are.
void CvseqInsert(Call& c) {
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

const Entry kEntries[] = {
    {"KurvocvInitCurve",
     [](Call& c) {
       Curve curve = {7, &curve, 1, 2, 3};
       c.Run([&] { KurvocvInitCurve(c.in().OneIn(9) ? nullptr : &curve); });
       c.Expect(curve.type == 7 || !curve.data, "not empty");
     }},
    {"KurvocvMallocCurve", MallocCurve, kAsks | kSilent},
    {"KurvocvFreeCurve",
     [](Call& c) {
       Curve curve = Freeable(c);
       curve.attr = 5;
       c.Run([&] { KurvocvFreeCurve(&curve); });
       c.Expect(curve.type == 0 && !curve.data && curve.attr == 5, "not empty");
     }},
    {"KurvocvCopyCurve", CopyCurve},
    {"KurvocvInitCvseq",
     [](Call& c) {
       Cvseq seq = {7, nullptr};
       c.Run([&] { KurvocvInitCvseq(&seq); });
       c.Take(seq);
     }},
    {"KurvocvMallocCvseq",
     [](Call& c) {
       Cvseq seq = {7, nullptr};
       const int32_t count = Size(c);
       const Curve* const curves = c.Run([&] { return KurvocvMallocCvseq(&seq, count); });
       c.Expect(curves == seq.curves, "another array");
       c.Expect(!curves || seq.count == count, "another count");
       c.Take(seq);
     },
     kAsks | kSilent},
    {"KurvocvFreeCvseq", FreeCvseq},
    {"KurvocvCopyCvseq", CopyCvseq},
    {"KurvocvSegcvToCvseq", SegcvToCvseq},
    {"KurvocvCvseqInsert", CvseqInsert},
    {"KurvocrInitCvParam",
     [](Call& c) {
       CvParam list = {7, nullptr};
       c.Run([&] { KurvocrInitCvParam(&list); });
       c.Take(list);
     }},
    {"KurvocrMallocCvParam",
     [](Call& c) {
       CvParam list = {Size(c), nullptr};
       const int32_t count = list.count;
       c.Run([&] { KurvocrMallocCvParam(&list); });
       if (count <= 0) return c.Expect(list.count == count && !list.values, "changed");
       c.Expect(list.values ? list.count == count : list.count == 0, "count without an array");
       c.Add(double{1. * list.count});
       KurvocrFreeCvParam(&list);
     },
     kAsks | kSilent},
    {"KurvocrFreeCvParam",
     [](Call& c) {
       const int32_t count = c.in().Between(c.hostile() ? -2 : 0, 9);
       double here = 0;
       CvParam list = {count, &here};  // not the list's own when the count says so
       if (count > 0)
         list.values = static_cast<double*>(std::malloc(static_cast<size_t>(count) * sizeof here));
       c.Run([&] { KurvocrFreeCvParam(&list); });
       c.Take(list);
     }},
};

}  // namespace

std::span<const Entry> RecordEntries() { return kEntries; }

}  // namespace kurvo_test
