// Degree elevation of Bezier curves.
#include "control/degree_elevation.h"

namespace kurvo {

// Q_i = i / (n + 1) P_(i-1) + (1 - i / (n + 1)) P_i  (Farin, Curves and Surfaces for CAGD, 6.1)
template <std::size_t kDim>
void ElevateDegree(double (*points)[kDim], int32_t n) {
  for (std::size_t c = 0; c < kDim; ++c) points[n + 1][c] = points[n][c];
  for (int32_t i = n; i > 0; --i) {
    const double share = static_cast<double>(i) / (static_cast<double>(n) + 1.0);
    for (std::size_t c = 0; c < kDim; ++c)
      points[i][c] = share * points[i - 1][c] + (1.0 - share) * points[i][c];
  }
}

template void ElevateDegree(double (*)[3], int32_t);
template void ElevateDegree(double (*)[4], int32_t);

}  // namespace kurvo
