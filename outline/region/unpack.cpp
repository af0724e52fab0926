// Regions read from arrays of plain numbers, which are not to be trusted.
#include <kurvo_outline.h>

#include <algorithm>
#include <bit>

#include "base/owned.h"
#include "base/refusal.h"
#include "region/check_region.h"
#include "region/packed.h"
#include "strand/check.h"

namespace kurvo::outline {
namespace {

class Unpacker {
 public:
  Unpacker(const int32_t* words, int32_t word_count, const double* numbers, int32_t number_count)
      : word_(words), words_left_(word_count), number_(numbers), numbers_left_(number_count) {}

  OwnedRegion Region(int32_t& rule) {
    Require(Word() == kPackedVersion, KURVO_ERR_OPTION);
    rule = Word();
    Require(rule >= KURVO_FILL_NONZERO && rule <= KURVO_FILL_NEGATIVE, KURVO_ERR_OPTION);
    OwnedRegion region;
    for (int32_t loops = Count(1); loops > 0; --loops) {
      OwnedChain loop;
      for (int32_t curves = Count(kWordsOfCurve); curves > 0; --curves) loop.Add(Curve(0));
      region.Add(std::move(loop));
    }
    Require(words_left_ == 0 && numbers_left_ == 0, KURVO_ERR_OPTION);
    return region;
  }

 private:
  int32_t Word() {
    Require(words_left_ > 0, KURVO_ERR_OPTION);
    --words_left_;
    return *word_++;
  }
  // A count of things that take at least so many words each.
  int32_t Count(int32_t words_each) {
    const int32_t count = Word();
    Require(count >= 0 && count <= words_left_ / words_each, KURVO_ERR_OPTION);
    return count;
  }
  uint64_t LongWord() {
    const uint64_t low = std::bit_cast<uint32_t>(Word());
    return low | uint64_t{std::bit_cast<uint32_t>(Word())} << 32;
  }

  // A record of these sizes, whose numbers must all be there before memory is taken for them.
  OwnedCurve Record(int32_t type, Sizes sizes) {
    const auto fits = [this](int64_t count) { Require(count <= numbers_left_, KURVO_ERR_OPTION); };
    const bool is_spline = type == CV_BSPLINE || type == CV_RBSPLINE;
    const int64_t width = type == CV_RBEZIER || type == CV_RBSPLINE ? 4 : 3;
    Require(sizes.first >= 0 && sizes.second >= (is_spline ? sizes.first : 0), KURVO_ERR_CURVE);
    Require(is_spline || sizes.second == 0, KURVO_ERR_CURVE);
    switch (type) {
      case CV_LINE:
      case CV_ARC:
        Require(sizes.first == 0, KURVO_ERR_CURVE);
        break;
      case CV_BEZIER:
      case CV_RBEZIER:
        Require(sizes.first <= kMostDegree, KURVO_ERR_CURVE);
        fits(width * (sizes.first + 1));
        break;
      case CV_BSPLINE:
      case CV_RBSPLINE:
        Require(sizes.first >= 1 && sizes.first - 1 <= kMostDegree, KURVO_ERR_CURVE);
        fits((width + 1) * sizes.second + sizes.first);
        break;
      case CV_SEGCV:
        Require(sizes.first <= words_left_ / kWordsOfCurve, KURVO_ERR_OPTION);
        fits(sizes.first);
        break;
      default:
        throw Refusal{KURVO_ERR_CURVE};
    }
    OwnedCurve curve;
    const void* block = is_spline ? KurvocvMallocCurve(curve.Get(), type, sizes.first, sizes.second)
                                  : KurvocvMallocCurve(curve.Get(), type, sizes.first);
    if (!block) throw std::bad_alloc();
    return curve;
  }

  OwnedCurve Curve(int nesting) {
    Require(nesting <= kMostNesting, KURVO_ERR_CURVE);
    const int32_t type = Word();
    const int32_t first = Word();
    const Sizes sizes = {first, Word()};
    const int32_t attr = Word();
    const uint64_t attr_p1 = LongWord();
    const uint64_t attr_p2 = LongWord();
    OwnedCurve curve = Record(type, sizes);
    curve.Get()->attr = attr;
    curve.Get()->attr_p1 = attr_p1;
    curve.Get()->attr_p2 = attr_p2;
    ForEachArray(*curve, [this](double* at, std::size_t count) {
      Require(static_cast<int64_t>(count) <= numbers_left_, KURVO_ERR_OPTION);
      std::copy(number_, number_ + count, at);
      number_ += count;
      numbers_left_ -= static_cast<int32_t>(count);
    });
    if (type == CV_SEGCV) {
      auto* pieces = static_cast<KurvoSegcv*>(curve.Get()->data)->curves;
      for (int32_t i = 0; i < sizes.first; ++i) pieces[i] = Curve(nesting + 1).Release();
    }
    return curve;
  }

  const int32_t* word_;
  int32_t words_left_;
  const double* number_;
  int32_t numbers_left_;
};

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoRegionUnpack(const int32_t* words, int32_t word_count, const double* numbers,
                                 int32_t number_count, KurvoRegion* out, GlobalVar* g) noexcept {
  KurvoRegionInit(out);
  return Answer(g, [&] {
    Require(out && words && word_count >= 0 && number_count >= 0 && (numbers || number_count == 0),
            KURVO_ERR_OPTION);
    int32_t rule = KURVO_FILL_NONZERO;
    KurvoRegion region =
        Unpacker(words, word_count, numbers, number_count).Region(rule).Release(rule);
    try {
      Bounds unused;
      CheckRegion(&region, unused);
    } catch (...) {
      FreeRegion(region);
      throw;
    }
    *out = region;
  });
}
