// Derivatives of a Bezier curve of either kind, of any degree.
#include "query/bezier_derivatives.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>

#include "control/bernstein.h"
#include "control/homogeneous.h"
#include "control/weights.h"
#include "foundation/work_area.h"

namespace kurvo {
namespace {

std::array<double, 2> ToArray(Vec2 v) { return {v.x, v.y}; }
std::array<double, 3> ToArray(Homogeneous v) { return {v.x, v.y, v.w}; }
Vec2 ToVector(const std::array<double, 2>& v) { return {v[0], v[1]}; }
Homogeneous ToVector(const std::array<double, 3>& v) { return {v[0], v[1], v[2]}; }

// The value at t of the Bezier function of degree d with the coefficient vectors at(0) ... at(d).
template <class Degree, class At>
auto Value(Degree d, double t, const At& at) {
  if constexpr (std::is_integral_v<Degree>) {
    using Array = decltype(ToArray(at(0)));
    const auto load = [&](int32_t i, Array& v) { v = ToArray(at(i)); };
    return ToVector(CasteljauValue<std::tuple_size_v<Array>>(d, t, load));
  } else {
    return FixedValue<Degree::value>(t, at);
  }
}

// Calls use(d) with the degree, for the common ones as a constant.
template <class Use>
decltype(auto) WithDegree(int32_t degree, Use&& use) {
  return WithConstant<2, 3>(degree, use);
}

// d - kBy, a constant when d is one.
template <int32_t kBy, class Degree>
constexpr auto Lowered(Degree d) {
  if constexpr (std::is_integral_v<Degree>)
    return d - kBy;
  else
    return std::integral_constant<int32_t, Degree::value - kBy>();
}

// Differences of consecutive coefficient vectors. Taken before anything is interpolated, they keep
// a derivative free of the rounding of positions far from the origin.
template <class At>
auto DifferencesOf(const At& at) {
  return [at](int32_t i) { return at(i + 1) - at(i); };
}

// B' = d sum of (b[i+1] - b[i]) B(i, d-1)(t).
template <class Degree, class At>
auto FirstOf(Degree d, double t, const At& at) {
  using Vector = decltype(at(0));
  if (d < 1) return Vector{};
  return static_cast<double>(d) * Value(Lowered<1>(d), t, DifferencesOf(at));
}

// B'' = d (d-1) sum of the second differences of b times B(i, d-2)(t).
template <class Degree, class At>
auto SecondOf(Degree d, double t, const At& at) {
  using Vector = decltype(at(0));
  if (d < 2) return Vector{};
  const double factor = static_cast<double>(d) * static_cast<double>(d - 1);
  return factor * Value(Lowered<2>(d), t, DifferencesOf(DifferencesOf(at)));
}

template <std::size_t kDim>
auto PointsOf(const BezierView<kDim>& bezier) {
  return [points = bezier.points](int32_t i) { return Planar(points[i]); };
}

// Homogeneous points as they are seen from the end of the curve that is nearer to t: derivatives do
// not depend on the origin, and there the products with the weight function cancel least, at the
// ends not at all. An end of next to no weight is far from the curve: then it is the other one.
auto PointsFromNearerEnd(const BezierView<4>& bezier, double t) {
  constexpr double kNoWeight = 1e-15;  // of that of the other end
  const double* end = bezier.points[t > 0.5 ? bezier.degree : 0];
  const double* other = bezier.points[t > 0.5 ? 0 : bezier.degree];
  const Vec2 origin = Planar(kNoWeight * std::fabs(other[3]) >= std::fabs(end[3]) ? other : end);
  return [points = bezier.points, origin](int32_t i) -> Homogeneous {
    const double w = points[i][3];
    const Vec2 from_origin = Planar(points[i]) - origin;
    return {w * from_origin.x, w * from_origin.y, w};
  };
}

// Of C = A / W, the derivatives of A and W to the second order given:
//   C' = (A' - W' C) / W,  C'' = (A'' - 2 W' C' - W'' C) / W.
Derivatives Quotient(Homogeneous a, Homogeneous a1, Homogeneous a2) {
  const double over_w = 1.0 / a.w;
  const Vec2 c = over_w * Planar(a);
  const Vec2 c1 = over_w * (Planar(a1) - a1.w * c);
  const Vec2 c2 = over_w * (Planar(a2) - 2.0 * a1.w * c1 - a2.w * c);
  return {c1, c2};
}

bool IsPolynomial(const BezierView<4>& bezier, double tol) {
  return WeightsAreOne(bezier.points, bezier.degree + 1, tol);
}

}  // namespace

template <int kOrders, std::size_t kDim>
Derivatives LowDerivatives(const BezierView<kDim>& bezier, double t, double tol) {
  const auto second_of = [&](auto d, const auto& points) {
    if constexpr (kOrders == 2)
      return SecondOf(d, t, points);
    else
      return decltype(points(0)){};
  };
  return WithDegree(bezier.degree, [&](auto d) -> Derivatives {
    if constexpr (kDim == 4) {
      if (!IsPolynomial(bezier, tol)) {
        const auto points = PointsFromNearerEnd(bezier, t);
        return Quotient(Value(d, t, points), FirstOf(d, t, points), second_of(d, points));
      }
    }
    const auto points = PointsOf(bezier);
    return {FirstOf(d, t, points), second_of(d, points)};
  });
}

Vec2 FirstDerivative(const BezierView<3>& bezier, double t) {
  return WithDegree(bezier.degree, [&](auto d) { return FirstOf(d, t, PointsOf(bezier)); });
}

template Derivatives LowDerivatives<1>(const BezierView<3>&, double, double);
template Derivatives LowDerivatives<1>(const BezierView<4>&, double, double);
template Derivatives LowDerivatives<2>(const BezierView<3>&, double, double);
template Derivatives LowDerivatives<2>(const BezierView<4>&, double, double);

namespace {

constexpr std::size_t kStackCount = 40;  // control points and orders that need no heap

// The coefficient vectors of a Bezier function, or their differences of a higher order.
template <class Vector>
class Differences {
 public:
  template <class At>
  Differences(int32_t degree, const At& at)
      : degree_(degree), vectors_(static_cast<std::size_t>(degree) + 1) {
    for (int32_t i = 0; i <= degree; ++i) vectors_[static_cast<std::size_t>(i)] = at(i);
  }

  // Their Bezier function at t.
  Vector ValueAt(double t) const {
    return Value(degree_, t, [this](int32_t i) { return vectors_[static_cast<std::size_t>(i)]; });
  }

  void RaiseOrder() {
    for (std::size_t i = 0; i < static_cast<std::size_t>(degree_); ++i)
      vectors_[i] = vectors_[i + 1] - vectors_[i];
    --degree_;
  }

 private:
  int32_t degree_;
  WorkArea<Vector, kStackCount> vectors_;
};

// d! / (d - n)! times the n-th differences on the Bernstein basis of degree d - n. Multiplied one
// by one, so that a 0 stays 0 where the factor would overflow.
template <std::size_t kDim>
Vec2 NthOfPolynomial(const BezierView<kDim>& bezier, int32_t n, double t) {
  if (n > bezier.degree) return {};
  Differences<Vec2> differences(bezier.degree, PointsOf(bezier));
  for (int32_t k = 0; k < n; ++k) differences.RaiseOrder();
  Vec2 result = differences.ValueAt(t);
  for (int32_t k = 0; k < n; ++k) result = static_cast<double>(bezier.degree - k) * result;
  return result;
}

// Leibniz' rule for C W = A. Written with the Taylor coefficients c = C^(i) / i! and so on it is
//   c_i = (a_i - sum over j = 1 ... min(i, d) of w_j c_(i-j)) / w_0.
Vec2 NthOfQuotient(const BezierView<4>& bezier, int32_t n, double t) {
  const auto last = static_cast<std::size_t>(std::min(bezier.degree, n));  // that is not 0
  WorkArea<Homogeneous, kStackCount> a(last + 1);
  Differences<Homogeneous> differences(bezier.degree, PointsFromNearerEnd(bezier, t));
  double binomial = 1.0;  // C(degree, k)
  for (std::size_t k = 0;; ++k) {
    a[k] = binomial * differences.ValueAt(t);
    if (k == last) break;
    differences.RaiseOrder();
    binomial = binomial * (bezier.degree - static_cast<double>(k)) / static_cast<double>(k + 1);
  }

  const auto order = static_cast<std::size_t>(n);
  WorkArea<Vec2, kStackCount> c(order + 1);
  for (std::size_t i = 0; i <= order; ++i) {
    Vec2 sum = i <= last ? Planar(a[i]) : Vec2{};
    for (std::size_t j = 1; j <= std::min(i, last); ++j) sum = sum - a[j].w * c[i - j];
    c[i] = {sum.x / a[0].w, sum.y / a[0].w};
  }
  Vec2 result = c[order];
  for (int32_t i = 2; i <= n; ++i) result = static_cast<double>(i) * result;
  return result;
}

}  // namespace

template <std::size_t kDim>
Vec2 NthDerivative(const BezierView<kDim>& bezier, int32_t n, double t, double tol) {
  if constexpr (kDim == 4)
    if (!IsPolynomial(bezier, tol)) return NthOfQuotient(bezier, n, t);
  return NthOfPolynomial(bezier, n, t);
}

template Vec2 NthDerivative(const BezierView<3>&, int32_t, double, double);
template Vec2 NthDerivative(const BezierView<4>&, int32_t, double, double);

}  // namespace kurvo
