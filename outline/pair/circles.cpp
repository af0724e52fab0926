#include "pair/circles.h"

#include <algorithm>
#include <cmath>

#include "pair/coefficients.h"

namespace kurvo::outline {
namespace {

constexpr double kRounding = 0x1p-48;  // of the square of a radius: what its difference has

// A point of one arc, in a direction from its centre, lies beside the circle of the other by what
// depends on how far that direction points along the way between the centres: in closed form, and
// no more than rounding off.
class TwoArcs {
 public:
  TwoArcs(const Circle& a, const Stretch& part, const Circle& b, const SideReach& reach)
      : a_(a),
        b_(b),
        part_(part),
        way_(a.centre - b.centre),
        base_((a.radius - b.radius) * (a.radius + b.radius) + Dot(way_, way_)),
        rounding_(kRounding * (a.radius + b.radius)),
        far_(reach.apart + rounding_) {}

  Relation Relate(double distance) const {
    const Vec2 low = DirectionOf(part_.at_low, part_.low);
    const Vec2 high = DirectionOf(part_.at_high, part_.high);
    const double at_low = Beside(low), at_high = Beside(high);
    Range range;
    range.Add(at_low);
    range.Add(at_high);
    bool is_monotone = true;
    const double length = Length(way_);
    for (const double sign : {-1.0, 1.0}) {
      const Vec2 along = (sign / length) * way_;
      if (!(length > 0 && Holds(along))) continue;
      is_monotone = false;
      range.Add(Beside(along));
    }
    if (range.least > far_ || range.most < -far_) return {Verdict::kApart};
    const double widest = std::max(range.most, -range.least) + rounding_;
    if (a_.bulge == b_.bulge && widest <= distance) return {Verdict::kNear};
    Relation relation;
    if (!is_monotone) return relation;
    if (std::fabs(at_low) > far_) relation.low = HeightWhere(at_low > 0 ? far_ : -far_, part_.low);
    if (std::fabs(at_high) > far_)
      relation.high = HeightWhere(at_high > 0 ? far_ : -far_, part_.high);
    return relation;
  }

 private:
  Vec2 DirectionOf(double side, double height) const {
    return (1 / a_.radius) * (Vec2{side, height} - a_.centre);
  }
  double HeightOf(Vec2 direction) const { return a_.centre.y + a_.radius * direction.y; }
  bool Holds(Vec2 direction) const {
    const double height = HeightOf(direction);
    return a_.bulge * direction.x >= 0 && height > part_.low && height < part_.high;
  }
  // |P - c|^2 - r^2 over |P - c| + r.
  double Beside(Vec2 direction) const {
    const double squares = base_ + 2 * a_.radius * Dot(way_, direction);
    const double from_centre = std::sqrt(std::max(b_.radius * b_.radius + squares, 0.0));
    return squares / (from_centre + b_.radius);
  }
  // Where Beside() has a value; `otherwise` where it has not.
  double HeightWhere(double value, double otherwise) const {
    const double squares = value * (2 * b_.radius + value), length = Length(way_);
    const double along = (squares - base_) / (2 * a_.radius * length);
    const double across = std::sqrt(std::max((1 - along) * (1 + along), 0.0));
    const Vec2 unit = (1 / length) * way_;
    for (const double sign : {-1.0, 1.0}) {
      const Vec2 direction = along * unit + (sign * across) * Left(unit);
      if (Holds(direction)) return HeightOf(direction);
    }
    return otherwise;
  }

  const Circle &a_, &b_;
  const Stretch& part_;
  const Vec2 way_;
  const double base_, rounding_, far_;
};

}  // namespace

// P = W / w lies |P - c| - r beside a circle, and (|P - c| - r)(|P - c| + r) w^2 is the polynomial
// |W - c w|^2 - r^2 w^2, here over r^2 and with the weights of W at most 1.
Relation OfCircleAndCurve(const Circle& arc, const Stretch& curve, const SideReach& reach) {
  const int n = curve.degree;
  if (n < 2 || n > kMostTabled) return {};
  Vec2 out[kMostTabled + 1];
  double weight[kMostTabled + 1];
  double most = 1, least = 1;
  if (curve.is_rational) {
    most = *std::max_element(curve.weight, curve.weight + n + 1);
    least = *std::min_element(curve.weight, curve.weight + n + 1) / most;
  }
  const double by = 1 / arc.radius;
  for (int i = 0; i <= n; ++i) {
    weight[i] = curve.is_rational ? curve.weight[i] / most : 1;
    out[i] = (weight[i] * by) * (Vec2{curve.side[i], curve.height[i]} - arc.centre);
  }
  const auto size = static_cast<std::size_t>(n);
  const BinomialRow& binomials = kBinomials[size];
  double product[2 * kMostTabled + 1] = {};
  for (std::size_t i = 0; i <= size; ++i)
    for (std::size_t j = 0; j <= size; ++j)
      product[i + j] += binomials[i] * binomials[j] * (Dot(out[i], out[j]) - weight[i] * weight[j]);
  const Range range = RangeOfProduct(product, 2 * n);
  const double widest =
      arc.radius * (std::max(range.most, -range.least) + kRounding) / (least * least);
  // Beside the half on which the arc is, not beside the other one.
  const auto other = [&](Vec2 p) { return -arc.bulge * arc.radius * p.x > reach.near; };
  const bool is_beside = std::none_of(out, out + n + 1, other);
  if (is_beside && widest <= reach.distance) return {Verdict::kNear};
  // |P - c| + r is at most 2 r and the distance.
  const double apart = std::max(range.least, -range.most);
  const double far = reach.apart * by * (2 + reach.apart * by) + kRounding;
  if (apart > far) return {Verdict::kApart};
  return ApartBut(curve, product, 2 * n, far);
}

Relation OfTwoCircles(const Circle& a, const Stretch& part, const Circle& b,
                      const SideReach& reach) {
  const double apart = Length(a.centre - b.centre) + std::fabs(a.radius - b.radius);
  // The two halves of a circle share ends and nothing else.
  if (a.bulge == b.bulge && apart <= reach.distance) return {Verdict::kNear};
  return TwoArcs(a, part, b, reach).Relate(reach.distance);
}

}  // namespace kurvo::outline
