// Places at lengths along a chain, and the lengths at places.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/refusal.h"
#include "chain/measured.h"
#include "chain/place.h"

namespace kurvo::outline {
namespace {

constexpr double kJoint = 0x1p-50;  // of the length of the chain: so near a joint it is the joint

// A length of the caller's in the frame's unit, on the chain.
double LengthOn(const MeasuredChain& chain, double length, double epsilon) {
  RequireFinite(length);
  const Frame& frame = chain.list.frame;
  const double whole = chain.length();
  if (chain.list.spans.empty()) return 0;
  if (!chain.is_closed) {
    const double slack = frame.LengthInwards(epsilon), inwards = frame.LengthInwards(length);
    Require(inwards >= -slack && inwards <= whole + slack, KURVO_ERR_RANGE);
    return std::clamp(inwards, 0.0, whole);
  }
  if (!(whole > 0)) return 0;
  // Modulo before it is scaled, which might overflow.
  const double rest = frame.LengthInwards(std::fmod(length, frame.LengthOutwards(whole)));
  return rest < 0 ? rest + whole : rest;
}

// The indices of the lengths, ascending; of equal ones in the order given.
Array<int32_t> Order(const Array<double>& lengths) {
  Array<int32_t> order(lengths.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int32_t>(i);
  const auto at = [&lengths](int32_t i) { return lengths[static_cast<std::size_t>(i)]; };
  if (!std::is_sorted(lengths.begin(), lengths.end()))
    std::sort(order.begin(), order.end(),
              [&at](int32_t i, int32_t k) { return at(i) < at(k) || (at(i) == at(k) && i < k); });
  return order;
}

// Asked for ascending lengths.
class ChainWalk {
 public:
  explicit ChainWalk(const MeasuredChain& chain) : chain_(chain) {}

  KurvoPlace At(double length) {
    const Array<Span>& spans = chain_.list.spans;
    const Array<double>& before = chain_.before;
    const double joint = kJoint * chain_.length();
    // The last span that starts no later: the later one of several.
    std::size_t k = IndexAt(length + joint);
    if (k == spans.size() && chain_.is_closed) {
      length = 0;
      k = IndexAt(joint);
    }
    if (k == spans.size()) {
      k = chain_.is_closed ? 0 : k - 1;  // the end, or of a chain that is a point the start
      return PlaceAt(chain_.list.frame, spans[k], chain_.is_closed ? 0 : 1);
    }
    if (before[k] >= length - joint) return PlaceAt(chain_.list.frame, spans[k], 0);
    if (!walk_ || span_ != k) walk_.emplace(spans[k], before[k + 1] - before[k]);
    span_ = k;
    return PlaceAt(chain_.list.frame, spans[k], walk_->At(length - before[k]));
  }

 private:
  // The number of spans when it is at the end.
  std::size_t IndexAt(double length) const {
    const Array<double>& before = chain_.before;
    const auto after = std::upper_bound(before.begin(), before.end(), length);
    return static_cast<std::size_t>(after - before.begin()) - 1;
  }

  const MeasuredChain& chain_;
  std::optional<SpanWalk> walk_;
  std::size_t span_ = 0;
};

void RequireArrays(int32_t n, const void* in, const void* out) {
  Require(n >= 0 && (n == 0 || (in && out)), KURVO_ERR_OPTION);
}

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" {

int KurvoChainPlaces(const Cvseq* chain, const double* lengths, int32_t n, KurvoPlace* places,
                     GlobalVar* g) noexcept {
  return Answer(g, [&] {
    RequireArrays(n, lengths, places);
    MeasuredChain measured;
    Measure(chain, GetEpsilon(g), measured);
    Array<double> inwards;
    inwards.reserve(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) inwards.push_back(LengthOn(measured, lengths[i], GetEpsilon(g)));
    if (measured.list.spans.empty()) return static_cast<void>(std::fill_n(places, n, KurvoPlace{}));
    ChainWalk walk(measured);
    for (const int32_t i : Order(inwards))
      places[i] = walk.At(inwards[static_cast<std::size_t>(i)]);
  });
}

int KurvoChainLengths(const Cvseq* chain, const KurvoPlace* places, int32_t n, double* lengths,
                      GlobalVar* g) noexcept {
  return Answer(g, [&] {
    RequireArrays(n, places, lengths);
    MeasuredChain measured;
    Measure(chain, GetEpsilon(g), measured);
    const SpanList& list = measured.list;
    if (list.spans.empty()) return static_cast<void>(std::fill_n(lengths, n, 0.0));
    Array<OnSpan> found;
    found.reserve(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) found.push_back(Find(list.spans, places[i]));
    std::optional<Speed> speed;
    for (std::size_t i = 0; i < found.size(); ++i) {
      const OnSpan& at = found[i];
      if (i == 0 || found[i - 1].span != at.span) speed.emplace(list.spans[at.span]);
      const double length = at.u >= 1 ? measured.before[at.span + 1]
                                      : measured.before[at.span] + speed->Integral(0, at.u);
      lengths[i] = list.frame.LengthOutwards(length);
    }
  });
}

}  // extern "C"
