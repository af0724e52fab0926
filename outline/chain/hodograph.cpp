// The integral of a speed by halving, until the control vectors of the velocity lie within a cone.
// Only then is what a rule sees at its nodes all there is, and its last Legendre coefficients tell
// what it misses.
#include "chain/hodograph.h"

#include <algorithm>
#include <cmath>

#include "chain/gauss.h"
#include "strand/bernstein.h"

namespace kurvo::outline {

void Hodograph::SetPolynomial(const Span& span) {
  degree = span.degree - 1;
  weight_degree = 0;
  weights[0] = 1;
  for (int i = 0; i < span.degree; ++i)
    points[i] = span.degree * (span.points[i + 1] - span.points[i]);
}

// With W the sum of the weighted points the velocity is (W' w - W w') / w^2. Of the products of two
// Bernstein polynomials those of i and j > i leave
//   (j - i) C(n,i) C(n,j) t^(i+j-1) (1-t)^(2n-i-j-1) w_i w_j (P_j - P_i),
// a numerator of degree 2 n - 2 without cancellation.
void Hodograph::SetRational(const Span& span) {
  const int n = span.degree;
  degree = 2 * n - 2;
  weight_degree = n;
  std::copy(span.weights, span.weights + n + 1, weights);
  std::fill(points, points + degree + 1, Vec2{0, 0});
  double binomials[kMostDegree + 1];
  binomials[0] = 1;
  for (int i = 1; i <= n; ++i) binomials[i] = binomials[i - 1] * (n - i + 1) / i;
  for (int i = 0; i < n; ++i) {
    for (int j = i + 1; j <= n; ++j) {
      const double share = (j - i) * binomials[i] * binomials[j];
      points[i + j - 1] = points[i + j - 1] + share * (span.weights[i] * span.points[j] -
                                                       span.weights[j] * span.points[i]);
    }
  }
  double binomial = 1;
  for (int k = 0; k <= degree; ++k) {
    points[k] = (1 / binomial) * points[k];
    binomial = binomial * (degree - k) / (k + 1);
  }
}

namespace {

constexpr double kCone = 0.7;       // of their mean: how far control vectors may lie from it
constexpr double kSettled = 1e-11;  // of the scale: the last Legendre coefficients of the speed
constexpr double kNegligible = 0x1p-44;  // of the scale: a stretch no longer is taken as it is,
                                         // which leaves a hundredth of that
constexpr int kMostHalvings = 32;
constexpr int kMostWork = 3 << 19;   // that halving may do; then all is taken as it is
constexpr int kConeWork = 1 << 19;   // beyond, the last coefficients alone decide
constexpr int kWorkOfHalving = 768;  // beside its coefficients

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

// The integral of a hodograph by halving.
class Halving {
 public:
  explicit Halving(const Hodograph& whole)
      : degree_(whole.degree), weight_degree_(whole.weight_degree) {
    Binomials(degree_, binomials_);
    Binomials(weight_degree_, weight_binomials_);
    for (int i = 0; i < 8; ++i) {
      const double far = 0.5 * (1 + Gauss<16>::kAt[i]);
      ratio_[i] = 0.5 * (1 - Gauss<16>::kAt[i]) / far;
      power_[i] = weight_power_[i] = 1;
      for (int k = 0; k < degree_; ++k) power_[i] *= far;
      for (int k = 0; k < weight_degree_; ++k) weight_power_[i] *= far;
    }
    double unused = 0;
    scale_ = Sum(whole.points, whole.weights, unused);
  }

  // `points` and `weights` are of the stretch, of this width, and are overwritten.
  double Integral(Vec2* points, double* weights, double width, int halvings_left) {
    double most = 0;
    for (int i = 0; i <= degree_; ++i) most = std::max(most, SquaredLength(points[i]));
    const auto [light, heavy] = std::minmax_element(weights, weights + weight_degree_ + 1);
    const double lightest = *light, heaviest = *heavy;
    const double bound = width * std::sqrt(most) / (lightest * lightest);
    const bool is_last = halvings_left == 0 || work_ > kMostWork || kNegligible * scale_ >= bound;
    if (is_last || work_ > kConeWork || (IsCone(points, degree_ + 1) && 2 * lightest >= heaviest)) {
      double tail = 0;
      const double sum = Sum(points, weights, tail);
      if (is_last || kSettled * scale_ >= width * tail) return width * sum;
    }
    work_ += degree_ * degree_ + kWorkOfHalving;
    Vec2 high[Hodograph::kMostDegree + 1];
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
  double scale_;  // a first guess at the length of the whole
  int work_ = 0;
  double ratio_[8], power_[8], weight_power_[8];
  double binomials_[Hodograph::kMostDegree + 1], weight_binomials_[kMostDegree + 1];
};

}  // namespace

double Hodograph::Integral(double u0, double u1) const {
  Vec2 part[kMostDegree + 1], unused[kMostDegree + 1];
  double part_weights[outline::kMostDegree + 1], unused_weights[outline::kMostDegree + 1];
  std::copy(points, points + degree + 1, part);
  std::copy(weights, weights + weight_degree + 1, part_weights);
  if (u1 < 1) {
    SplitBernstein(part, degree, u1, part, unused);
    SplitBernstein(part_weights, weight_degree, u1, part_weights, unused_weights);
  }
  if (u0 > 0) {
    SplitBernstein(part, degree, u0 / u1, unused, part);
    SplitBernstein(part_weights, weight_degree, u0 / u1, unused_weights, part_weights);
  }
  return Halving(*this).Integral(part, part_weights, u1 - u0, kMostHalvings);
}

}  // namespace kurvo::outline
