// Letters as regions, placed.
#pragma once

#include <cmath>

#include "support/generator.h"
#include "support/letters.h"
#include "support/region.h"

namespace kurvo_test {

// p -> origin + scale (turned p), about the middle of the em.
struct Placed {
  double turn = 0, dx = 0, dy = 0, scale = 1, far = 0;

  XY operator()(XY p) const {
    const double c = std::cos(turn), s = std::sin(turn), x = p.x - 500, y = p.y - 500;
    return {scale * (c * x - s * y + 500 + dx) + far, scale * (s * x + c * y + 500 + dy) - far};
  }
};

inline Region GlyphRegion(const std::string& path, const Placed& place) {
  Region region;
  for (const auto& contour : ContoursOf(path, [&](double x, double y) { return place({x, y}); })) {
    std::vector<Owned> curves;
    for (const std::vector<XY>& piece : contour) {
      Numbers numbers;
      for (const XY p : piece) numbers.insert(numbers.end(), {p.x, p.y});
      curves.push_back(piece.size() == 2 ? LineBetween(piece[0], piece[1])
                                         : MakeFreeForm(CV_BEZIER, numbers));
    }
    region.Add(Chain(std::move(curves)));
  }
  return region;
}

}  // namespace kurvo_test
