// The area between a span and a point, and its moments.
#pragma once

#include "base/sum.h"
#include "strand/span.h"

namespace kurvo::outline {

// Integrals over the fan of all segments from the origin to the points of a curve, of 1, x, y,
// x x, x y and y y, counter-clockwise positive. Of a closed curve their sum is that over what it
// surrounds. By Green's theorem the integral of a function homogeneous of degree k is that of
// f(p) p x p' du over k + 2 (Steger, On the calculation of arbitrary moments of polygons, 1996).
struct Fan {
  double one = 0, x = 0, y = 0, xx = 0, xy = 0, yy = 0;
};

// Fans added up. What chords add and take away again leaves no rounding in thin shapes.
class Fans {
 public:
  void Add(const Fan& fan) {
    const double terms[kTerms] = {fan.one, fan.x, fan.y, fan.xx, fan.xy, fan.yy};
    for (int i = 0; i < kTerms; ++i) sums_[i].Add(terms[i]);
  }
  Fan Value() const {
    return {sums_[0].Value(), sums_[1].Value(), sums_[2].Value(),
            sums_[3].Value(), sums_[4].Value(), sums_[5].Value()};
  }

 private:
  static constexpr int kTerms = 6;
  Sum sums_[kTerms];
};

// The fan of a straight line.
Fan FanOfLine(Vec2 from, Vec2 to);

// Adds the fan of a span: exact but for rounding, of rational spans to 1e-14 of what is summed.
void AddFan(const Span& span, Fans& fans);

}  // namespace kurvo::outline
