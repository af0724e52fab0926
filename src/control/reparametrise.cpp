// Bezier curves over another range of their parameter.
#include "control/reparametrise.h"

#include <algorithm>

#include "control/blossom.h"
#include "control/homogeneous.h"

namespace kurvo {
namespace {

// [0, 1] becomes [t, 1].
template <std::size_t kDim>
void MoveStart(double (*points)[kDim], int32_t n, double t) {
  if (t != 0.0) ToRightEdge(points, n, [t](int32_t, int32_t) { return t; });
}

// [0, 1] becomes [0, t].
template <std::size_t kDim>
void MoveEnd(double (*points)[kDim], int32_t n, double t) {
  if (t != 1.0) ToLeftEdge(points, n, [t](int32_t, int32_t) { return t; });
}

}  // namespace

template <std::size_t kDim>
void Reparametrise(double (*points)[kDim], int32_t n, double s0, double s1) {
  double start[kDim], end[kDim];
  std::copy_n(points[0], kDim, start);
  std::copy_n(points[n], kDim, end);
  ToHomogeneous(points, n + 1);
  if (s1 > 1.0) {  // grows first, so that the second step divides by more than 1
    MoveEnd(points, n, s1);
    MoveStart(points, n, s0 / s1);
  } else {
    MoveStart(points, n, s0);
    MoveEnd(points, n, (s1 - s0) / (1.0 - s0));
  }
  ToCartesian(points, n + 1);
  if (s0 == 0.0) std::copy_n(start, kDim, points[0]);
  if (s1 == 1.0) std::copy_n(end, kDim, points[n]);
}

template void Reparametrise(double (*)[3], int32_t, double, double);
template void Reparametrise(double (*)[4], int32_t, double, double);

}  // namespace kurvo
