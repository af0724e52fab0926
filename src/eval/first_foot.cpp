// The first foot point on a plain Bezier curve of low degree, without the others.
//
// With d[i] = P[i] - p and the legs h[j] = P[j+1] - P[j], the Bernstein coefficients of
// F = (C - p) . C' / n, of degree m = 2n - 1, are
//   c[k] = sum over i + j = k of C(n, i) C(n-1, j) / C(m, k)  d[i] . h[j].
// The interval is halved, the left half first, until F is beyond 0 throughout a part or monotone on
// it: coefficients, and their differences, of one sign. A monotone part with a change of sign holds
// one root, on which Newton's method is let loose.
#include "eval/first_foot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "control/bernstein.h"
#include "eval/bracketed_newton.h"
#include "eval/root_finder.h"

namespace kurvo {
namespace {

constexpr int kMaxHalvings = 12;
constexpr double kDotRounding = 1e-12;  // of the products that a coefficient is made of

template <std::size_t kDegree>
class FootSearch {
 public:
  FootSearch(const double (*points)[3], Vec2 p) {
    Vec2 d[kDegree + 1], h[kDegree];
    double reach = 0.0, size = 0.0;
    for (std::size_t i = 0; i <= kDegree; ++i) {
      d[i] = Planar(points[i]) - p;
      reach = std::max(reach, std::fabs(d[i].x) + std::fabs(d[i].y));
      if (i == 0) continue;
      h[i - 1] = d[i] - d[i - 1];
      size = std::max(size, std::fabs(h[i - 1].x) + std::fabs(h[i - 1].y));
    }
    for (std::size_t i = 0; i <= kDegree; ++i)
      for (std::size_t j = 0; j < kDegree; ++j) c_[i + j] += kShare[i][j] * Dot(d[i], h[j]);
    floor_ = 2.0 * kMultipleRootValue / kDegree + kDotRounding * reach * size;
  }

  FirstFoot Run() {
    if (!(std::fabs(c_[0]) > MarginAt(c_[0], c_[1])) || MayVanishAtMiddle()) return {};
    Search(c_, 0.0, 1.0, 0);
    if (foot_.found == FirstFoot::kNowhere &&
        !(std::fabs(c_[kLast]) > MarginAt(c_[kLast], c_[kLast - 1])))
      return {};
    return foot_;
  }

 private:
  static constexpr std::size_t kLast = 2 * kDegree - 1;
  using Coefficients = std::array<double, kLast + 1>;

  static constexpr auto kShare = [] {
    std::array<std::array<double, kDegree>, kDegree + 1> share{};
    for (std::size_t i = 0; i <= kDegree; ++i)
      for (std::size_t j = 0; j < kDegree; ++j)
        share[i][j] = Binomial(kDegree, i) * Binomial(kDegree - 1, j) / Binomial(kLast, i + j);
    return share;
  }();

  // What F can change by between an end of [0, 1] and where roots still count beyond it.
  double MarginAt(double end, double next) const {
    double bend = 0.0;
    for (std::size_t k = 2; k <= kLast; ++k)
      bend = std::max(bend, std::fabs(c_[k] - 2.0 * c_[k - 1] + c_[k - 2]));
    constexpr double kMargin = 1.5 * kRootMargin;
    return floor_ + kMargin * kLast * (std::fabs(next - end) + kMargin * kLast * bend);
  }

  // Whether F or its derivative may be 0 at 1/2, where the search for all roots begins: what it
  // finds then is a matter of rounding, and of fixed behaviour.
  bool MayVanishAtMiddle() const {
    Coefficients w = c_;
    for (std::size_t level = 1; level < kLast; ++level)
      for (std::size_t k = 0; k <= kLast - level; ++k) w[k] = 0.5 * (w[k] + w[k + 1]);
    return !(std::fabs(w[0] + w[1]) > 2.0 * floor_) || !(std::fabs(w[1] - w[0]) > 2.0 * floor_);
  }

  // False when there is nothing more to look for: the foot is found, or in doubt.
  bool Search(const Coefficients& c, double start, double width, int halvings) {
    bool above = true, below = true, rising = true, falling = true;
    for (std::size_t k = 0; k <= kLast; ++k) {
      above = above && c[k] > floor_;
      below = below && -floor_ > c[k];
      if (k == 0) continue;
      rising = rising && c[k] > c[k - 1];
      falling = falling && c[k - 1] > c[k];
    }
    if (above || below) {
      foot_.found = FirstFoot::kNowhere;
      return true;
    }
    foot_.found = FirstFoot::kInDoubt;
    if (rising || falling) {
      if (rising ? -floor_ > c[0] && c[kLast] > floor_ : c[0] > floor_ && -floor_ > c[kLast])
        SolveMonotone(c, start, width, rising);
      return false;
    }
    if (halvings == kMaxHalvings) return false;
    Coefficients left, right = c;
    left[0] = c[0];
    for (std::size_t level = 1; level <= kLast; ++level) {
      for (std::size_t k = 0; k <= kLast - level; ++k) right[k] = 0.5 * (right[k] + right[k + 1]);
      left[level] = right[0];
    }
    return Search(left, start, 0.5 * width, halvings + 1) &&
           Search(right, start + 0.5 * width, 0.5 * width, halvings + 1);
  }

  void SolveMonotone(const Coefficients& c, double start, double width, bool rising) {
    // The powers of the part's own parameter: binomials times forward differences.
    Coefficients f = c;
    for (std::size_t pass = 1; pass <= kLast; ++pass)
      for (std::size_t k = kLast; k >= pass; --k) f[k] -= f[k - 1];
    for (std::size_t k = 1; k <= kLast; ++k) f[k] *= Binomial(kLast, k);
    const auto at = [&f](double s) {  // Horner's scheme
      ValueAndSlope v{f[kLast], 0.0};
      for (std::size_t k = kLast; k-- > 0;) {
        v.slope = v.slope * s + v.value;
        v.value = v.value * s + f[k];
      }
      return v;
    };
    const double s = BracketedNewton(0.0, 1.0, c[0] / (c[0] - c[kLast]), rising, at);
    const double t = start + width * s;
    if (start + width - t > kSameRoot) foot_ = {FirstFoot::kAt, t};
  }

  Coefficients c_{};
  double floor_ = 0.0;  // values up to it may be 0, or count as a multiple root
  FirstFoot foot_;
};

}  // namespace

FirstFoot FirstFootOn(const BezierView<3>& bezier, Vec2 p) {
  if (bezier.degree == 3) return FootSearch<3>(bezier.points, p).Run();
  if (bezier.degree == 2) return FootSearch<2>(bezier.points, p).Run();
  return {};
}

}  // namespace kurvo
