#include "region/bridged.h"

#include "base/refusal.h"
#include "strand/joints.h"

namespace kurvo::outline {
namespace {

// Calls curve(i) for each curve and bridge(from, to) for each joint wider than epsilon, in order.
template <class UseCurve, class UseBridge>
void ForEachJoint(const Cvseq& chain, double epsilon, double gap, bool is_loop,
                  const UseCurve& curve, const UseBridge& bridge) {
  Ends whole, ends;
  const bool has_ends = EndsOf(chain, whole);
  const auto joint = [&](Vec2 from, Vec2 to) {
    if (Meet(from, to, epsilon)) return;
    Require(Meet(from, to, gap), KURVO_ERR_CHAIN_ENDS);
    bridge(from, to);
  };
  Vec2 last = has_ends ? whole.start : Vec2{};
  for (int32_t i = 0; i < chain.count; ++i) {
    const bool has_own = EndsOf(chain.curves[i], ends);
    if (has_own) joint(last, ends.start);
    curve(i);
    if (has_own) last = ends.end;
  }
  if (is_loop && has_ends) joint(last, whole.start);
}

}  // namespace

int32_t WideJoints(const Cvseq& chain, double epsilon, double gap, bool is_loop) {
  int32_t count = 0;
  ForEachJoint(
      chain, epsilon, gap, is_loop, [](int32_t) {}, [&](Vec2, Vec2) { ++count; });
  return count;
}

OwnedChain Bridged(const Cvseq& chain, double epsilon, double gap, bool is_loop,
                   Array<int32_t>* sources) {
  OwnedChain bridged;
  const auto name = [&](int32_t source) {
    if (sources) sources->push_back(source);
  };
  ForEachJoint(
      chain, epsilon, gap, is_loop,
      [&](int32_t i) {
        bridged.Add(CopyOf(chain.curves[i]));
        name(i);
      },
      [&](Vec2 from, Vec2 to) {
        bridged.Add(LineBetween(from, to));
        name(-1);
      });
  return bridged;
}

}  // namespace kurvo::outline
