// Lines and circles that touch beyond their ends.
#include "relate/intersect/shared_ends.h"

#include <cmath>

#include "foundation/error_codes.h"
#include "relate/intersect/within_ends.h"

namespace kurvo {
namespace {

bool IsElementary(const Curve& curve) { return curve.type == CV_LINE || curve.type == CV_ARC; }

// The parameter on `curve` of an end of `other`; false when that lies off the curve.
bool FindEnd(const Curve& other, double end, const Curve& curve, double& t, GlobalVar& g) {
  Coord p;
  (end == 0.0 ? KurvocvStartPoint : KurvocvEndPoint)(&other, p, &g);
  return KurvocvParameter(&curve, p, &t, &g) == KURVO_ON_CURVE && !ErrorPending(g);
}

}  // namespace

void MoveTouchToEnds(const Curve& a, const Curve& b, Bounded bounded, GlobalVar& g,
                     Crossings& found) {
  if (found.size() != 1 || !IsElementary(a) || !IsElementary(b)) return;
  const Crossing touch = found[0];
  KeepBounded(a, b, bounded, g, found);
  if (!found.empty()) return;
  const auto offer = [&](const Crossing& at) {
    const double way = std::fabs(at.first - touch.first);
    if (found.empty()) found.push_back(at);
    if (way < std::fabs(found[0].first - touch.first)) found[0] = at;
  };
  for (const double end : {0.0, 1.0}) {
    double t = 0.0;
    if (bounded.first && FindEnd(a, end, b, t, g)) offer({end, t});
    if (bounded.second && FindEnd(b, end, a, t, g)) offer({t, end});
  }
}

}  // namespace kurvo
