#include "pair/one_degree.h"

#include <algorithm>
#include <cmath>

#include "pair/coefficients.h"

namespace kurvo::outline {
namespace {

constexpr double kClose = 0.01;  // of the shortest leg: apart at equal parameters
constexpr double kInfinity = Relation::kUnbounded;

}  // namespace

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
  if (n > kMostOfOneDegree || a.is_rational) return {};

  Vec2 leg[kMostOfOneDegree];
  double shortest = kInfinity, longest = 0, bend = 0;
  for (int i = 0; i < n; ++i) {
    leg[i] = double(n) * Vec2{b.side[i + 1] - b.side[i], b.height[i + 1] - b.height[i]};
    shortest = std::min(shortest, Length(leg[i]));
    longest = std::max(longest, Length(leg[i]));
    if (i > 0) bend = std::max(bend, (n - 1) * Length(leg[i] - leg[i - 1]));
  }
  if (!(most < kClose * shortest && bend < shortest)) return {};
  double product[2 * kMostOfOneDegree] = {};
  const auto size = static_cast<std::size_t>(n);
  for (std::size_t i = 0; i <= size; ++i)
    for (std::size_t j = 0; j < size; ++j)
      product[i + j] += kBinomials[size][i] * kBinomials[size - 1][j] * Cross(apart[i], leg[j]);
  const Range range = RangeOfProduct(product, 2 * n - 1);
  const double error = 2 * (2 * most * most) * bend / shortest;
  const double far = reach.apart * longest + error;
  if (range.least > far || range.most < -far) return {Verdict::kApart};
  const double widest = std::max(range.most, -range.least);
  if (widest + error <= reach.distance * (shortest - bend)) return {Verdict::kNear};
  return ApartBut(a, product, 2 * n - 1, far);
}

}  // namespace kurvo::outline
