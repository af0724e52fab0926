// Bezier curves cut in two.
#include "control/casteljau_split.h"

#include <algorithm>

#include "control/blossom.h"
#include "control/homogeneous.h"
#include "foundation/with_constant.h"

namespace kurvo {
namespace {

// A function of its own, so that t lies in a register: no point that is written can change it. The
// z of plain points is 0 already.
template <std::size_t kDim, class Degree>
void Split(double (*points)[kDim], Degree n, double t, double (*before)[kDim]) {
  constexpr std::size_t kMixed = kDim == 3 ? 2 : kDim;
  ToBothEdges(
      points, n, before, [t](auto& a, const auto& b) __attribute__((always_inline)) {
        for (std::size_t c = 0; c < kMixed; ++c) a[c] = (1.0 - t) * a[c] + t * b[c];
      });
}

}  // namespace

template <std::size_t kDim>
void SplitBezier(double (*points)[kDim], int32_t n, double t, double (*before)[kDim]) {
  double end[kDim];
  std::copy_n(points[0], kDim, before[0]);
  std::copy_n(points[n], kDim, end);
  for (int32_t i = 0; i <= n; ++i) points[i][2] = 0.0;
  ToHomogeneous(points, n + 1);
  WithConstant<2, 3, 4>(n, [&](auto degree) { Split(points, degree, t, before); });
  ToCartesian(points, n);
  ToCartesian(before + 1, n);
  std::copy_n(end, kDim, points[n]);
}

template void SplitBezier(double (*)[3], int32_t, double, double (*)[3]);
template void SplitBezier(double (*)[4], int32_t, double, double (*)[4]);

}  // namespace kurvo
