// Curves for the benchmarks: fixed, of unit size, made from a seeded generator.
#pragma once

#include <cstdint>
#include <random>

#include "kurvo.h"

namespace bench {

// A curve that frees itself, with the record it is asked through.
class OwnCurve {
 public:
  OwnCurve() {
    KurvoInitGlobalVar(&g);
    KurvocvInitCurve(&curve);
  }
  ~OwnCurve() { KurvocvFreeCurve(&curve); }
  OwnCurve(const OwnCurve&) = delete;
  OwnCurve& operator=(const OwnCurve&) = delete;

  Curve curve;
  GlobalVar g;
};

constexpr unsigned kSeed = 20240917;

class Random {
 public:
  double Unit() { return std::uniform_real_distribution<double>(0.0, 1.0)(engine_); }

 private:
  std::mt19937_64 engine_{kSeed};
};

inline void MakeLine(OwnCurve& own) {
  auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(&own.curve, CV_LINE));
  KurvoclSetCoord(line->start, 0.1, 0.2, 0.0);
  KurvoclSetCoord(line->end, 0.9, 0.7, 0.0);
}

inline void MakeArc(OwnCurve& own) {  // three quarters of a turn
  auto* arc = static_cast<KurvoArc*>(KurvocvMallocCurve(&own.curve, CV_ARC));
  arc->radius = 0.5;
  KurvoclSetCoord(arc->centre, 0.5, 0.5, 0.0);
  KurvoclSetCoord(arc->normal, 0.0, 0.0, 1.0);
  KurvoclSetCoord(arc->start, 1.0, 0.5, 0.0);
  KurvoclSetCoord(arc->end, 0.5, 0.0, 0.0);
}

// Control points that advance in x and wave in y, as an outline's do.
template <class Point>
void Wave(Point* points, int32_t count, int32_t size, Random& random) {
  for (int32_t i = 0; i < count; ++i) {
    points[i][0] = count > 1 ? double(i) / (count - 1) : 0.0;
    points[i][1] = random.Unit();
    points[i][2] = 0.0;
    if (size == 4) points[i][size - 1] = 0.5 + random.Unit();
  }
}

inline void MakeBezier(OwnCurve& own, int32_t degree) {
  Random random;
  auto* block = static_cast<KurvoBezier*>(KurvocvMallocCurve(&own.curve, CV_BEZIER, degree));
  Wave(block->points, degree + 1, 3, random);
}

inline void MakeRationalBezier(OwnCurve& own, int32_t degree) {
  Random random;
  auto* block = static_cast<KurvoRBezier*>(KurvocvMallocCurve(&own.curve, CV_RBEZIER, degree));
  Wave(block->points, degree + 1, 4, random);
}

// Clamped, with uniform inner knots over [0, 1].
inline void UniformKnots(double* knots, int32_t order, int32_t count) {
  const int32_t spans = count - order + 1;
  for (int32_t i = 0; i < order + count; ++i) {
    const int32_t inner = i < order ? 0 : (i >= count ? spans : i - order + 1);
    knots[i] = double(inner) / spans;
  }
}

inline void MakeBSpline(OwnCurve& own, int32_t order, int32_t count) {
  Random random;
  auto* block =
      static_cast<KurvoBSpline*>(KurvocvMallocCurve(&own.curve, CV_BSPLINE, order, count));
  Wave(block->points, count, 3, random);
  UniformKnots(block->knots, order, count);
}

inline void MakeRationalBSpline(OwnCurve& own, int32_t order, int32_t count) {
  Random random;
  auto* block =
      static_cast<KurvoRBSpline*>(KurvocvMallocCurve(&own.curve, CV_RBSPLINE, order, count));
  Wave(block->points, count, 4, random);
  UniformKnots(block->knots, order, count);
}

}  // namespace bench
