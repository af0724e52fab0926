// Chains of random curves.
#pragma once

#include <utility>
#include <vector>

#include "support/generator.h"

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

}  // namespace kurvo_test
