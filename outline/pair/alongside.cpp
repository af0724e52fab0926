#include "pair/alongside.h"

#include <algorithm>
#include <cmath>

#include "pair/circles.h"
#include "pair/one_degree.h"
#include "pair/quotients.h"

namespace kurvo::outline {
namespace {

constexpr double kClose = 0.01;  // of the chord: apart at the ends
constexpr double kSameWeight = 0x1p-40;

bool HaveSameWeights(const Stretch& a, const Stretch& b) {
  if (a.is_rational != b.is_rational) return false;
  for (int i = 1; a.is_rational && i <= a.degree; ++i) {
    const double difference = a.weight[i] * b.weight[0] - b.weight[i] * a.weight[0];
    if (!(std::fabs(difference) <= kSameWeight * a.weight[i] * b.weight[0])) return false;
  }
  return true;
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

// Two curves of any degrees and weights: one may be the other, written otherwise.
Relation OfUnlike(const Stretch& a, const Stretch& b, const SideReach& reach) {
  const int n = std::max(a.degree, b.degree);
  const double apart = std::max(std::fabs(a.at_low - b.at_low), std::fabs(a.at_high - b.at_high));
  if (!(apart < kClose * std::hypot(a.at_high - a.at_low, a.high - a.low))) return {};
  if (a.is_rational || b.is_rational || n > kMostOfOneDegree) return OfQuotients(a, b, reach);
  Stretch like_a = a, like_b = b;
  for (Stretch* part : {&like_a, &like_b})
    while (part->degree < n) Raise(*part);
  return OfOneDegree(like_a, like_b, reach);
}

Relation OfTwoCurves(const Stretch& a, const Stretch& b, const SideReach& reach) {
  if (std::min(a.degree, b.degree) < 2) return {};
  if (a.degree != b.degree || !HaveSameWeights(a, b)) return OfUnlike(a, b, reach);
  if (!a.is_rational && a.degree <= kMostOfOneDegree) return OfOneDegree(a, b, reach);
  const Relation relation = OfOneDegree(a, b, reach);
  return relation.verdict == Verdict::kUnknown ? OfUnlike(a, b, reach) : relation;
}

}  // namespace

Relation Alongside(const Circle& a, const Stretch& part_a, const Circle& b, const Stretch& part_b,
                   const SideReach& reach) {
  const bool arc_a = a.radius > 0, arc_b = b.radius > 0;
  if (arc_a && arc_b) return OfTwoCircles(a, part_a, b, reach);
  if (arc_a) return OfCircleAndCurve(a, part_b, reach);
  if (arc_b) return OfCircleAndCurve(b, part_a, reach);
  return OfTwoCurves(part_a, part_b, reach);
}

}  // namespace kurvo::outline
