// Bezier curves cut in two.
#include "control/casteljau_split.h"

#include <algorithm>
#include <type_traits>

#include "control/blossom.h"
#include "control/homogeneous.h"

namespace kurvo {
namespace {

// n is a number or, for the compiler to unroll the common degrees, an integral constant.
template <std::size_t kDim, class Degree>
void Split(double (*points)[kDim], Degree n, double t, double (*before)[kDim]) {
  for (int32_t l = 1; l <= n; ++l) {
    for (int32_t q = 0; q <= n - l; ++q) MixInto(points[q], points[q + 1], t, points[q]);
    std::copy_n(points[0], kDim, before[l]);
  }
}

template <std::size_t kDim>
void SplitOfDegree(double (*points)[kDim], int32_t n, double t, double (*before)[kDim]) {
  switch (n) {
    case 2:
      return Split(points, std::integral_constant<int32_t, 2>(), t, before);
    case 3:
      return Split(points, std::integral_constant<int32_t, 3>(), t, before);
    case 4:
      return Split(points, std::integral_constant<int32_t, 4>(), t, before);
    default:
      return Split(points, n, t, before);
  }
}

}  // namespace

template <std::size_t kDim>
void SplitBezier(double (*points)[kDim], int32_t n, double t, double (*before)[kDim]) {
  double end[kDim];
  std::copy_n(points[0], kDim, before[0]);
  std::copy_n(points[n], kDim, end);
  for (int32_t i = 0; i <= n; ++i) points[i][2] = 0.0;
  ToHomogeneous(points, n + 1);
  SplitOfDegree(points, n, t, before);
  ToCartesian(points, n);
  ToCartesian(before + 1, n);
  std::copy_n(end, kDim, points[n]);
}

template void SplitBezier(double (*)[3], int32_t, double, double (*)[3]);
template void SplitBezier(double (*)[4], int32_t, double, double (*)[4]);

}  // namespace kurvo
