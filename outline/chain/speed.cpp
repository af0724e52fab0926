// The length of a span is the integral of its speed, for which Gauss's rule is as good as the speed
// is smooth: with n nodes on [-1, 1] the error falls like rho^-2n when the speed is analytic within
// the ellipse about -1 and 1 whose half axes add up to rho (Trefethen, Is Gauss quadrature better
// than Clenshaw-Curtis?, SIAM Review 50, 2008, theorem 4.5). Speed fails to be analytic where
// x' + i y' vanishes, at complex parameters: near the real axis the curve has nearly a cusp, and no
// comparison of two rules sees what lies between their nodes. Up to degree 3 those zeros are
// computed, and the interval is cut until no ellipse holds one. Beyond, and for rational spans, it
// is halved until the control vectors of the velocity lie within a cone.
#include "chain/speed.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "chain/gauss.h"

namespace kurvo::outline {
namespace {

// x + i y.
Vec2 Product(Vec2 a, Vec2 b) { return {a.x * b.x - a.y * b.y, a.x * b.y + a.y * b.x}; }
Vec2 Quotient(Vec2 a, Vec2 b) {
  const double by = 1 / SquaredLength(b);
  return {by * Dot(a, b), by * Cross(b, a)};
}
// The root with a real part that is not negative.
Vec2 Root(Vec2 a) {
  const double size = Length(a);
  const double larger = std::sqrt(0.5 * (size + std::fabs(a.x)));
  if (larger == 0) return {0, 0};
  const double smaller = 0.5 * std::fabs(a.y) / larger;
  const double re = a.x >= 0 ? larger : smaller, im = a.x >= 0 ? smaller : larger;
  return {re, a.y < 0 ? -im : im};
}

// The integral over [-1, 1] of |a + b x + c x^2|.
template <std::size_t kNodes>
double SumOfSpeeds(Vec2 a, Vec2 b, Vec2 c) {
  using Rule = Gauss<kNodes>;
  constexpr std::size_t kPairs = kNodes / 2;
  double terms[kPairs];
  for (std::size_t i = 0; i < kPairs; ++i) {
    const double x = Rule::kAt[i], square = x * x;
    const double even_x = a.x + c.x * square, even_y = a.y + c.y * square;
    const double odd_x = b.x * x, odd_y = b.y * x;
    const double right_x = even_x + odd_x, right_y = even_y + odd_y;
    const double left_x = even_x - odd_x, left_y = even_y - odd_y;
    terms[i] = Rule::kWeight[i] * (std::sqrt(right_x * right_x + right_y * right_y) +
                                   std::sqrt(left_x * left_x + left_y * left_y));
  }
  double sum = 0;
  for (std::size_t i = kPairs; i-- > 0;) sum += terms[i];
  return sum;
}

// Whether p0 + p1 w + p2 w^2 has no zero with |w| <= r, by Rouche's theorem: |p0| > r |p1| + r^2
// |p2|, in squares.
bool IsCalm(const Vec2* p, double r) {
  const double second = r * r * SquaredLength(p[1]);
  const double third = r * r * r * r * SquaredLength(p[2]);
  const double rest = SquaredLength(p[0]) - second - third;
  return rest > 0 && rest * rest > 4 * second * third;
}

// An ellipse about -1 and 1, by the squares of its inverse half axes.
struct Ellipse {
  double along, across;

  // 1 on it.
  double Level(double x, double y) const { return along * x * x + across * y * y; }
};
constexpr Ellipse EllipseOf(double rho) {
  const double half_long = 0.5 * (rho + 1 / rho), half_short = 0.5 * (rho - 1 / rho);
  return {1 / (half_long * half_long), 1 / (half_short * half_short)};
}
// What the speed must be analytic in for an error of 1e-14 with 8 and with 16 nodes: found by
// measurement, 6^-16 and 2.4^-32 times 0.03 and 0.01.
constexpr Ellipse kEllipse8 = EllipseOf(6);
constexpr Ellipse kEllipse16 = EllipseOf(2.4);

// The ellipse for 8 nodes about [-1/2, 1/2], and with it those about its parts, lies within a
// circle of 37/24 about 0: a little more leaves room for the rounding of zeros.
constexpr double kCalmRadius = 1.55;

constexpr double kCusp = 1e-8;   // parameter: a zero so near the real axis is a cusp, where what is
                                 // lost is of the order of its square
constexpr double kReach = 2.5;   // a stretch so many times longer than the distance of the zero
                                 // beside its end is just within what 16 nodes serve
constexpr double kBeside = 0.1;  // of its distance to the axis: a zero so near an end is beside it
constexpr double kFarAway = 1e10;    // parameter: zeros beyond do not count
constexpr int kMostCuts = 80;        // of an interval; what is left is taken as it is
constexpr double kShortest = 1e-10;  // parameter: no stretch shorter than this is cut

}  // namespace

Speed::Speed(const Span& span) : span_(span) {
  switch (span.kind) {
    case Span::Kind::kLine:
      kind_ = Kind::kConstant;
      constant_ = Length(span.points[1] - span.points[0]);
      return;
    case Span::Kind::kArc:
      kind_ = Kind::kConstant;
      constant_ = span.radius * std::fabs(span.sweep);
      return;
    case Span::Kind::kBezier:
      if (span.degree <= 3) {
        SetQuadratic(span);
        return;
      }
      kind_ = Kind::kHodograph;
      hodograph_.SetPolynomial(span);
      return;
    default:
      kind_ = Kind::kHodograph;
      hodograph_.SetRational(span);
  }
}

void Speed::SetQuadratic(const Span& span) {
  kind_ = Kind::kQuadratic;
  const Vec2* points = span.points;
  const Vec2 first = span.degree * (points[1] - points[0]);
  const Vec2 last = span.degree * (points[span.degree] - points[span.degree - 1]);
  Vec2(&p)[3] = quadratic_.p;
  p[1] = last - first;
  if (span.degree == 2) {
    p[0] = 0.5 * (first + last);
    p[2] = {0, 0};
  } else {
    const Vec2 middle = 3.0 * (points[2] - points[1]);
    p[0] = 0.25 * (first + 2.0 * middle + last);
    p[2] = (first - middle) + (last - middle);
  }

  quadratic_.branch_count = 0;
  if (IsCalm(p, kCalmRadius)) return;
  // The zeros of p0 + p1 w + p2 w^2 as a complex polynomial, without cancellation: s / p2, p0 / s.
  const auto add = [this](Vec2 zero) {
    quadratic_.branches[quadratic_.branch_count++] = {zero.x, std::fabs(zero.y)};
  };
  Vec2 s = -p[1];
  if (span.degree == 3) {
    const Vec2 root = Root(Product(p[1], p[1]) - 4.0 * Product(p[0], p[2]));
    s = -0.5 * (Dot(p[1], root) >= 0 ? p[1] + root : p[1] - root);
  }
  const double size = SquaredLength(s);
  if (!(size > 0)) return;
  if (kFarAway * kFarAway * SquaredLength(p[2]) > size) add(Quotient(s, p[2]));
  if (kFarAway * kFarAway * size > SquaredLength(p[0])) add(Quotient(p[0], s));
}

// Between two values of w.
double Speed::Between(double low, double high, int cuts_left) const {
  const Quadratic& q = quadratic_;
  const double middle = 0.5 * (low + high), half = 0.5 * (high - low);
  double level8 = 1, level16 = 1;
  const Branch* nearest = nullptr;
  for (int k = 0; k < q.branch_count; ++k) {
    const Branch& branch = q.branches[k];
    // |w - a| is smooth on either side of a.
    if (kCusp >= branch.im && (branch.re <= low || branch.re >= high)) continue;
    const double x = (branch.re - middle) / half, y = branch.im / half;
    level8 = std::min(level8, kEllipse8.Level(x, y));
    const double level = kEllipse16.Level(x, y);
    if (level16 > level) {
      level16 = level;
      nearest = &branch;
    }
  }
  const Vec2 a = q.p[0] + middle * (q.p[1] + middle * q.p[2]);
  const Vec2 b = half * (q.p[1] + (2 * middle) * q.p[2]);
  const Vec2 c = (half * half) * q.p[2];
  if (level8 >= 1) return half * SumOfSpeeds<8>(a, b, c);
  if (!nearest || cuts_left <= 0 || kShortest >= half) return half * SumOfSpeeds<16>(a, b, c);

  // Cut at the zero, or off from an end that lies beside it, or in the middle.
  const double re = nearest->re, im = nearest->im;
  const bool is_cusp = kCusp >= im;
  double cut = middle;
  if (is_cusp) {
    cut = re;
  } else if (re - low <= kBeside * im && re < middle) {
    const double reach = kReach * std::sqrt((low - re) * (low - re) + im * im);
    if (reach < half) cut = low + reach;
  } else if (high - re <= kBeside * im && re > middle) {
    const double reach = kReach * std::sqrt((high - re) * (high - re) + im * im);
    if (reach < half) cut = high - reach;
  } else if (im < 0.25 * half) {
    cut = re;
  }
  return Between(low, cut, cuts_left - 1) + Between(cut, high, cuts_left - 1);
}

Speed::Rates Speed::RatesAt(double u) const {
  if (kind_ == Kind::kConstant) return {constant_, 0};
  Vec2 first, second;
  if (kind_ == Kind::kQuadratic) {
    const Vec2(&p)[3] = quadratic_.p;
    const double w = u - 0.5;
    first = p[0] + w * (p[1] + w * p[2]);
    second = p[1] + (2 * w) * p[2];
  } else {
    const Jet jet = JetAt(span_, u);
    first = jet.first;
    second = jet.second;
  }
  const double speed = Length(first);
  return {speed, speed > 0 ? Dot(first, second) / speed : 0};
}

double Speed::Integral(double u0, double u1) const {
  if (!(u1 > u0)) return 0;
  if (kind_ == Kind::kConstant) return (u1 - u0) * constant_;
  if (kind_ == Kind::kQuadratic) return Between(u0 - 0.5, u1 - 0.5, kMostCuts);
  return hodograph_.Integral(u0, u1);
}

}  // namespace kurvo::outline
