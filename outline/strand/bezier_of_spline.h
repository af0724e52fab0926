// The polynomial that a B-spline is between two of its knots.
#pragma once

#include "strand/check.h"

namespace kurvo::outline {

// Bezier coefficients of a B-spline of degree p between the different knots k and k + 1, from its
// control points k - p ... k, which become the result. `knots` is the whole knot vector.
//
// Two triangles of blossoms (Ramshaw, Blossoms are polar forms, 1989). With a = u_k, b = u_k+1 the
// control points are f[u_i+1 ... u_i+p]; the first triangle brings a in from the left and leaves
// f[a^(p-s), u_k+1 ... u_k+s], the second brings b in and leaves f[a^(p-s), b^s]. O(p^2).
template <class T>
void BezierOfSpline(const double* knots, int k, int p, T* points) {
  const double a = knots[k], b = knots[k + 1];
  for (int r = 1; r <= p; ++r) {
    for (int i = 0; i <= p - r; ++i) {
      const double low = knots[k - p + r + i], high = knots[k + 1 + i];
      const double share = (a - low) / (high - low);
      points[i] = (1 - share) * points[i] + share * points[i + 1];
    }
  }
  for (int r = 1; r < p; ++r) {
    for (int s = p; s > r; --s) {
      const double share = (b - a) / (knots[k + s - r + 1] - a);
      points[s] = (1 - share) * points[s - 1] + share * points[s];
    }
  }
}

}  // namespace kurvo::outline
