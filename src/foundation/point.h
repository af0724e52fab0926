// Points and vectors as values; arrays of doubles exist only at the interface.
#pragma once

#include <cmath>

#include "kurvo.h"

namespace kurvo {

struct Vec2 {
  double x = 0;
  double y = 0;
};

struct Vec3 {
  double x = 0;
  double y = 0;
  double z = 0;
};

inline Vec2 operator+(Vec2 a, Vec2 b) { return {a.x + b.x, a.y + b.y}; }
inline Vec2 operator-(Vec2 a, Vec2 b) { return {a.x - b.x, a.y - b.y}; }
inline Vec2 operator*(double s, Vec2 v) { return {s * v.x, s * v.y}; }
inline double Dot(Vec2 a, Vec2 b) { return a.x * b.x + a.y * b.y; }
inline double Cross(Vec2 a, Vec2 b) { return a.x * b.y - a.y * b.x; }
inline double Length(Vec2 v) { return std::sqrt(v.x * v.x + v.y * v.y); }

inline Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3 operator*(double s, Vec3 v) { return {s * v.x, s * v.y, s * v.z}; }
inline Vec3 operator/(Vec3 v, double s) { return {v.x / s, v.y / s, v.z / s}; }
inline double Dot(Vec3 a, Vec3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline double Length(Vec3 v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }

inline Vec2 Planar(const double* p) { return {p[0], p[1]}; }
inline Vec2 Planar(Vec3 p) { return {p.x, p.y}; }
inline Vec3 Spatial(const double* p) { return {p[0], p[1], p[2]}; }
inline Vec3 OnPlane(Vec2 p) { return {p.x, p.y, 0.0}; }

inline void Store(Vec3 p, double* out) {
  out[0] = p.x;
  out[1] = p.y;
  out[2] = p.z;
}

// The weight of a stored control point, 1 for one that has none.
inline double WeightOf(const double (&)[3]) { return 1.0; }
inline double WeightOf(const double (&point)[4]) { return point[3]; }

// True when every component of v is within `length_tol` of 0; a NaN component fails.
inline bool Within(Vec3 v, double length_tol) {
  return length_tol >= std::fabs(v.x) && length_tol >= std::fabs(v.y) &&
         length_tol >= std::fabs(v.z);
}

// Points coincide when every coordinate agrees, not by Euclidean distance.
inline bool SamePoint(Vec3 a, Vec3 b, double length_tol) { return Within(a - b, length_tol); }

}  // namespace kurvo
