// Points and derivatives of curves of every type, slowly and in long double: de Boor's recursion on
// power series in h, evaluated at t + h. Coefficient k is then the k-th derivative over k!.
#pragma once

#include <array>
#include <cmath>
#include <vector>

#include "build/curves.h"

namespace kurvo_test {

constexpr std::size_t kJetSize = 4;  // the value and three derivatives

struct Jet {
  std::array<long double, kJetSize> c{};

  friend Jet operator+(Jet a, const Jet& b) {
    for (std::size_t i = 0; i < kJetSize; ++i) a.c[i] += b.c[i];
    return a;
  }
  friend Jet operator-(Jet a, const Jet& b) {
    for (std::size_t i = 0; i < kJetSize; ++i) a.c[i] -= b.c[i];
    return a;
  }
  friend Jet operator*(const Jet& a, const Jet& b) {
    Jet product;
    for (std::size_t i = 0; i < kJetSize; ++i)
      for (std::size_t j = 0; i + j < kJetSize; ++j) product.c[i + j] += a.c[i] * b.c[j];
    return product;
  }
  friend Jet operator/(const Jet& a, const Jet& b) {
    Jet quotient;
    for (std::size_t i = 0; i < kJetSize; ++i) {
      long double rest = a.c[i];
      for (std::size_t j = 0; j < i; ++j) rest -= quotient.c[j] * b.c[i - j];
      quotient.c[i] = rest / b.c[0];
    }
    return quotient;
  }
  long double Derivative(std::size_t n) const {
    return c[n] * std::tgamma(static_cast<long double>(n) + 1);
  }
};

struct JetPoint {
  Jet x, y;
  long double span = 1;  // of the parameter: the length of the piece that was evaluated
  long double Size(std::size_t n) const { return std::hypot(x.Derivative(n), y.Derivative(n)); }
};

namespace slow {

struct Weighted {
  Jet x, y, w;
};

inline JetPoint FreeFormAt(const Curve& cv, long double t) {
  const FreeForm form(cv);
  const bool bezier = cv.type == CV_BEZIER || cv.type == CV_RBEZIER;
  const int n = form.order - 1, count = bezier ? form.order : SplineCount(cv);
  const auto knot = [&](int i) { return bezier ? (i > n ? 1.0L : 0.0L) : L(form.knots[i]); };
  int span = -1;  // the last one that begins before t, the first one for t before all
  for (int i = n; i < count; ++i)
    if (knot(i) < knot(i + 1) && (span < 0 || knot(i) <= t)) span = i;
  std::vector<Weighted> d;
  for (int i = span - n; i <= span; ++i) {
    const double* p = form.points + i * form.stride;
    const long double w = form.stride == 4 ? p[3] : 1.0;
    d.push_back({{{w * p[0]}}, {{w * p[1]}}, {{w}}});
  }
  for (int level = 1; level <= n; ++level) {
    for (int j = n; j >= level; --j) {
      const long double left = knot(span - n + j), width = knot(span + j - level + 1) - left;
      const Jet s{{(t - left) / width, 1 / width}};
      Weighted& b = d[static_cast<std::size_t>(j)];
      const Weighted& a = d[static_cast<std::size_t>(j - 1)];
      b = {a.x + s * (b.x - a.x), a.y + s * (b.y - a.y), a.w + s * (b.w - a.w)};
    }
  }
  const Weighted& q = d.back();
  return {q.x / q.w, q.y / q.w, knot(span + 1) - knot(span)};
}

inline JetPoint ArcAt(const KurvoArc& arc, long double t) {
  const auto [start, sweep] = Turn(arc);
  JetPoint p;
  long double factor = arc.radius;
  for (std::size_t k = 0; k < kJetSize; ++k) {  // each derivative turns by a quarter
    const long double at = start + t * sweep + kPiL / 2 * static_cast<long double>(k);
    p.x.c[k] = factor * std::cos(at);
    p.y.c[k] = factor * std::sin(at);
    factor *= sweep / static_cast<long double>(k + 1);
  }
  p.x.c[0] += arc.centre[0];
  p.y.c[0] += arc.centre[1];
  return p;
}

}  // namespace slow

// At a parameter of the curve's own domain; beyond it, on the continuation. On a composite the
// derivatives are by the parameter of the piece of the innermost level; `piece` is set to that of
// the outermost one.
inline JetPoint SlowAt(const Curve& cv, long double t, const Curve** piece = nullptr) {
  if (piece) *piece = &cv;
  if (cv.type == CV_LINE) {
    const auto& line = *static_cast<KurvoLine*>(cv.data);
    const Jet s{{t, 1}};
    const auto along = [&](int i) {
      return Jet{{line.start[i]}} + s * Jet{{L(line.end[i]) - line.start[i]}};
    };
    return {along(0), along(1)};
  }
  if (cv.type == CV_ARC) return slow::ArcAt(*static_cast<KurvoArc*>(cv.data), t);
  if (cv.type != CV_SEGCV) return slow::FreeFormAt(cv, t);
  const auto& c = *static_cast<KurvoSegcv*>(cv.data);
  int i = 0;
  for (; i + 1 < c.count && t > c.widths[i]; ++i) t -= c.widths[i];
  const auto [start, length] = Domain(c.curves[i]);
  if (piece) *piece = &c.curves[i];
  return SlowAt(c.curves[i], start + t / c.widths[i] * length);
}

// The length between two parameters of a curve that is smooth there, by the five-point rule of
// Gauss and Legendre.
inline long double GaussLegendre(const Curve& cv, long double from, long double to) {
  constexpr long double kNodes[] = {0, .538469310105683091L, .906179845938663993L};
  constexpr long double kWeights[] = {.568888888888888889L, .478628670499366468L,
                                      .236926885056189088L};
  const long double middle = (from + to) / 2, half = (to - from) / 2;
  long double sum = kWeights[0] * SlowAt(cv, middle).Size(1);
  for (std::size_t i = 1; i < 3; ++i)
    sum += kWeights[i] * (SlowAt(cv, middle - half * kNodes[i]).Size(1) +
                          SlowAt(cv, middle + half * kNodes[i]).Size(1));
  return half * sum;
}

// The same, halved until the halves together agree with the whole.
inline long double SmoothLength(const Curve& cv, long double from, long double to,
                                long double whole, int depth = 0) {
  constexpr long double kAgreed = 1e-8L;  // far below what the library promises
  constexpr int kMaxDepth = 24;           // a cusp: the rest is shorter than a millionth
  const long double middle = (from + to) / 2, left = GaussLegendre(cv, from, middle),
                    right = GaussLegendre(cv, middle, to);
  if (std::fabs(left + right - whole) <= kAgreed || depth == kMaxDepth) return left + right;
  return SmoothLength(cv, from, middle, left, depth + 1) +
         SmoothLength(cv, middle, to, right, depth + 1);
}

// The length between two parameters; of a composite its whole length.
inline long double SlowLength(const Curve& cv, long double from, long double to) {
  if (cv.type == CV_SEGCV) {
    const auto& c = *static_cast<KurvoSegcv*>(cv.data);
    long double sum = 0;
    for (int i = 0; i < c.count; ++i) {
      const auto [start, length] = Domain(c.curves[i]);
      sum += SlowLength(c.curves[i], start, L(start) + length);
    }
    return sum;
  }
  std::vector<long double> breaks{from};
  if (cv.type == CV_BSPLINE || cv.type == CV_RBSPLINE) {
    const FreeForm form(cv);
    for (int i = form.order; i < SplineCount(cv); ++i)
      if (form.knots[i] > breaks.back() && form.knots[i] < to) breaks.push_back(form.knots[i]);
  }
  breaks.push_back(to);
  long double sum = 0;
  for (std::size_t i = 0; i + 1 < breaks.size(); ++i)
    sum += SmoothLength(cv, breaks[i], breaks[i + 1], GaussLegendre(cv, breaks[i], breaks[i + 1]));
  return sum;
}

}  // namespace kurvo_test
