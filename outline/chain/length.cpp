// The length of a chain.
#include <kurvo_outline.h>

#include "base/refusal.h"
#include "base/sum.h"
#include "chain/speed.h"
#include "strand/joints.h"
#include "strand/spans.h"

using namespace kurvo::outline;

extern "C" int KurvoChainLength(const Cvseq* chain, double* length, GlobalVar* g) noexcept {
  return Answer(g, [&] {
    Require(length, KURVO_ERR_OPTION);
    const Frame frame = FrameOf(chain);
    RequireJoined(*chain, GetEpsilon(g));
    Sum sum;
    ForEachSpan(*chain, frame, [&sum](const Span& span) { sum.Add(Speed(span).Whole()); });
    *length = frame.LengthOutwards(sum.Value());
  });
}
