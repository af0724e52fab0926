// Points and vectors of the plane.
#pragma once

#include <cmath>

namespace kurvo::outline {

struct Vec2 {  // uninitialised unless a value is given
  double x, y;

  bool operator==(const Vec2&) const = default;
};

inline Vec2 operator+(Vec2 a, Vec2 b) { return {a.x + b.x, a.y + b.y}; }
inline Vec2 operator-(Vec2 a, Vec2 b) { return {a.x - b.x, a.y - b.y}; }
inline Vec2 operator-(Vec2 a) { return {-a.x, -a.y}; }
inline Vec2 operator*(double s, Vec2 v) { return {s * v.x, s * v.y}; }
inline double Dot(Vec2 a, Vec2 b) { return a.x * b.x + a.y * b.y; }
inline double Cross(Vec2 a, Vec2 b) { return a.x * b.y - a.y * b.x; }
inline double SquaredLength(Vec2 v) { return Dot(v, v); }
inline double Length(Vec2 v) { return std::sqrt(Dot(v, v)); }  // of values a frame has scaled
inline double SafeLength(Vec2 v) {  // of any values: squares may leave the range of double
  const double square = Dot(v, v);
  return square > 0x1p-900 && square < 0x1p1000 ? std::sqrt(square) : std::hypot(v.x, v.y);
}
inline Vec2 Left(Vec2 v) { return {-v.y, v.x}; }  // a quarter turn counter-clockwise
inline Vec2 Mix(Vec2 a, Vec2 b, double t) { return (1 - t) * a + t * b; }
inline bool IsFinite(Vec2 v) { return std::isfinite(v.x) && std::isfinite(v.y); }

}  // namespace kurvo::outline
