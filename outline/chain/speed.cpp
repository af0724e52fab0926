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
#include "strand/bernstein.h"

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
      if (span.degree <= 3)
        SetQuadratic(span);
      else
        SetPolynomial(span);
      return;
    default:
      SetRational(span);
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

  // The zeros of p0 + p1 w + p2 w^2 as a complex polynomial, without cancellation: s / p2, p0 / s.
  quadratic_.branch_count = 0;
  const auto add = [this](Vec2 zero) {
    quadratic_.branches[quadratic_.branch_count++] = {zero.x, std::fabs(zero.y)};
  };
  const Vec2 root = Root(Product(p[1], p[1]) - 4.0 * Product(p[0], p[2]));
  const Vec2 s = -0.5 * (Dot(p[1], root) >= 0 ? p[1] + root : p[1] - root);
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

void Speed::SetPolynomial(const Span& span) {
  kind_ = Kind::kHodograph;
  hodograph_.degree = span.degree - 1;
  hodograph_.weight_degree = 0;
  for (int i = 0; i < span.degree; ++i)
    hodograph_.points[i] = span.degree * (span.points[i + 1] - span.points[i]);
}

// With W the sum of the weighted points the velocity is (W' w - W w') / w^2. Of the products of two
// Bernstein polynomials those of i and j > i leave
//   (j - i) C(n,i) C(n,j) t^(i+j-1) (1-t)^(2n-i-j-1) w_i w_j (P_j - P_i),
// a numerator of degree 2 n - 2 without cancellation.
void Speed::SetRational(const Span& span) {
  kind_ = Kind::kHodograph;
  const int n = span.degree, degree = 2 * n - 2;
  hodograph_.degree = degree;
  hodograph_.weight_degree = n;
  std::copy(span.weights, span.weights + n + 1, hodograph_.weights);
  std::fill(hodograph_.points, hodograph_.points + degree + 1, Vec2{0, 0});
  double binomials[kMostDegree + 1];
  binomials[0] = 1;
  for (int i = 1; i <= n; ++i) binomials[i] = binomials[i - 1] * (n - i + 1) / i;
  for (int i = 0; i < n; ++i) {
    for (int j = i + 1; j <= n; ++j) {
      const double share = (j - i) * binomials[i] * binomials[j];
      hodograph_.points[i + j - 1] =
          hodograph_.points[i + j - 1] +
          share * (span.weights[i] * span.points[j] - span.weights[j] * span.points[i]);
    }
  }
  double binomial = 1;
  for (int k = 0; k <= degree; ++k) {
    hodograph_.points[k] = (1 / binomial) * hodograph_.points[k];
    binomial = binomial * (degree - k) / (k + 1);
  }
}

namespace {

constexpr double kCone = 0.7;       // of their mean: how far control vectors may lie from it
constexpr double kSettled = 1e-11;  // of the scale: the last Legendre coefficients of the speed
constexpr double kNegligible = 0x1p-54;  // of the scale: a stretch that may be taken as it is
constexpr int kMostHalvings = 32;
constexpr int kMostWork = 1 << 20;   // that halving may do; then all is taken as it is
constexpr int kWorkOfHalving = 512;  // beside its coefficients

// P_12 ... P_15 at the positive nodes of Gauss<16>.
constexpr int kTail = 4;
struct TailTable {
  double at[kTail][8];
};
constexpr TailTable MakeTail() {
  TailTable table = {};
  for (int i = 0; i < 8; ++i) {
    const double x = Gauss<16>::kAt[i];
    double before = 1, now = x;
    for (int k = 2; k < 16; ++k) {
      const double next = ((2 * k - 1) * x * now - (k - 1) * before) / k;
      before = now;
      now = next;
      if (k >= 12) table.at[k - 12][i] = now;
    }
  }
  return table;
}
constexpr TailTable kTails = MakeTail();

// Whether all vectors lie near their mean, so that none vanishes nor do complex ones nearby.
bool IsCone(const Vec2* vectors, int count) {
  Vec2 mean = {0, 0};
  for (int i = 0; i < count; ++i) mean = mean + vectors[i];
  mean = (1.0 / count) * mean;
  const double most = kCone * kCone * SquaredLength(mean);
  for (int i = 0; i < count; ++i)
    if (!(most >= SquaredLength(vectors[i] - mean))) return false;
  return true;
}

}  // namespace

// The integral of a hodograph by halving.
class Speed::Halving {
 public:
  Halving(const Hodograph& whole, double scale)
      : degree_(whole.degree), weight_degree_(whole.weight_degree), scale_(scale) {
    Binomials(degree_, binomials_);
    Binomials(weight_degree_, weight_binomials_);
    for (int i = 0; i < 8; ++i) {
      const double far = 0.5 * (1 + Gauss<16>::kAt[i]);
      ratio_[i] = 0.5 * (1 - Gauss<16>::kAt[i]) / far;
      power_[i] = weight_power_[i] = 1;
      for (int k = 0; k < degree_; ++k) power_[i] *= far;
      for (int k = 0; k < weight_degree_; ++k) weight_power_[i] *= far;
    }
  }

  // `points` and `weights` are of the stretch, of this width, and are overwritten.
  double Integral(Vec2* points, double* weights, double width, int halvings_left) {
    double most = 0;
    for (int i = 0; i <= degree_; ++i) most = std::max(most, SquaredLength(points[i]));
    const auto [light, heavy] = std::minmax_element(weights, weights + weight_degree_ + 1);
    const double lightest = *light, heaviest = *heavy;
    const double bound = width * std::sqrt(most) / (lightest * lightest);
    const bool is_last = halvings_left == 0 || work_ > kMostWork || kNegligible * scale_ >= bound;
    if (is_last || (IsCone(points, degree_ + 1) && 2 * lightest >= heaviest)) {
      double tail = 0;
      const double sum = Sum(points, weights, tail);
      if (is_last || kSettled * scale_ >= width * tail) return width * sum;
    }
    work_ += degree_ * degree_ + kWorkOfHalving;
    Vec2 high[kMostHodograph + 1];
    double high_weights[kMostDegree + 1];
    SplitBernstein(points, degree_, 0.5, points, high);
    SplitBernstein(weights, weight_degree_, 0.5, weights, high_weights);
    const double low = Integral(points, weights, 0.5 * width, halvings_left - 1);
    return low + Integral(high, high_weights, 0.5 * width, halvings_left - 1);
  }

 private:
  static void Binomials(int n, double* out) {
    out[0] = 1;
    for (int i = 1; i <= n; ++i) out[i] = out[i - 1] * (n - i + 1) / i;
  }

  // The mean speed, and how large its last Legendre coefficients are. With r = (1 - t) / t for a
  // node t > 1/2 the Bernstein sum is t^n times a polynomial in r; for 1 - t the coefficients come
  // in the other order.
  double Sum(const Vec2* points, const double* weights, double& tail) const {
    double x[8] = {}, y[8] = {}, mirrored_x[8] = {}, mirrored_y[8] = {};
    for (int k = degree_; k >= 0; --k) {
      const Vec2 low = binomials_[k] * points[k];
      const Vec2 high = binomials_[k] * points[degree_ - k];
      for (int i = 0; i < 8; ++i) {
        x[i] = x[i] * ratio_[i] + high.x;
        y[i] = y[i] * ratio_[i] + high.y;
        mirrored_x[i] = mirrored_x[i] * ratio_[i] + low.x;
        mirrored_y[i] = mirrored_y[i] * ratio_[i] + low.y;
      }
    }
    double right[8], left[8];
    for (int i = 0; i < 8; ++i) {
      right[i] = power_[i] * std::sqrt(x[i] * x[i] + y[i] * y[i]);
      left[i] =
          power_[i] * std::sqrt(mirrored_x[i] * mirrored_x[i] + mirrored_y[i] * mirrored_y[i]);
    }
    if (weight_degree_ > 0) DivideByWeights(weights, right, left);

    double sum = 0;
    for (int i = 8; i-- > 0;) sum += Gauss<16>::kWeight[i] * (right[i] + left[i]);
    for (int k = 0; k < kTail; ++k) {
      double coefficient = 0;
      for (int i = 0; i < 8; ++i)
        coefficient += Gauss<16>::kWeight[i] * kTails.at[k][i] *
                       (k % 2 == 0 ? right[i] + left[i] : right[i] - left[i]);
      tail = std::max(tail, 12.5 * std::fabs(coefficient));
    }
    return 0.5 * sum;
  }

  void DivideByWeights(const double* weights, double* right, double* left) const {
    double w[8] = {}, mirrored[8] = {};
    for (int k = weight_degree_; k >= 0; --k) {
      const double low = weight_binomials_[k] * weights[k];
      const double high = weight_binomials_[k] * weights[weight_degree_ - k];
      for (int i = 0; i < 8; ++i) {
        w[i] = w[i] * ratio_[i] + high;
        mirrored[i] = mirrored[i] * ratio_[i] + low;
      }
    }
    for (int i = 0; i < 8; ++i) {
      w[i] *= weight_power_[i];
      mirrored[i] *= weight_power_[i];
      right[i] /= w[i] * w[i];
      left[i] /= mirrored[i] * mirrored[i];
    }
  }

  int degree_, weight_degree_;
  double scale_;
  int work_ = 0;
  double ratio_[8], power_[8], weight_power_[8];
  double binomials_[kMostHodograph + 1], weight_binomials_[kMostDegree + 1];
};

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
  const Hodograph& whole = hodograph_;
  Vec2 points[kMostHodograph + 1], unused[kMostHodograph + 1];
  double weights[kMostDegree + 1] = {1}, unused_weights[kMostDegree + 1];
  double scale = 0;
  std::copy(whole.points, whole.points + whole.degree + 1, points);
  if (whole.weight_degree > 0)
    std::copy(whole.weights, whole.weights + whole.weight_degree + 1, weights);
  for (int i = 0; i <= whole.degree; ++i) scale += Length(points[i]);
  const double heaviest = *std::max_element(weights, weights + whole.weight_degree + 1);
  scale /= (whole.degree + 1) * heaviest * heaviest;
  if (u1 < 1) {
    SplitBernstein(points, whole.degree, u1, points, unused);
    SplitBernstein(weights, whole.weight_degree, u1, weights, unused_weights);
  }
  if (u0 > 0) {
    SplitBernstein(points, whole.degree, u0 / u1, unused, points);
    SplitBernstein(weights, whole.weight_degree, u0 / u1, unused_weights, weights);
  }
  return Halving(whole, scale).Integral(points, weights, u1 - u0, kMostHalvings);
}

}  // namespace kurvo::outline
