// Points of a B-spline by its basis values.
#include "control/spline_point.h"

#include <algorithm>

#include "control/weights.h"

namespace kurvo {
namespace {

// What computed weights of 1 are off by.
constexpr double kWeightRounding = 1e-14;

// True when all knots in u[first .. last] are exactly `value`; a NaN is not.
bool AllEqual(const double* u, int32_t first, int32_t last, double value) {
  return std::all_of(u + first, u + last + 1, [value](double knot) { return knot == value; });
}

// False for a domain that is a single value.
template <std::size_t kDim>
bool HasSpan(const SplineView<kDim>& spline) {
  return spline.knots[spline.order - 1] != spline.knots[spline.count];
}

}  // namespace

bool EvaluatesPlain(const SplineView<4>& spline, double tol) {
  return WeightsAreOne(spline.points, spline.count, tol);
}

bool SpanIsPolynomial(const SplineView<4>& spline, int32_t i, bool plain) {
  return plain ||
         WeightsAreOne(spline.points + (i - spline.order + 1), spline.order, kWeightRounding);
}

Vec3 PointOnSpan(const SplineView<3>& spline, int32_t i, double t, Weights) {
  const BasisValues basis(KnotsOf(spline), i, t);
  const double(*points)[3] = spline.points + (i - spline.order + 1);
  Vec3 sum;
  for (int32_t j = 0; j < spline.order; ++j) {
    const double n = basis[j];
    if (n != 0.0) sum = sum + n * Spatial(points[j]);
  }
  return sum;
}

Vec3 PointOnSpan(const SplineView<4>& spline, int32_t i, double t, Weights weights) {
  const BasisValues basis(KnotsOf(spline), i, t);
  const double(*points)[4] = spline.points + (i - spline.order + 1);
  const bool polynomial = weights == Weights::kAside;
  Vec2 sum;
  double weight = 0.0;
  for (int32_t j = 0; j < spline.order; ++j) {
    const double n = polynomial ? basis[j] : basis[j] * points[j][3];
    if (basis[j] == 0.0) continue;
    sum = sum + n * Planar(points[j]);
    weight += n;
  }
  if (!polynomial && weight != 0.0) sum = {sum.x / weight, sum.y / weight};
  return OnPlane(sum);
}

template <std::size_t kDim>
std::optional<SpanPoint> EvaluatedStart(const SplineView<kDim>& spline) {
  const int32_t k = spline.order;
  const double start = spline.knots[k - 1];
  const bool clamped = AllEqual(spline.knots, 0, k - 2, start);
  if (clamped && (spline.knots[k] != start || !HasSpan(spline))) return std::nullopt;
  return SpanPoint{FindSpan(KnotsOf(spline), start), start};
}

template <std::size_t kDim>
std::optional<SpanPoint> EvaluatedEnd(const SplineView<kDim>& spline) {
  const int32_t m = spline.count;
  const double end = spline.knots[m];
  const bool clamped = AllEqual(spline.knots, m + 1, m + spline.order - 1, end);
  if (clamped && (spline.knots[m - 1] != end || !HasSpan(spline))) return std::nullopt;
  return SpanPoint{LastSpan(KnotsOf(spline)), end};
}

template <std::size_t kDim>
Vec3 StartOfSpline(const SplineView<kDim>& spline) {
  const auto at = EvaluatedStart(spline);
  return at ? PointOnSpan(spline, at->span, at->t) : Spatial(spline.points[0]);
}

template <std::size_t kDim>
Vec3 EndOfSpline(const SplineView<kDim>& spline) {
  const auto at = EvaluatedEnd(spline);
  return at ? PointOnSpan(spline, at->span, at->t) : Spatial(spline.points[spline.count - 1]);
}

template std::optional<SpanPoint> EvaluatedStart(const SplineView<3>&);
template std::optional<SpanPoint> EvaluatedStart(const SplineView<4>&);
template std::optional<SpanPoint> EvaluatedEnd(const SplineView<3>&);
template std::optional<SpanPoint> EvaluatedEnd(const SplineView<4>&);
template Vec3 StartOfSpline(const SplineView<3>&);
template Vec3 StartOfSpline(const SplineView<4>&);
template Vec3 EndOfSpline(const SplineView<3>&);
template Vec3 EndOfSpline(const SplineView<4>&);

}  // namespace kurvo
