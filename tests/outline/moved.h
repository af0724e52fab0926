// Chains of tests at other sizes and places.
#pragma once

#include <string>

#include "support/curve_text.h"

namespace kurvo_test {

struct Move {
  double scale, shift;
};
constexpr Move kMoves[] = {{1, 0}, {1e-9, 0}, {1e9, 1e9}, {1, 1e6}};

inline Chain Moved(const std::string& text, const Move& move) {
  Chain chain(text);
  for (Curve& curve : chain)
    ForEachPoint(
        curve,
        [&](double* p) {
          for (int k = 0; k < 2; ++k) p[k] = p[k] * move.scale + move.shift;
        },
        [&](double& radius) { radius *= move.scale; });
  return chain;
}
// For its joints, which are rounded.
inline double EpsilonOf(const Move& move) { return 1e-12 * move.scale + 1e-9 * move.shift; }

}  // namespace kurvo_test
