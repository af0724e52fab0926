// For the tests that are still to move to support/.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

#include "support/curve_text.h"
#include "support/generator.h"

namespace kurvo_test {

// The angles that an arc starts at and sweeps, negative for a clockwise one.
struct WideTurn {
  long double start, sweep;
};
inline WideTurn Turn(const KurvoArc& arc) {
  const auto angle = [&](const double* p) {
    return std::atan2(L(p[1]) - arc.centre[1], L(p[0]) - arc.centre[0]);
  };
  const long double start = angle(arc.start);
  long double sweep = angle(arc.end) - start;
  if (arc.normal[2] < 0 && sweep > 0) sweep -= 2 * kPiL;
  if (!(arc.normal[2] < 0) && sweep < 0) sweep += 2 * kPiL;
  return {start, sweep};
}

}  // namespace kurvo_test
