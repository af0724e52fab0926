// The triangle of points behind de Casteljau's algorithm, de Boor's and Boehm's knot insertion.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace kurvo {

// (1 - s) a + s b, of vectors. Inlined in every build: a call would cost more than the mix.
template <class Vector>
[[gnu::always_inline]] inline Vector Mix(const Vector& a, const Vector& b, double s) {
  return (1.0 - s) * a + s * b;
}

// The same, of vectors and of arrays of components, written to `out`.
template <class Point>
[[gnu::always_inline]] inline void MixInto(const Point& a, const Point& b, double s, Point& out) {
  if constexpr (requires { a[0]; }) {
    constexpr std::size_t kSize = sizeof(Point) / sizeof(a[0]);
    for (std::size_t c = 0; c < kSize; ++c) out[c] = (1.0 - s) * a[c] + s * b[c];
  } else {
    out = Mix(a, b, s);
  }
}

// Level 0 of the triangle holds the `levels` + 1 control points of a polynomial, plain or
// homogeneous. Item q of level l is (1 - s) times item q of the level above plus s times item q +
// 1, where s = share(l, q) says how far the new parameter c lies between the two parameters in
// which the blossoms of the two differ (Ramshaw, Computer Aided Geometric Design 6, 1989). The apex
// is the point at c, the right edge of the triangle controls the curve after c, the left edge the
// curve before it. Both edges come from the same operations: their apexes agree to the bit.

// Replaces the points, in place, by the right edge, from the apex on. The last point stays.
template <std::size_t kDim, class Share>
void ToRightEdge(double (*points)[kDim], int32_t levels, Share&& share) {
  for (int32_t l = 1; l <= levels; ++l)
    for (int32_t q = 0; q <= levels - l; ++q)
      MixInto(points[q], points[q + 1], share(l, q), points[q]);
}

// Replaces the points, in place, by the left edge, to the apex. The first point stays.
template <std::size_t kDim, class Share>
void ToLeftEdge(double (*points)[kDim], int32_t levels, Share&& share) {
  for (int32_t l = 1; l <= levels; ++l)
    for (int32_t q = levels - l; q >= 0; --q)
      MixInto(points[q + l - 1], points[q + l], share(l, q), points[q + l]);
}

// Both edges: `points` become the right one, left[1] to left[n] the points of the left one after
// the first. mix(a, b) replaces a by the point between a and b. `n` is a number or, for the
// compiler to unroll the loops, an integral constant.
template <class Point, class Degree, class MixPoints>
void ToBothEdges(Point* points, Degree n, Point* left, MixPoints&& mix) {
  const int32_t levels = n;
  for (int32_t l = 1; l <= levels; ++l) {
    for (int32_t q = 0; q <= levels - l; ++q) mix(points[q], points[q + 1]);
    std::memcpy(left + l, points, sizeof(Point));
  }
}

// Boehm's knot insertion (Computer-Aided Design 12, 1980) on one span [u[0], u[1]] of a B-spline of
// order k: raises first its left knot, then its right one to full multiplicity. In the blossom f of
// the span, with p = k - 1,
//   e[q] starts as  f(u[q+1-p], ..., u[q]), the control point,
//   then becomes    f(u[0] p-q times, u[1], ..., u[q]),
//   and ends as     f(u[0] p-q times, u[1] q times), the Bezier point q.
// Every step is a convex combination for ascending knots.
template <class Point, class Order>
void RaiseSpanKnots(Order k, const double* u, Point* e) {
  const int32_t p = k - 1;
  if (u[1 - p] != u[0]) {
    for (int32_t r = 1; r < p; ++r)
      for (int32_t q = 0; q < p - r; ++q)
        MixInto(e[q], e[q + 1], (u[0] - u[q + r - p]) / (u[q + 1] - u[q + r - p]), e[q]);
  }
  if (u[p] != u[1]) {
    for (int32_t s = 1; s < p; ++s)
      for (int32_t q = p; q > s; --q)
        MixInto(e[q], e[q - 1], (u[1 + q - s] - u[1]) / (u[1 + q - s] - u[0]), e[q]);
  }
}

}  // namespace kurvo
