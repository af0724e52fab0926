// The narrowest box around a chain.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "strand/bernstein.h"
#include "strand/check.h"
#include "strand/joints.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

// Finds where one coordinate of a free-form span turns: at the sign changes of a polynomial in
// Bernstein form. By Descartes's rule it has no more of them than its coefficients; pieces with
// several are halved until the coordinate changes by rounding only over them.
class Turns {
 public:
  // `slope`: of degree n, overwritten; over the square of the least weight it bounds the derivative
  // of the coordinate by u. `visit` takes a u near each turn, at which the coordinate is within
  // `tolerance` of its extreme.
  template <class Visit>
  static void Find(double* slope, int n, double least_weight, double tolerance,
                   const Visit& visit) {
    Turns turns(n, least_weight * least_weight * tolerance);
    turns.Piece(slope, 0, 1, kMostHalvings, visit);
  }

 private:
  static constexpr int kMostHalvings = 50;
  static constexpr int kMostSteps = 60;      // of regula falsi, after which it has halved
  static constexpr int kMostWork = 1 << 21;  // coefficients made by halving; then pieces are left

  Turns(int n, double tolerance) : n_(n), tolerance_(tolerance) {}

  template <class Visit>
  void Piece(double* slope, double from, double width, int halvings_left, const Visit& visit) {
    double most = 0;
    int changes = 0;
    double last = 0;
    for (int i = 0; i <= n_; ++i) {
      most = std::max(most, std::fabs(slope[i]));
      if (slope[i] == 0) continue;
      if (last * slope[i] < 0) ++changes;
      last = slope[i] < 0 ? -1 : 1;
    }
    if (changes == 0) return;
    if (width * most <= tolerance_ || halvings_left == 0 || work_ > kMostWork)
      return visit(from + 0.5 * width);
    if (changes == 1) return visit(from + width * Root(slope, width));
    work_ += n_ * n_;
    double high[2 * kMostDegree];
    SplitBernstein(slope, n_, 0.5, slope, high);
    // A turn just at the middle is a change of sign in neither half.
    if (high[0] == 0) visit(from + 0.5 * width);
    Piece(slope, from, 0.5 * width, halvings_left - 1, visit);
    Piece(high, from + 0.5 * width, 0.5 * width, halvings_left - 1, visit);
  }

  // The one root in a piece: regula falsi in which an end that stays loses half its value (Dowell
  // and Jarratt, BIT 11, 1971: the Illinois method).
  double Root(const double* slope, double width) const {
    const auto at = [&](double u) {
      return BernsteinSum(n_, u, [slope](int i) { return slope[i]; });
    };
    double low = 0, high = 1, f_low = slope[0], f_high = slope[n_];
    double u = f_low == 0 ? 0 : 1;
    if (f_low == 0 || f_high == 0) {  // the ends are zeros: the sign changes within
      f_low = at(low = 0x1p-30);
      f_high = at(high = 1 - 0x1p-30);
    }
    if (f_low * f_high >= 0) return u;
    for (int step = 0; step < kMostSteps; ++step) {
      u = (low * f_high - high * f_low) / (f_high - f_low);
      if (!(u > low && u < high)) u = 0.5 * (low + high);
      const double f = at(u);
      // The coordinate at u differs from its extreme by no more.
      if (width * std::fabs(f) * (high - low) <= tolerance_) break;
      if (f * f_high > 0) {
        high = u;
        f_high = f;
        f_low *= 0.5;
      } else {
        low = u;
        f_low = f;
        f_high *= 0.5;
      }
    }
    return u;
  }

  int n_;
  double tolerance_;  // of the coordinate times the square of the least weight
  int work_ = 0;
};

constexpr double kBoxTolerance = 0x1p-48;  // of the frame's unit

void AddPolynomial(const Span& span, Bounds& box) {
  const Vec2* p = span.points;
  const int n = span.degree;
  const double span_tolerance = kBoxTolerance * HullOf(span).LongerSide();
  const auto add = [&](double u) { box.Add(PointAt(span, u)); };
  double slope[kMostDegree];
  for (const auto axis : {&Vec2::x, &Vec2::y}) {
    for (int i = 0; i < n; ++i) slope[i] = n * (p[i + 1].*axis - p[i].*axis);
    if (n == 2 || n == 3) {
      // slope = a (1-u)^2 + 2 b u (1-u) + c u^2, of a quadratic b = (a + c) / 2. The root is that
      // of a + 2 b r + c r^2 with r = u / (1 - u) > 0, without cancellation: q / c and a / q.
      const double a = slope[0], c = slope[n - 1], b = n == 3 ? slope[1] : 0.5 * (a + c);
      const double under = b * b - a * c;
      if (!(under >= 0)) continue;
      const double q = -(b + std::copysign(std::sqrt(under), b));
      for (const double u : {q / (q + c), a / (a + q)})  // r / (1 + r)
        if (u > 0 && u < 1) add(u);
      continue;
    }
    Turns::Find(slope, n - 1, 1, span_tolerance, add);
  }
}

// The numerator X' w - X w' of the derivative of X / w has the coefficients, of degree 2 n - 2,
// that Speed has too: (j - i) C(n,i) C(n,j) w_i w_j (P_j - P_i) over those i < j with i + j - 1 =
// k.
void AddRational(const Span& span, Bounds& box) {
  const int n = span.degree;
  const double* w = span.weights;
  const double span_tolerance = kBoxTolerance * HullOf(span).LongerSide();
  const double least = *std::min_element(w, w + n + 1);
  double binomials[kMostDegree + 1];
  binomials[0] = 1;
  for (int i = 1; i <= n; ++i) binomials[i] = binomials[i - 1] * (n - i + 1) / i;
  for (const auto axis : {&Vec2::x, &Vec2::y}) {
    double slope[2 * kMostDegree] = {};
    for (int i = 0; i < n; ++i)
      for (int j = i + 1; j <= n; ++j)
        slope[i + j - 1] += (j - i) * binomials[i] * binomials[j] *
                            (w[i] * span.points[j].*axis - w[j] * span.points[i].*axis);
    double binomial = 1;
    for (int k = 0; k <= 2 * n - 2; ++k) {
      slope[k] /= binomial;
      binomial = binomial * (2 * n - 2 - k) / (k + 1);
    }
    Turns::Find(slope, 2 * n - 2, least, span_tolerance,
                [&](double u) { box.Add(PointAt(span, u)); });
  }
}

void AddSpan(const Span& span, Bounds& box) {
  box.Add(span.Start());
  box.Add(span.End());
  if (span.kind == Span::Kind::kArc) return box.Join(HullOf(span));
  if (span.kind == Span::Kind::kBezier) return AddPolynomial(span, box);
  if (span.kind == Span::Kind::kRational) return AddRational(span, box);
}

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoChainTightBox(const Cvseq* chain, Box box, GlobalVar* g) noexcept {
  return Answer(g, [&] {
    Require(box, KURVO_ERR_OPTION);
    const Frame frame = FrameOf(chain);
    RequireJoined(*chain, GetEpsilon(g));
    Bounds bounds;
    ForEachSpan(*chain, frame, [&bounds](const Span& span) { AddSpan(span, bounds); });
    const bool is_empty = bounds.IsEmpty();
    const Vec2 low = is_empty ? Vec2{0, 0} : frame.Outwards(bounds.low);
    const Vec2 high = is_empty ? Vec2{0, 0} : frame.Outwards(bounds.high);
    const double numbers[] = {low.x, low.y, 0, high.x, high.y, 0};
    std::copy(numbers, numbers + 6, &box[0]);
  });
}
