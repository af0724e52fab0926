// A B-spline through given points.
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include "build/interpolate_solve.h"
#include "eval/polynomial.h"
#include "foundation/guard.h"
#include "foundation/new_array.h"
#include "foundation/parallel_for.h"
#include "foundation/point.h"
#include "records/owned_curve.h"

namespace kurvo {
namespace {

// How many times as large as the points the control points may be: rounding then carries the curve
// about 1e-8 of their size off the points.
constexpr double kMaxGrowth = 1e8;

// Coordinates whose squares neither overflow nor vanish are used as they are.
constexpr double kLargestUnscaled = 0x1p500;
constexpr double kSmallestUnscaled = 0x1p-500;
constexpr int kMaxExponent = 1000;  // of the scale

// What the polynomials of an evaluator hold: every query answers on the result.
constexpr int32_t kMaxFitOrder = Polynomial::kCapacity;

// Below this difference neighbouring parameters are too much alike to tell two points apart: a few
// hundred units in the last place of the end of the domain.
constexpr double kParametersApart = 0x1p-44;

// From how many points on their loops, of a few nanoseconds a point, are worth other threads.
constexpr std::ptrdiff_t kManyPoints = 400000;

constexpr double kMax = std::numeric_limits<double>::max();

const double* PointAt(const double* points, std::ptrdiff_t i) { return points + 3 * i; }

bool CanPass(const double* points, int32_t count, double length_tol) {
  return ParallelAll(count, kManyPoints, [=](std::ptrdiff_t begin, std::ptrdiff_t end) {
    for (std::ptrdiff_t i = begin; i < end; ++i) {
      const double* p = PointAt(points, i);
      if (!std::isfinite(p[0]) || !std::isfinite(p[1]) || !std::isfinite(p[2])) return false;
      if (i > 0 && SamePoint(OnPlane(Planar(p)), OnPlane(Planar(p - 3)), length_tol)) return false;
    }
    return true;
  });
}

double LargestCoordinate(const double* points, int32_t count) {
  double largest = 0.0;
  for (int32_t i = 0; i < count; ++i) {
    const double* p = PointAt(points, i);
    largest = std::max(largest, std::max(std::fabs(p[0]), std::fabs(p[1])));
  }
  return largest;
}

// The power of two that the coordinates are multiplied by.
double ScaleFor(double largest) {
  if ((kLargestUnscaled >= largest && largest >= kSmallestUnscaled) || !(largest > 0.0)) return 1.0;
  return std::ldexp(1.0, std::min(-std::ilogb(largest), kMaxExponent));
}

// Writes t[0 .. count - 1], the length of the polygon up to each point as a share of the whole;
// exactly 0 and 1 at the ends. False when they do not ascend by more than kParametersApart. Lengths
// are taken after multiplication of the coordinates by `scale`, so that no square overflows.
bool ChordLengthParameters(const double* points, int32_t count, double scale, double* t) {
  const std::ptrdiff_t legs = count - 1;
  ParallelFor(legs, kManyPoints, [=](std::ptrdiff_t begin, std::ptrdiff_t end) {
    Vec2 before = scale * Planar(PointAt(points, begin));
    for (std::ptrdiff_t i = begin + 1; i <= end; ++i) {
      const Vec2 point = scale * Planar(PointAt(points, i));
      t[i] = Length(point - before);
      before = point;
    }
  });
  t[0] = 0.0;
  for (std::ptrdiff_t i = 1; i <= legs; ++i) t[i] += t[i - 1];
  const double inverse = 1.0 / t[legs];
  ParallelFor(legs - 1, kManyPoints, [=](std::ptrdiff_t begin, std::ptrdiff_t end) {
    for (std::ptrdiff_t i = begin + 1; i <= end; ++i) t[i] *= inverse;
  });
  t[legs] = 1.0;
  return ParallelAll(legs, kManyPoints, [=](std::ptrdiff_t begin, std::ptrdiff_t end) {
    bool apart = true;
    for (std::ptrdiff_t i = begin + 1; i <= end; ++i)
      apart = apart && t[i] - t[i - 1] > kParametersApart;
    return apart;
  });
}

void EvenParameters(int32_t count, double* t) {
  for (int32_t i = 0; i < count; ++i) t[i] = static_cast<double>(i) / (count - 1);
}

// Writes the order + count knots: clamped, each inner one the mean of order - 1 parameters in turn
// (Piegl and Tiller, The NURBS Book, equation 9.8), so that each control point has its own
// parameter inside its support. They ascend if the parameters do.
void AveragedKnots(const double* t, int32_t count, int32_t order, double* knots) {
  const int32_t degree = order - 1;
  std::fill_n(knots, order, 0.0);
  ParallelFor(count - order, kManyPoints, [=](std::ptrdiff_t begin, std::ptrdiff_t end) {
    for (std::ptrdiff_t j = begin + 1; j <= end; ++j) {
      double sum = t[j];  // in one order for all knots, so that rounding keeps them ascending
      for (std::ptrdiff_t i = j + 1; i < j + degree; ++i) sum += t[i];
      knots[j + degree] = sum / degree;
    }
  });
  std::fill_n(knots + count, order, 1.0);
}

class Interpolation {
 public:
  Interpolation(const double* points, int32_t count, KurvoBSpline& spline)
      : points_(points),
        spline_(spline),
        largest_(LargestCoordinate(points, count)),
        scale_(ScaleFor(largest_)),
        t_(NewArray<double>(static_cast<std::size_t>(count))) {}

  // False when no parameters give control points of a reasonable size.
  bool Run() {
    const int32_t count = spline_.count;
    if (ChordLengthParameters(points_, count, scale_, t_.get()) && Solve()) return true;
    EvenParameters(count, t_.get());
    return Solve();
  }

 private:
  bool Solve() {
    AveragedKnots(t_.get(), spline_.count, spline_.order, spline_.knots);
    if (spline_.order == 2) {
      SetPolygon();
      return true;
    }
    return SolveInterpolation({spline_.knots, spline_.order, spline_.count}, t_.get(), points_,
                              scale_, std::min(kMaxGrowth * (scale_ * largest_), kMax * scale_),
                              spline_.points);
  }

  // The points themselves for control points.
  void SetPolygon() {
    for (int32_t i = 0; i < spline_.count; ++i)
      Store(OnPlane(Planar(PointAt(points_, i))), spline_.points[i]);
  }

  const double* const points_;
  KurvoBSpline& spline_;
  const double largest_;
  const double scale_;
  const std::unique_ptr<double[]> t_;
};

Curve Interpolated(const double* points, int32_t count, int32_t order, GlobalVar& g) {
  OwnedCurve curve(CV_BSPLINE, {.order = order, .count = count});
  if (Interpolation(points, count, curve.block<KurvoBSpline>()).Run()) return curve.Release();
  Fail(g, KURVO_ERR_FIT_POINTS);
  return {};
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvGenBspl(const double* points, int32_t count, int32_t order, Curve* result,
                               GlobalVar* g) noexcept {
  if (result) *result = Curve{};
  if (kurvo::ErrorPending(*g)) return;
  if (!points || !result || count < 2) return kurvo::Fail(*g, KURVO_ERR_FIT_MISSING);
  if (order < 2 || order > count || order > kurvo::kMaxFitOrder ||
      !kurvo::CanPass(points, count, g->epsilon))
    return kurvo::Fail(*g, KURVO_ERR_FIT_POINTS);
  const auto fit = [&] { return kurvo::Interpolated(points, count, order, *g); };
  *result = kurvo::Guard(*g, Curve{}, fit);
}
