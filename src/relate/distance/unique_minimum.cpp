// Bounds on the first and second derivatives of the squared distance f(s, t) = |B(t) - A(s)|^2 / 2
// by interval arithmetic (Moore, Interval Analysis, 1966) on control values.
#include "relate/distance/unique_minimum.h"

#include <algorithm>
#include <cmath>

namespace kurvo {
namespace {

constexpr double kBoundsNoise = 1e-12;  // of the terms of a sum: what may be rounding

struct Interval {
  double low;
  double high;

  void Widen(double x) {
    low = std::min(low, x);
    high = std::max(high, x);
  }
  double magnitude() const { return std::max(-low, high); }
};

Interval operator+(Interval a, Interval b) { return {a.low + b.low, a.high + b.high}; }
Interval operator-(Interval a, Interval b) { return {a.low - b.high, a.high - b.low}; }
Interval operator*(double c, Interval a) {
  return c >= 0.0 ? Interval{c * a.low, c * a.high} : Interval{c * a.high, c * a.low};
}
Interval operator*(Interval a, Interval b) {
  const double ll = a.low * b.low, lh = a.low * b.high, hl = a.high * b.low, hh = a.high * b.high;
  return {std::min(std::min(ll, lh), std::min(hl, hh)),
          std::max(std::max(ll, lh), std::max(hl, hh))};
}
Interval Square(Interval a) {
  const double least = a.low > 0.0 ? a.low : (0.0 > a.high ? a.high : 0.0);
  return {least * least, a.magnitude() * a.magnitude()};
}
Interval Around(Interval a, double radius) { return {a.low - radius, a.high + radius}; }

// The values of a Bezier function on [0, 1] and of its first two derivatives lie between those of
// the control values and of their differences.
struct FunctionBounds {
  Interval value, d1, d2;
};

template <class ControlValue>
FunctionBounds BoundsOf(int32_t degree, ControlValue&& control_value) {
  const double n = degree;
  double last = control_value(0), step = 0.0;
  FunctionBounds bounds{{last, last}, {0.0, 0.0}, {0.0, 0.0}};
  for (int32_t i = 1; i <= degree; ++i) {
    const double now = control_value(i), next_step = now - last, bend = next_step - step;
    bounds.value.Widen(now);
    if (i == 1) bounds.d1 = {next_step, next_step};
    if (i == 2) bounds.d2 = {bend, bend};
    bounds.d1.Widen(next_step);
    if (i >= 2) bounds.d2.Widen(bend);
    last = now;
    step = next_step;
  }
  return {bounds.value, n * bounds.d1, n * (n - 1.0) * bounds.d2};
}

// The derivatives of a part by its own parameter, which runs from 0 to 1.
class PartBounds {
 public:
  explicit PartBounds(const BezierPiece& part) : part_(part) {
    if (part_.rational)
      weight_ = BoundsOf(part_.degree, [&](int32_t i) { return part_.points[i].w; });
    x_ = Along({1.0, 0.0});
    y_ = Along({0.0, 1.0});
  }

  // The derivatives of the component in this direction. For C = N / W: C' = (N' - W' C) / W and
  // C'' = (N'' - 2 W' C' - W'' C) / W, with C seen from the first point.
  FunctionBounds Along(Vec2 direction) const {
    const Vec2 origin = Planar(part_.points[0]);
    const auto component = [&](int32_t i) {
      return Dot(direction, Planar(part_.points[i]) - origin);
    };
    if (!part_.rational) return BoundsOf(part_.degree, component);
    FunctionBounds bounds =
        BoundsOf(part_.degree, [&](int32_t i) { return part_.points[i].w * component(i); });
    Interval place{0.0, 0.0};
    for (int32_t i = 1; i <= part_.degree; ++i) place.Widen(component(i));
    const Interval inverse{1.0 / weight_.value.high, 1.0 / weight_.value.low};
    bounds.d1 = inverse * (bounds.d1 - weight_.d1 * place);
    bounds.d2 = inverse * (bounds.d2 - 2.0 * (weight_.d1 * bounds.d1) - weight_.d2 * place);
    return bounds;
  }

  const FunctionBounds& x() const { return x_; }
  const FunctionBounds& y() const { return y_; }
  Interval SquaredSpeed() const { return Square(x_.d1) + Square(y_.d1); }

 private:
  const BezierPiece& part_;
  FunctionBounds weight_{};
  FunctionBounds x_{}, y_{};
};

// The scalar products of the gap between two parts with the derivatives of one of them.
struct GapProducts {
  Interval d1, d2;
};

// `gap` is the middle of all gaps, `radius` how far they go to all sides.
GapProducts ProductsOf(const PartBounds& part, Vec2 gap, Vec2 radius) {
  const FunctionBounds along = part.Along(gap);
  const FunctionBounds &x = part.x(), &y = part.y();
  return {Around(along.d1, radius.x * x.d1.magnitude() + radius.y * y.d1.magnitude()),
          Around(along.d2, radius.x * x.d2.magnitude() + radius.y * y.d2.magnitude())};
}

bool ClearOfZero(Interval slope) { return slope.low > 0.0 || 0.0 > slope.high; }

}  // namespace

bool HaveOneMinimum(const BezierPiece& a, const BezierPiece& b) {
  const PartBounds of_a(a), of_b(b);
  const PlanarBox &box_a = a.box, &box_b = b.box;
  const Vec2 gap = 0.5 * ((box_b.min - box_a.max) + (box_b.max - box_a.min));
  const Vec2 radius = 0.5 * ((box_b.max - box_b.min) + (box_a.max - box_a.min));
  const GapProducts on_a = ProductsOf(of_a, gap, radius), on_b = ProductsOf(of_b, gap, radius);
  // f_s = -gap A', f_ss = |A'|^2 - gap A'', f_t = gap B', f_tt = |B'|^2 + gap B''.
  const bool monotone_s = a.extent() == 0.0 || ClearOfZero(on_a.d1);
  const bool monotone_t = b.extent() == 0.0 || ClearOfZero(on_b.d1);
  const Interval speed_a = of_a.SquaredSpeed(), speed_b = of_b.SquaredSpeed();
  const auto clear = [](double low, double terms) { return low > kBoundsNoise * terms; };
  if (!monotone_s && !clear((speed_a - on_a.d2).low, speed_a.high + on_a.d2.magnitude()))
    return false;
  if (!monotone_t && !clear((speed_b + on_b.d2).low, speed_b.high + on_b.d2.magnitude()))
    return false;
  if (monotone_s || monotone_t) return true;
  // f_ss f_tt - f_st^2, where (A' B')^2 = |A'|^2 |B'|^2 - (A' x B')^2.
  const Interval cross = of_a.x().d1 * of_b.y().d1 - of_a.y().d1 * of_b.x().d1;
  const Interval determinant =
      Square(cross) + speed_a * on_b.d2 - speed_b * on_a.d2 - on_a.d2 * on_b.d2;
  return clear(determinant.low,
               (speed_a.high + on_a.d2.magnitude()) * (speed_b.high + on_b.d2.magnitude()));
}

}  // namespace kurvo
