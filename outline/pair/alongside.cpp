#include "pair/alongside.h"

#include <algorithm>
#include <cmath>

#include "strand/bernstein.h"

namespace kurvo::outline {
namespace {

constexpr int kMostDegreeAlongside = 5;
constexpr double kClose = 0.01;  // of the shortest leg: apart at equal parameters
constexpr double kSameWeight = 0x1p-40;
constexpr double kRounding = 0x1p-48;  // of the square of a radius: what its difference has

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Range of a polynomial in Bernstein form.
struct Range {
  double least = kInfinity, most = -kInfinity;

  void Add(double value) {
    least = std::min(least, value);
    most = std::max(most, value);
  }
};

// Divides sums of products by the binomials of their degree.
Range RangeOfProduct(double* product, int degree) {
  Range range;
  double binomial = 1;
  for (int k = 0; k <= degree; ++k) {
    product[k] /= binomial;
    range.Add(product[k]);
    binomial = binomial * (degree - k) / (k + 1);
  }
  return range;
}

// Where a polynomial that is beyond `most` at 0 may first be within it: where the hull of its
// coefficients is (Bezier clipping). With sign -1 they and `most` are taken with the other sign,
// and with step -1 from 1 backwards, as 1 - t.
double EntranceOf(const double* coefficients, int degree, double most, double sign, int step) {
  const auto at = [&](int k) { return sign * coefficients[step > 0 ? k : degree - k]; };
  double entrance = 1;
  for (int i = 0; i < degree; ++i) {
    if (!(at(i) > most)) continue;
    for (int k = i + 1; k <= degree; ++k) {
      if (at(k) > most) continue;
      entrance = std::min(entrance, (i + (k - i) * (at(i) - most) / (at(i) - at(k))) / degree);
    }
  }
  return entrance;
}

constexpr double kBinomials[][kMostDegreeAlongside + 1] = {
    {1}, {1, 1}, {1, 2, 1}, {1, 3, 3, 1}, {1, 4, 6, 4, 1}, {1, 5, 10, 10, 5, 1}};

bool HaveSameWeights(const Stretch& a, const Stretch& b) {
  if (a.is_rational != b.is_rational) return false;
  for (int i = 1; a.is_rational && i <= a.degree; ++i) {
    const double difference = a.weight[i] * b.weight[0] - b.weight[i] * a.weight[0];
    if (!(std::fabs(difference) <= kSameWeight * a.weight[i] * b.weight[0])) return false;
  }
  return true;
}

// Apart but between two parameters of a, whose heights grow.
Relation ApartBut(const Stretch& a, const double* product, int degree, double far) {
  const auto height = [&a](double t) {
    return BernsteinSum(a.degree, t, [&a](int i) { return a.height[i]; });
  };
  const double first = product[0], last = product[degree];
  Relation relation;
  if (std::fabs(first) > far)
    relation.low = height(EntranceOf(product, degree, far, first > 0 ? 1 : -1, 1));
  if (std::fabs(last) > far)
    relation.high = height(1 - EntranceOf(product, degree, far, last > 0 ? 1 : -1, -1));
  return relation;
}

// Two curves of one degree over the same heights, with nearly the same control points: D = A - B at
// equal parameters. The distance of A(t) from B is that across B' but for the square of what lies
// along it: |D x B'| / |B'| with an error below 2 |D|^2 |B''| / |B'|^2. Bernstein coefficients
// bound the product of polynomials.
Relation OfOneDegree(const Stretch& a, const Stretch& b, const SideReach& reach) {
  const int n = a.degree;
  Vec2 apart[kMostDegree + 1];
  double most = 0;
  for (int i = 0; i <= n; ++i) {
    apart[i] = {a.side[i] - b.side[i], a.height[i] - b.height[i]};
    most = std::max({most, std::fabs(apart[i].x), std::fabs(apart[i].y)});
  }
  if (most <= reach.distance) return {Verdict::kNear};
  if (n > kMostDegreeAlongside || a.is_rational) return {};

  Vec2 leg[kMostDegreeAlongside];
  double shortest = kInfinity, longest = 0, bend = 0;
  for (int i = 0; i < n; ++i) {
    leg[i] = double(n) * Vec2{b.side[i + 1] - b.side[i], b.height[i + 1] - b.height[i]};
    shortest = std::min(shortest, Length(leg[i]));
    longest = std::max(longest, Length(leg[i]));
    if (i > 0) bend = std::max(bend, (n - 1) * Length(leg[i] - leg[i - 1]));
  }
  if (!(most < kClose * shortest && bend < shortest)) return {};
  double product[2 * kMostDegreeAlongside] = {};
  for (int i = 0; i <= n; ++i)
    for (int j = 0; j < n; ++j)
      product[i + j] += kBinomials[n][i] * kBinomials[n - 1][j] * Cross(apart[i], leg[j]);
  const Range range = RangeOfProduct(product, 2 * n - 1);
  const double error = 2 * (2 * most * most) * bend / shortest;
  const double far = reach.apart * longest + error;
  if (range.least > far || range.most < -far) return {Verdict::kApart};
  const double widest = std::max(range.most, -range.least);
  if (widest + error <= reach.distance * (shortest - bend)) return {Verdict::kNear};
  return ApartBut(a, product, 2 * n - 1, far);
}

// The same polynomial with one control point more (degree elevation).
void Raise(Stretch& part) {
  const int n = ++part.degree;
  part.side[n] = part.side[n - 1];
  part.height[n] = part.height[n - 1];
  for (int i = n - 1; i > 0; --i) {
    const double share = static_cast<double>(i) / n;
    part.side[i] = share * part.side[i - 1] + (1 - share) * part.side[i];
    part.height[i] = share * part.height[i - 1] + (1 - share) * part.height[i];
  }
}

double WeightOf(const Stretch& part, int i) { return part.is_rational ? part.weight[i] : 1; }

// n w_1 / w_0 |P_1 - P_0|, or what it is at the other end.
double SpeedAtEnd(const Stretch& part, int end, int beside) {
  const Vec2 leg = {part.side[beside] - part.side[end], part.height[beside] - part.height[end]};
  return part.degree * (WeightOf(part, beside) / WeightOf(part, end)) * Length(leg);
}

// Weights w_i c^i make no other curve but another parameter of it, which runs c times as fast at
// the start and 1 / c times at the end (Farin, Curves and Surfaces for CAGD, on rational Bezier
// curves). The c that makes those of b what they are of a; 0 where none does.
double LikeSpeeds(const Stretch& a, const Stretch& b) {
  constexpr double kLike = 0x1p-6;  // of the speeds
  const double at_start = SpeedAtEnd(a, 0, 1) / SpeedAtEnd(b, 0, 1);
  const double at_end =
      SpeedAtEnd(b, b.degree, b.degree - 1) / SpeedAtEnd(a, a.degree, a.degree - 1);
  return kLike * at_start >= std::fabs(at_start - at_end) ? std::sqrt(at_start * at_end) : 0;
}

// Two curves V / v and W / w with like parameters differ by (V w - W v) / (v w), whose coefficients
// are averages of differences of control points, with positive weights.
Verdict OfQuotients(const Stretch& a, const Stretch& b, double distance) {
  const double c = a.is_rational || b.is_rational ? LikeSpeeds(a, b) : 1;
  if (!(c > 0)) return Verdict::kUnknown;
  const int n = a.degree, m = b.degree;
  Vec2 apart[2 * kMostDegree + 1] = {};
  double weight[2 * kMostDegree + 1] = {};
  double of_a = 1;  // binomials of each degree; of b times c^k
  for (int i = 0; i <= n; of_a *= static_cast<double>(n - i) / (i + 1), ++i) {
    double of_b = 1;
    for (int k = 0; k <= m; of_b *= c * (m - k) / (k + 1), ++k) {
      const double share = of_a * WeightOf(a, i) * (of_b * WeightOf(b, k));
      apart[i + k] = apart[i + k] + share * Vec2{a.side[i] - b.side[k], a.height[i] - b.height[k]};
      weight[i + k] += share;
    }
  }
  for (int i = 0; i <= n + m; ++i) {
    const bool is_number = weight[i] > 0 && weight[i] < kInfinity;
    if (!is_number || !(weight[i] * distance >= Length(apart[i]))) return Verdict::kUnknown;
  }
  return Verdict::kNear;
}

// Two curves of any degrees and weights: one may be the other, written otherwise.
Relation OfTwoCurves(const Stretch& a, const Stretch& b, const SideReach& reach) {
  const int n = std::max(a.degree, b.degree);
  if (std::min(a.degree, b.degree) < 2) return {};
  if (a.degree == b.degree && HaveSameWeights(a, b)) return OfOneDegree(a, b, reach);
  const double apart = std::max(std::fabs(a.at_low - b.at_low), std::fabs(a.at_high - b.at_high));
  if (!(apart < kClose * std::hypot(a.at_high - a.at_low, a.high - a.low))) return {};
  if (a.is_rational || b.is_rational || n > kMostDegreeAlongside)
    return {OfQuotients(a, b, reach.distance)};
  Stretch like_a = a, like_b = b;
  for (Stretch* part : {&like_a, &like_b})
    while (part->degree < n) Raise(*part);
  return OfOneDegree(like_a, like_b, reach);
}

// P = W / w lies |P - c| - r beside a circle, and (|P - c| - r)(|P - c| + r) w^2 is the polynomial
// |W - c w|^2 - r^2 w^2, here over r^2 and with the weights of W at most 1.
Verdict BesideCircle(const Circle& arc, const Stretch& curve, const SideReach& reach) {
  const int n = curve.degree;
  if (n < 2 || n > kMostDegreeAlongside) return Verdict::kUnknown;
  Vec2 out[kMostDegreeAlongside + 1];
  double weight[kMostDegreeAlongside + 1];
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
  double product[2 * kMostDegreeAlongside + 1] = {};
  for (int i = 0; i <= n; ++i)
    for (int j = 0; j <= n; ++j)
      product[i + j] +=
          kBinomials[n][i] * kBinomials[n][j] * (Dot(out[i], out[j]) - weight[i] * weight[j]);
  const Range range = RangeOfProduct(product, 2 * n);
  const double widest =
      arc.radius * (std::max(range.most, -range.least) + kRounding) / (least * least);
  // Beside the half on which the arc is, not beside the other one.
  const auto other = [&](Vec2 p) { return -arc.bulge * arc.radius * p.x > reach.near; };
  const bool is_beside = std::none_of(out, out + n + 1, other);
  if (is_beside && widest <= reach.distance) return Verdict::kNear;
  // |P - c| + r is at most 2 r and the distance.
  const double apart = std::max(range.least, -range.most);
  const double far = reach.apart * by;
  return apart > far * (2 + far) + kRounding ? Verdict::kApart : Verdict::kUnknown;
}

}  // namespace

Relation Alongside(const Circle& a, const Stretch& part_a, const Circle& b, const Stretch& part_b,
                   const SideReach& reach) {
  const bool arc_a = a.radius > 0, arc_b = b.radius > 0;
  if (arc_a && arc_b) {
    const double apart = Length(a.centre - b.centre) + std::fabs(a.radius - b.radius);
    // The two halves of a circle share ends and nothing else.
    const bool is_near = a.bulge == b.bulge && apart <= reach.distance;
    return {is_near ? Verdict::kNear : Verdict::kUnknown};
  }
  if (arc_a) return {BesideCircle(a, part_b, reach)};
  if (arc_b) return {BesideCircle(b, part_a, reach)};
  return OfTwoCurves(part_a, part_b, reach);
}

}  // namespace kurvo::outline
