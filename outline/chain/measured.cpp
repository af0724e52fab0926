#include "chain/measured.h"

#include <algorithm>
#include <cmath>

#include "base/sum.h"
#include "strand/joints.h"

namespace kurvo::outline {

void Measure(const Cvseq* chain, double epsilon, MeasuredChain& measured) {
  CollectSpans(chain, measured.list);
  RequireJoined(*chain, epsilon);
  measured.is_closed = IsClosed(*chain, measured.list.frame.size(), epsilon);
  measured.before.reserve(measured.list.spans.size() + 1);
  Sum sum;
  measured.before.push_back(0);
  for (const Span& span : measured.list.spans) {
    sum.Add(Speed(span).Whole());
    measured.before.push_back(sum.Value());
  }
}

// Halley's iteration on length(u) - target, kept within a bracket that halves when a step leaves
// it. The length is carried from step to step by the integral between them, so that later steps,
// which are short, cost one small rule each.
double SpanWalk::At(double target) {
  constexpr double kSettled = 0x1p-51;  // of the length of the span
  constexpr int kMostSteps = 100;       // halving alone needs 53; then the last is taken
  if (!(length_ > 0)) return 0;
  if (speed_.IsConstant()) return std::clamp(target / length_, 0.0, 1.0);
  if (target >= length_) return 1;
  if (last_.length >= target) return last_.u;

  Stop low = last_, high = {1, length_}, at = low;
  const double share = (target - low.length) / (high.length - low.length);
  double next = std::clamp(low.u + share * (high.u - low.u), low.u, high.u);
  for (int step = 0; step < kMostSteps && next != at.u; ++step) {
    at.length += next > at.u ? speed_.Integral(at.u, next) : -speed_.Integral(next, at.u);
    at.u = next;
    const double beyond = at.length - target;
    if (kSettled * length_ >= std::fabs(beyond)) break;
    (beyond > 0 ? high : low) = at;
    const Speed::Rates rates = speed_.RatesAt(at.u);
    next =
        at.u - 2 * beyond * rates.speed / (2 * rates.speed * rates.speed - beyond * rates.change);
    if (!(next > low.u && next < high.u)) next = 0.5 * (low.u + high.u);
  }
  last_ = at;
  return at.u;
}

}  // namespace kurvo::outline
