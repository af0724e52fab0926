// Chains and regions of random curves.
#pragma once

#include <utility>
#include <vector>

#include "support/generator.h"
#include "support/region.h"

namespace kurvo_test {

// Up to five curves of any type, each from the end of the one before; closed or not.
inline Chain RandomChain(Random& random, bool closed) {
  std::vector<Owned> curves;
  XY at = RandomPlace(random);
  const XY start = at;
  for (int left = RandomInt(random, 1, 5); left > 0; --left) {
    const XY next = closed && left == 1 ? start : RandomPlace(random);
    const bool loops = next.x == at.x;  // lines and arcs cannot
    curves.push_back(loops ? MakeFreeForm(CV_BEZIER, {at.x, at.y, 9, 1, -7, 3, at.x, at.y})
                           : RandomBetween(random, at, next));
    at = next;
  }
  return Chain(std::move(curves));
}

// Loops of random curves that close to the last bit; some twice, some of nothing, some there and
// back.
inline Region RandomRegion(Random& random, double scale, double far = 0) {
  Region region;
  for (int loops = RandomInt(random, 1, 4); loops > 0; --loops) {
    std::vector<Owned> curves;
    const XY first = RandomPlace(random);
    XY at = first;
    for (int left = RandomInt(random, 0, 4); left >= 0; --left) {
      const XY next = left ? Chance(random, .1) ? at : RandomPlace(random) : first;
      if (at.x != next.x || at.y != next.y) curves.push_back(RandomBetween(random, at, next));
      at = next;
    }
    const Chain loop(std::move(curves));
    for (const Curve& curve : loop)
      ForEachPoint(
          curve,
          [=](double* p) {
            p[0] = scale * p[0] + far;
            p[1] = scale * p[1] - far;
          },
          [=](double& radius) { radius *= scale; });
    for (int copies = RandomInt(random, 1, 5) / 4; copies >= 0; --copies)
      region.Add(loop, 1e-6 * scale);
  }
  return region;
}

inline bool IsFilled(int turns, int32_t rule) {
  const bool filled[] = {turns != 0, turns % 2 != 0, turns > 0, turns < 0};
  return filled[rule];
}

}  // namespace kurvo_test
