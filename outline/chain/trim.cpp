// The part of a chain between two places.
#include <kurvo_outline.h>

#include <algorithm>
#include <utility>

#include "base/owned.h"
#include "base/refusal.h"
#include "chain/cut.h"
#include "chain/place.h"
#include "strand/check.h"
#include "strand/joints.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

// A place of the caller's: its curve, the parameter, and where that is.
struct Stop {
  int32_t index;
  double t;
  Vec2 point;
};

Stop StopAt(const Cvseq& chain, const SpanList& list, const KurvoPlace* place) {
  Require(place, KURVO_ERR_OPTION);
  const OnSpan at = Find(list.spans, *place);
  const Domain domain = DomainOf(chain.curves[place->index]);
  const double slack = kLeastPart * (domain.to - domain.from);
  double t = std::clamp(place->t, domain.from, domain.to);
  if (t - domain.from <= slack) t = domain.from;
  if (domain.to - t <= slack) t = domain.to;
  return {place->index, t, list.frame.Outwards(PointAt(list.spans[at.span], at.u))};
}

bool IsBefore(const Stop& a, const Stop& b) {
  return a.index < b.index || (a.index == b.index && a.t < b.t);
}

class Trimmer {
 public:
  Trimmer(const Cvseq& chain, const Frame& frame) : chain_(chain), frame_(frame) {}

  // From a place, or the start of the chain, to one, or its end.
  void Add(const Stop* from, const Stop* to) {
    const int32_t first = from ? from->index : 0, last = to ? to->index : chain_.count - 1;
    for (int32_t i = first; i <= last; ++i)
      AddCurve(chain_.curves[i], from && i == first ? from : nullptr,
               to && i == last ? to : nullptr);
  }

  // A loop that is one circle, begun at a place.
  void AddCircle(const Stop& from) {
    Array<OwnedCurve> parts;
    AppendPart(chain_.curves[0], from.t, from.t + 1, frame_, parts);
    SetStart(*parts.front().Get(), from.point);
    SetEnd(*parts.back().Get(), from.point);
    for (OwnedCurve& part : parts) trimmed_.Add(std::move(part));
  }

  Cvseq Release() { return trimmed_.Release(); }

 private:
  void AddCurve(const Curve& curve, const Stop* from, const Stop* to) {
    const Domain domain = DomainOf(curve);
    const double start = from ? from->t : domain.from, end = to ? to->t : domain.to;
    if ((from || to) && !(end - start > kLeastPart * (domain.to - domain.from))) return;
    Array<OwnedCurve> parts;
    AppendPart(curve, start, end, frame_, parts);
    if (parts.empty()) return;
    // Parts that share a place share its bits.
    if (start > domain.from) SetStart(*parts.front().Get(), from->point);
    if (end < domain.to) SetEnd(*parts.back().Get(), to->point);
    for (OwnedCurve& part : parts) trimmed_.Add(std::move(part));
  }

  const Cvseq& chain_;
  const Frame& frame_;
  OwnedChain trimmed_;
};

bool IsOneCircle(const Cvseq& chain, const Array<Span>& spans) {
  return chain.count == 1 && chain.curves[0].type == CV_ARC && spans[0].kind == Span::Kind::kArc &&
         spans[0].points[0] == spans[0].points[1];
}

Cvseq Trim(const Cvseq& chain, const SpanList& list, const Stop& from, const Stop& to,
           bool is_closed) {
  Trimmer trimmer(chain, list.frame);
  const bool is_same = !IsBefore(from, to) && !IsBefore(to, from);
  if (is_same && is_closed && IsOneCircle(chain, list.spans)) {
    trimmer.AddCircle(from);
  } else if (IsBefore(from, to)) {
    trimmer.Add(&from, &to);
  } else if (is_closed) {
    trimmer.Add(&from, nullptr);
    trimmer.Add(nullptr, &to);
  } else {
    Require(is_same, KURVO_ERR_RANGE);
  }
  return trimmer.Release();
}

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoChainTrim(const Cvseq* chain, const KurvoPlace* from, const KurvoPlace* to,
                              Cvseq* out, GlobalVar* g) noexcept {
  if (out && out != chain) KurvocvInitCvseq(out);
  return Answer(g, [&] {
    Require(out && out != chain, KURVO_ERR_OPTION);
    SpanList list;
    CollectSpans(chain, list);
    const double epsilon = GetEpsilon(g);
    RequireJoined(*chain, epsilon);
    const Stop start = StopAt(*chain, list, from), end = StopAt(*chain, list, to);
    *out = Trim(*chain, list, start, end, IsClosed(*chain, list.frame.size(), epsilon));
  });
}
