#include "pair/quotients.h"

#include <algorithm>
#include <cmath>

#include "pair/coefficients.h"

namespace kurvo::outline {
namespace {

constexpr int kMost = 16;         // degree
constexpr double kClose = 0.01;   // of the shortest leg: apart at equal parameters
constexpr double kLike = 0x1p-6;  // of the speeds of like parameters
constexpr double kInfinity = Relation::kUnbounded;

// A polynomial in Bernstein form, with the binomials multiplied in: the product of two is the
// convolution of their coefficients.
template <class T>
struct Scaled {
  int degree;
  T at[4 * kMost + 1] = {};

  explicit Scaled(int n) : degree(n) {}
};

template <class T, class U, class Times>
auto Product(const Scaled<T>& a, const Scaled<U>& b, const Times& times) {
  Scaled<decltype(times(a.at[0], b.at[0]))> product(a.degree + b.degree);
  for (int i = 0; i <= a.degree; ++i)
    for (int k = 0; k <= b.degree; ++k)
      product.at[i + k] = product.at[i + k] + times(a.at[i], b.at[k]);
  return product;
}
Scaled<double> Product(const Scaled<double>& a, const Scaled<double>& b) {
  return Product(a, b, [](double x, double y) { return x * y; });
}

double WeightOf(const Stretch& part, int i) { return part.is_rational ? part.weight[i] : 1; }
Vec2 PointOf(const Stretch& part, int i) { return {part.side[i], part.height[i]}; }

// n w_1 / w_0 |P_1 - P_0|, or what it is at the other end.
double SpeedAtEnd(const Stretch& part, int end, int beside) {
  const double weights = WeightOf(part, beside) / WeightOf(part, end);
  return part.degree * weights * Length(PointOf(part, beside) - PointOf(part, end));
}

// Weights w_i c^i make no other curve but another parameter of it, which runs c times as fast at
// the start and 1 / c times at the end (Farin, Curves and Surfaces for CAGD, on rational Bezier
// curves). The c that makes those of b what they are of a; 0 where none does.
double LikeSpeeds(const Stretch& a, const Stretch& b) {
  const int n = a.degree, m = b.degree;
  const double at_start = SpeedAtEnd(a, 0, 1) / SpeedAtEnd(b, 0, 1);
  const double at_end = SpeedAtEnd(b, m, m - 1) / SpeedAtEnd(a, n, n - 1);
  return kLike * at_start >= std::fabs(at_start - at_end) ? std::sqrt(at_start * at_end) : 0;
}

// The weights of a stretch over its first, times powers of c.
Scaled<double> WeightsOf(const Stretch& part, double c) {
  const int n = part.degree;
  Scaled<double> weights(n);
  double factor = 1 / WeightOf(part, 0);  // binomials times powers
  for (int i = 0; i <= n; factor *= c * (n - i) / (i + 1), ++i)
    weights.at[i] = factor * WeightOf(part, i);
  return weights;
}

// W' w - W w', of degree 2 n - 2, raised to 2 n: n times the sum of C(n-1,i) C(n-1,k) w_i+1 w_k
// (P_i+1 - P_k), by Euler's theorem on homogeneous polynomials.
Scaled<Vec2> HodographOf(const Stretch& part, const Scaled<double>& weights) {
  const int n = part.degree;
  Scaled<Vec2> low(2 * n - 2), raised(2 * n);
  for (int i = 0; i < n; ++i)
    for (int k = 0; k < n; ++k) {
      // C(n-1,i) = C(n,i+1) (i + 1) / n and C(n-1,k) = C(n,k) (n - k) / n
      const double share = weights.at[i + 1] * (i + 1) * weights.at[k] * (n - k) / n;
      low.at[i + k] = low.at[i + k] + share * (PointOf(part, i + 1) - PointOf(part, k));
    }
  constexpr double kTwoDegrees[] = {1, 2, 1};
  for (int i = 0; i <= low.degree; ++i)
    for (int k = 0; k < 3; ++k) raised.at[i + k] = raised.at[i + k] + kTwoDegrees[k] * low.at[i];
  return raised;
}

// Bounds of the velocity H / w^2, and of how fast that changes: as a rational curve of degree n
// with control points V_k and weights q_k it does by at most n max |V_k+1 - V_k| (max q / min q)^2
// (Floater, Derivatives of rational Bezier curves, 1992).
struct Speeds {
  double least = kInfinity, most = 0, change = 0;

  Speeds(const Scaled<Vec2>& hodograph, const Scaled<double>& squares) {
    const int n = squares.degree;
    double lightest = kInfinity, heaviest = 0, binomial = 1;
    Vec2 before = {0, 0};
    for (int k = 0; k <= n; binomial *= static_cast<double>(n - k) / (k + 1), ++k) {
      const double weight = squares.at[k] / binomial;
      const Vec2 velocity = (1 / squares.at[k]) * hodograph.at[k];
      if (k > 0) change = std::max(change, Length(velocity - before));
      most = std::max(most, Length(velocity));
      least = std::min(least, Length(velocity));
      lightest = std::min(lightest, weight);
      heaviest = std::max(heaviest, weight);
      before = velocity;
    }
    const double uneven = heaviest / lightest;
    change *= n * uneven * uneven;
    least -= change;
  }
};

// Where the distance across is beyond a bound at an end, where it may first be within it.
Relation ApartBut(const Stretch& a, const Scaled<double>& across, const Scaled<double>& weights,
                  double far) {
  const int degree = across.degree;
  double beyond[4 * kMost + 1];
  const auto entrance = [&](double sign, int step) {
    double binomial = 1;
    for (int k = 0; k <= degree; binomial *= static_cast<double>(degree - k) / (k + 1), ++k)
      beyond[k] = (sign * across.at[k] - far * weights.at[k]) / binomial;
    return EntranceOf(beyond, degree, 0, 1, step);
  };
  const double first = across.at[0] / weights.at[0], last = across.at[degree] / weights.at[degree];
  Relation relation;
  if (std::fabs(first) > far) relation.low = HeightAt(a, entrance(first > 0 ? 1 : -1, 1));
  if (std::fabs(last) > far) relation.high = HeightAt(a, 1 - entrance(last > 0 ? 1 : -1, -1));
  return relation;
}

}  // namespace

// With like parameters A = V / v and B = W / w differ by D = (V w - W v) / (v w), whose
// coefficients are averages of differences of control points, and B' is H / w^2. As for
// polynomials, A is from B at |D x B'| / |B'| but for an error below 2 |D|^2 |B''| / |B'|^2. A
// quotient of polynomials is where those of their coefficients are, with positive weights.
Relation OfQuotients(const Stretch& a, const Stretch& b, const SideReach& reach) {
  const int n = a.degree, m = b.degree;
  if (std::min(n, m) < 2 || std::max(n, m) > kMost) return {};
  const double c = a.is_rational || b.is_rational ? LikeSpeeds(a, b) : 1;
  if (!(c > 0)) return {};
  const Scaled<double> v = WeightsOf(a, 1), w = WeightsOf(b, c), both = Product(v, w);
  Scaled<Vec2> apart(n + m);
  for (int i = 0; i <= n; ++i)
    for (int k = 0; k <= m; ++k)
      apart.at[i + k] = apart.at[i + k] + (v.at[i] * w.at[k]) * (PointOf(a, i) - PointOf(b, k));
  double most = 0;
  for (int k = 0; k <= n + m; ++k) {
    if (!(both.at[k] > 0 && both.at[k] < kInfinity)) return {};
    most = std::max(most, Length(apart.at[k]) / both.at[k]);
  }
  if (most <= reach.distance) return {Verdict::kNear};

  const Scaled<double> squares = Product(w, w);
  const Scaled<Vec2> hodograph = HodographOf(b, w);
  const Speeds speeds(hodograph, squares);
  if (!(most < kClose * speeds.least && speeds.change < speeds.least)) return {};
  const Scaled<double> across =
      Product(apart, hodograph, [](Vec2 x, Vec2 y) { return Cross(x, y); });
  const Scaled<double> weights = Product(both, squares);
  double least_across = kInfinity, most_across = -kInfinity;
  for (int k = 0; k <= across.degree; ++k) {
    least_across = std::min(least_across, across.at[k] / weights.at[k]);
    most_across = std::max(most_across, across.at[k] / weights.at[k]);
  }
  const double error = 2 * most * most * speeds.change / speeds.least;
  const double far = reach.apart * speeds.most + error;
  if (least_across > far || most_across < -far) return {Verdict::kApart};
  const double widest = std::max(most_across, -least_across);
  if (widest + error <= reach.distance * speeds.least) return {Verdict::kNear};
  return ApartBut(a, across, weights, far);
}

}  // namespace kurvo::outline
