// What the tests of intersection share: the call, and curves moved and reversed by hand.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "build/curves.h"

namespace kurvo_test {

using Wide = long double;

constexpr double kAnswerSeconds = 1.0;  // more than any call may take

struct Hit {
  double a, b;  // parameters on the first and the second curve
};

struct Answer {
  uint32_t result;
  std::vector<Hit> hits;
};

inline Answer Intersect(const Curve& a, const Curve& b, int mode, GlobalVar& g) {
  double stale = 0;
  CvParam on_a = {7, &stale}, on_b = {7, &stale};
  const Stopwatch watch;
  Answer answer{KurvocrCurveCurve(&a, &b, &on_a, &on_b, mode, &g), {}};
  EXPECT_LT(watch.Seconds(), kAnswerSeconds);
  EXPECT_EQ(on_a.count, on_b.count);
  EXPECT_EQ(on_a.count > 0, answer.result == KURVO_FOUND);
  EXPECT_EQ(on_a.values != nullptr, on_a.count > 0);
  EXPECT_EQ(on_b.values != nullptr, on_b.count > 0);
  for (int i = 0; i < std::min(on_a.count, on_b.count); ++i)
    answer.hits.push_back({on_a.values[i], on_b.values[i]});
  KurvocrFreeCvParam(&on_a);
  KurvocrFreeCvParam(&on_b);
  return answer;
}

// ---- Curves by hand ----

struct WidePoint {
  Wide x, y, w;  // coordinates times the weight
};

inline WidePoint Between(const WidePoint& a, const WidePoint& b, Wide t) {
  return {(1 - t) * a.x + t * b.x, (1 - t) * a.y + t * b.y, (1 - t) * a.w + t * b.w};
}

// As many control points as the order, from `first` on.
inline std::vector<WidePoint> Widened(const FreeForm& form, int first) {
  std::vector<WidePoint> points;
  for (int i = first; i < first + form.order; ++i) {
    const double* p = form.points + i * form.stride;
    const Wide w = form.stride == 4 ? p[3] : 1;
    points.push_back({w * p[0], w * p[1], w});
  }
  return points;
}

// The Bezier curve of polynomials in s over [-1, 1], lowest power first; its parameter is
// (s + 1) / 2. Point j holds the blossom at j times 1 and n - j times -1: of s^i that is the
// coefficient of z^i in (1 + z)^j (1 - z)^(n - j), divided by C(n, i).
inline std::string Poly(Numbers x, Numbers y) {
  const std::size_t n = std::max(x.size(), y.size()) - 1;
  x.resize(n + 1);
  y.resize(n + 1);
  Numbers points;
  for (std::size_t j = 0; j <= n; ++j) {
    std::vector<Wide> symmetric(n + 1), binomial(n + 1);
    symmetric[0] = binomial[0] = 1;
    for (std::size_t k = 0; k < n; ++k)
      for (std::size_t i = n; i > 0; --i) {
        symmetric[i] += (k < j ? 1 : -1) * symmetric[i - 1];
        binomial[i] += binomial[i - 1];
      }
    Wide px = 0, py = 0;
    for (std::size_t i = 0; i <= n; ++i) {
      px += x[i] * symmetric[i] / binomial[i];
      py += y[i] * symmetric[i] / binomial[i];
    }
    points.insert(points.end(), {static_cast<double>(px), static_cast<double>(py)});
  }
  return Text("b", points);
}

// The points of the Bezier curve `text` between two of its parameters as a curve of its own.
inline std::string Part(const std::string& text, double from, double to) {
  const Owned whole = Make(text);
  const FreeForm form(*whole);
  const bool rational = whole->type == CV_RBEZIER;
  Numbers points;
  for (int j = 0; j < form.order; ++j) {
    std::vector<WidePoint> work = Widened(form, 0);
    for (int level = 1; work.size() > 1; work.pop_back(), ++level)
      for (std::size_t i = 0; i + 1 < work.size(); ++i)
        work[i] = Between(work[i], work[i + 1], level <= j ? to : from);
    const auto [px, py, w] = work[0];
    points.insert(points.end(), {static_cast<double>(px / w), static_cast<double>(py / w)});
    if (rational) points.push_back(static_cast<double>(w));
  }
  return Text(text.substr(0, 1), points);
}

struct Similarity {
  double turn = 0, x = 0, y = 0, scale = 1;
  bool mirror = false;

  void operator()(double* p) const {
    const double c = scale * std::cos(turn), s = scale * std::sin(turn);
    const double px = p[0], py = mirror ? -p[1] : p[1];
    p[0] = c * px - s * py + x;
    p[1] = s * px + c * py + y;
  }
};

inline void Apply(const Similarity& move, Curve& cv) {
  if (cv.type == CV_LINE) {
    auto& line = *static_cast<KurvoLine*>(cv.data);
    for (double* p : {line.start, line.end}) move(p);
  } else if (cv.type == CV_ARC) {
    auto& arc = *static_cast<KurvoArc*>(cv.data);
    for (double* p : {arc.centre, arc.start, arc.end}) move(p);
    arc.radius *= move.scale;
    if (move.mirror) arc.normal[2] *= -1;
  } else if (cv.type == CV_SEGCV) {
    auto& block = *static_cast<KurvoSegcv*>(cv.data);
    for (int i = 0; i < block.count; ++i) Apply(move, block.curves[i]);
  } else {
    const FreeForm form(cv);
    const bool spline = cv.type == CV_BSPLINE || cv.type == CV_RBSPLINE;
    const int count = spline ? SplineCount(cv) : form.order;
    for (int i = 0; i < count; ++i) move(form.points + i * form.stride);
  }
}

// What was at t is then at start + end - t of the same domain.
inline void Reverse(Curve& cv) {
  if (cv.type == CV_LINE) {
    auto& line = *static_cast<KurvoLine*>(cv.data);
    std::swap(line.start, line.end);
  } else if (cv.type == CV_ARC) {
    auto& arc = *static_cast<KurvoArc*>(cv.data);
    std::swap(arc.start, arc.end);
    arc.normal[2] *= -1;
  } else if (cv.type == CV_SEGCV) {
    auto& block = *static_cast<KurvoSegcv*>(cv.data);
    std::reverse(block.curves, block.curves + block.count);
    std::reverse(block.widths, block.widths + block.count);
    for (int i = 0; i < block.count; ++i) Reverse(block.curves[i]);
  } else {
    const FreeForm form(cv);
    const bool spline = cv.type == CV_BSPLINE || cv.type == CV_RBSPLINE;
    const int count = spline ? SplineCount(cv) : form.order;
    for (int i = 0, j = count - 1; i < j; ++i, --j)
      std::swap_ranges(form.points + i * form.stride, form.points + (i + 1) * form.stride,
                       form.points + j * form.stride);
    if (!spline) return;
    const auto [start, length] = Domain(cv);
    std::reverse(form.knots, form.knots + form.order + count);
    for (int i = 0; i < form.order + count; ++i)
      form.knots[i] = start + (start + length) - form.knots[i];
  }
}

inline double Mirrored(const Curve& cv, double t) {
  const auto [start, length] = Domain(cv);
  return start + (start + length) - t;
}

}  // namespace kurvo_test
