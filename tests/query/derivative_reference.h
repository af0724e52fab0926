// Derivatives of free-form curves by Cauchy's integral, as an independent reference: the curve is
// evaluated by the textbook recursion at complex parameters around t, and
//   f^(n)(t) = n! / (2 pi r^n) times the integral of f(t + r e^(ia)) e^(-ina) over a in [0, 2 pi].
#pragma once

#include <complex>
#include <vector>

#include "build/curves.h"

namespace kurvo_test {

class DerivativeReference {
 public:
  struct Vector {
    long double x, y;
    long double Size() const { return std::hypot(x, y); }
  };

  explicit DerivativeReference(const Curve& cv) {
    const FreeForm form(cv);
    const bool bezier = cv.type == CV_BEZIER || cv.type == CV_RBEZIER;
    order_ = form.order;
    count_ = bezier ? form.order : SplineCount(cv);
    for (int i = 0; i < count_; ++i) {
      const double* p = form.points + i * form.stride;
      const long double w = form.stride == 4 ? p[3] : 1;
      points_.push_back({w * p[0], w * p[1], w});
    }
    for (int i = 0; i < order_ + count_; ++i)
      knots_.push_back(bezier ? i >= order_ : form.knots[i]);
  }

  // By the curve's own parameter, on the span to the right of a knot.
  Vector Derivative(double t, int n) const {
    int span = order_ - 1;
    for (int i = span; i < count_; ++i)
      if (knots_[At(i)] < knots_[At(i + 1)] && knots_[At(i)] <= t) span = i;
    long double r = (L(knots_[At(span + 1)]) - L(knots_[At(span)])) / 2;
    while (HasPole(span, t, 2 * r)) r /= 2;
    Complex x = 0, y = 0;
    for (int k = 0; k < kNodes; ++k) {
      const long double angle = Angle(k);
      const Point3 p = PointAt(span, L(t) + std::polar(r, angle));
      const Complex turn = std::polar(1.0L, -n * angle);
      x += p[0] / p[2] * turn;
      y += p[1] / p[2] * turn;
    }
    const long double factor = std::tgamma(n + 1.0L) / (std::pow(r, n) * kNodes);
    return {x.real() * factor, y.real() * factor};
  }

 private:
  using Complex = std::complex<long double>;
  using Point3 = std::array<Complex, 3>;
  static constexpr int kNodes = 64;
  static std::size_t At(int i) { return static_cast<std::size_t>(i); }
  static long double Angle(int k) { return 2 * kPiL * k / kNodes; }

  // Whether the weight has a zero within r of t: it then winds around 0 along that circle.
  bool HasPole(int span, double t, long double r) const {
    long double turn = 0;
    Complex before = PointAt(span, L(t) + r)[2];
    for (int k = 1; k <= kNodes; ++k) {
      const Complex w = PointAt(span, L(t) + std::polar(r, Angle(k)))[2];
      turn += std::arg(w / before);
      before = w;
    }
    return std::fabs(turn) > 1;
  }

  Point3 PointAt(int span, Complex t) const {  // de Boor
    const int n = order_ - 1;
    std::vector<Point3> d(points_.begin() + span - n, points_.begin() + span + 1);
    for (int level = 1; level <= n; ++level)
      for (int j = n; j >= level; --j) {
        const long double left = knots_[At(span - n + j)], right = knots_[At(span + j - level + 1)];
        const Complex s = (t - left) / (right - left);
        for (std::size_t c = 0; c < 3; ++c)
          d[At(j)][c] = (1.0L - s) * d[At(j - 1)][c] + s * d[At(j)][c];
      }
    return d.back();
  }

  int order_, count_;
  std::vector<Point3> points_;
  Numbers knots_;
};

// Random knots of a B-spline with `count` control points: inner ones sometimes double, the ends
// clamped or not, the domain anywhere.
inline Numbers RandomKnots(Random& random, int order, int count) {
  Numbers knots;
  double u = random.Uniform(-3, 3);
  const bool clamped = random.Uniform(0, 1) < .5;
  for (int i = 0; i < order + count; ++i) {
    knots.push_back(u);
    const bool inside = i >= order - 1 && i < count;
    if (inside || !clamped) u += i > order && random.Uniform(0, 1) < .2 ? 0 : random.Uniform(.2, 1);
  }
  return knots;
}

}  // namespace kurvo_test
