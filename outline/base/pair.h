// Two numbers side by side, for loops over many points that would be held up otherwise.
#pragma once

#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "base/vec2.h"

namespace kurvo::outline {

// The same bits with and without instructions for two numbers at once.
class Pair {
 public:
  Pair() = default;  // uninitialised
#ifdef __SSE2__
  explicit Pair(double both) : v_(_mm_set1_pd(both)) {}
  explicit Pair(Vec2 p) : v_(_mm_setr_pd(p.x, p.y)) {}
  explicit Pair(const double* p) : v_(_mm_loadu_pd(p)) {}

  double x() const { return _mm_cvtsd_f64(v_); }
  double y() const { return _mm_cvtsd_f64(_mm_unpackhi_pd(v_, v_)); }

  friend Pair operator+(Pair a, Pair b) { return Pair(_mm_add_pd(a.v_, b.v_)); }
  friend Pair operator-(Pair a, Pair b) { return Pair(_mm_sub_pd(a.v_, b.v_)); }
  friend Pair operator*(Pair a, Pair b) { return Pair(_mm_mul_pd(a.v_, b.v_)); }
  // b where one of them is not a number.
  friend Pair Least(Pair a, Pair b) { return Pair(_mm_min_pd(a.v_, b.v_)); }
  friend Pair Most(Pair a, Pair b) { return Pair(_mm_max_pd(a.v_, b.v_)); }

 private:
  explicit Pair(__m128d v) : v_(v) {}

  __m128d v_;
#else
  explicit Pair(double both) : v_{both, both} {}
  explicit Pair(Vec2 p) : v_(p) {}
  explicit Pair(const double* p) : v_{p[0], p[1]} {}

  double x() const { return v_.x; }
  double y() const { return v_.y; }

  friend Pair operator+(Pair a, Pair b) { return Pair(a.v_ + b.v_); }
  friend Pair operator-(Pair a, Pair b) { return Pair(a.v_ - b.v_); }
  friend Pair operator*(Pair a, Pair b) { return Pair(Vec2{a.v_.x * b.v_.x, a.v_.y * b.v_.y}); }
  // b where one of them is not a number.
  friend Pair Least(Pair a, Pair b) {
    return Pair(Vec2{std::min(b.v_.x, a.v_.x), std::min(b.v_.y, a.v_.y)});
  }
  friend Pair Most(Pair a, Pair b) {
    return Pair(Vec2{std::max(b.v_.x, a.v_.x), std::max(b.v_.y, a.v_.y)});
  }

 private:
  Vec2 v_;
#endif

 public:
  Vec2 both() const { return {x(), y()}; }
};

inline double SquaredLength(Pair p) {
  const Pair squares = p * p;
  return squares.x() + squares.y();
}

}  // namespace kurvo::outline
