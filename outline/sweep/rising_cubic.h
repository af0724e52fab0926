// Where a cubic that rises all the way has a height.
#pragma once

#include <algorithm>
#include <cmath>

namespace kurvo::outline {

// y = y1 v + y2 v^2 + y3 v^3 for v in [0, 1], without a fall; it may be level at its ends.
struct RisingCubic {
  double y1, y2, y3;

  // Near where it has a height out of [0, top], y at 1: by the parabola through both ends that has
  // the cubic's slope at the nearer one.
  double Guess(double height, double top) const {
    const bool is_low = height < 0.5 * top;
    const double slope = is_low ? y1 : y1 + 2 * y2 + 3 * y3;
    const double away = is_low ? height : top - height;
    const double square = slope * slope + 4 * (top - slope) * away;
    const double way = 2 * away / (slope + std::sqrt(std::max(square, 0.0)));
    return is_low ? way : 1 - way;
  }

  // Where it has the height, between two parameters: Newton's method from v, in a bracket. The miss
  // of the last step is below the rounding of parameters, and is not looked at again.
  double Solve(double height, double least, double most, double v) const {
    constexpr int kMostSteps = 60;
    constexpr double kRounding = 0x1p-53;
    if (!(v > least && v < most)) v = 0.5 * (least + most);
    for (int step = 0; step < kMostSteps; ++step) {
      const double miss = v * (y1 + v * (y2 + v * y3)) - height;
      if (miss == 0) return v;
      (miss > 0 ? most : least) = v;
      const double slope = y1 + v * (2 * y2 + 3 * v * y3);
      double next = slope > 0 ? v - miss / slope : -1;
      const bool is_inside = next > least && next < most;
      if (!is_inside) next = 0.5 * (least + most);
      const double way = std::fabs(next - v);
      // The remainder of Taylor's series: half the second derivative on the way times its square.
      const double bend = std::fabs(y2 + 3 * v * y3) + 3 * std::fabs(y3) * way;
      if (kRounding >= way || (is_inside && kRounding * slope >= bend * (way * way))) return next;
      v = next;
    }
    return v;
  }
};

}  // namespace kurvo::outline
