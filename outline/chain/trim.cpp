// The part of a chain between two places.
#include <kurvo_outline.h>

#include "base/owned.h"
#include "base/refusal.h"
#include "chain/place.h"
#include "chain/trimmer.h"
#include "strand/check.h"
#include "strand/joints.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

Stop StopAt(const Cvseq& chain, const SpanList& list, const KurvoPlace* place) {
  Require(place, KURVO_ERR_OPTION);
  const OnSpan at = Find(list.spans, *place);
  KurvoPlace found = *place;
  const Vec2 point = list.frame.Outwards(PointAt(list.spans[at.span], at.u));
  KurvoclSetCoord(found.point, point.x, point.y, 0);
  return StopOf(chain, found);
}

bool IsBefore(const Stop& a, const Stop& b) {
  return a.index < b.index || (a.index == b.index && a.t < b.t);
}

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
  return trimmer.Take().Release();
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
