// Curves for the tests of conversion, reversal and matching, written down in one line each.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>
#include <utility>
#include <vector>

#include "calc/support.h"

namespace kurvo_test {

// A curve that frees itself.
class Owned {
 public:
  Owned() = default;
  explicit Owned(int32_t type) { curve_.type = type; }
  Owned(Owned&& other) noexcept : curve_(other.Release()) {}
  Owned& operator=(Owned&& other) noexcept {
    std::swap(curve_, other.curve_);
    return *this;
  }
  ~Owned() { KurvocvFreeCurve(&curve_); }

  Curve* get() { return &curve_; }
  const Curve* get() const { return &curve_; }
  const Curve* operator->() const { return &curve_; }
  const Curve& operator*() const { return curve_; }
  template <class Block>
  Block& block() const {
    return *static_cast<Block*>(curve_.data);
  }
  Curve Release() { return std::exchange(curve_, Curve{}); }

 private:
  Curve curve_{};
};

using Numbers = std::vector<double>;

inline Owned Arc(double x, double y, double r, double angle, double sweep) {
  Owned cv;
  auto* arc = static_cast<KurvoArc*>(KurvocvMallocCurve(cv.get(), CV_ARC));
  arc->radius = r;
  KurvoclSetCoord(arc->centre, x, y, 0);
  KurvoclSetCoord(arc->normal, 0, 0, sweep < 0 ? -1 : 1);
  KurvoclSetCoord(arc->start, x + r * std::cos(angle), y + r * std::sin(angle), 0);
  const double to = angle + sweep;
  KurvoclSetCoord(arc->end, x + r * std::cos(to), y + r * std::sin(to), 0);
  return cv;
}

// The angles that an arc starts at and sweeps, negative for a clockwise one.
struct WideTurn {
  long double start, sweep;
};
inline WideTurn Turn(const KurvoArc& arc) {
  const auto angle = [&](const double* p) {
    return std::atan2(L(p[1]) - arc.centre[1], L(p[0]) - arc.centre[0]);
  };
  const long double start = angle(arc.start);
  long double sweep = angle(arc.end) - start;
  if (arc.normal[2] < 0 && sweep > 0) sweep -= 2 * kPiL;
  if (!(arc.normal[2] < 0) && sweep < 0) sweep += 2 * kPiL;
  return {start, sweep};
}

// The arrays of a free-form curve, whose four blocks begin alike.
struct FreeForm {
  explicit FreeForm(const Curve& cv) {
    std::memcpy(&order, cv.data, sizeof order);
    std::memcpy(&points, static_cast<const char*>(cv.data) + 8, sizeof points);
    std::memcpy(&knots, static_cast<const char*>(cv.data) + 16, sizeof knots);
    if (cv.type == CV_BEZIER || cv.type == CV_RBEZIER) ++order;
    stride = cv.type == CV_RBEZIER || cv.type == CV_RBSPLINE ? 4 : 3;
  }
  int32_t order;
  double* points;
  double* knots;
  int stride;
};

// Points are x, y, or x, y, weight for rational kinds; knots only for B-splines.
inline Owned MakeFreeForm(int32_t type, const Numbers& points, const Numbers& knots = {}) {
  const bool rational = type == CV_RBEZIER || type == CV_RBSPLINE;
  const std::size_t size = rational ? 3 : 2;
  const auto count = static_cast<int32_t>(points.size() / size);
  Owned cv;
  if (knots.empty())
    KurvocvMallocCurve(cv.get(), type, count - 1);
  else
    KurvocvMallocCurve(cv.get(), type, static_cast<int32_t>(knots.size()) - count, count);
  const FreeForm form(*cv);
  double* to = form.points;
  for (auto p = points.begin(); p != points.end(); p += static_cast<std::ptrdiff_t>(size)) {
    *to++ = p[0];
    *to++ = p[1];
    *to++ = 0;
    if (rational) *to++ = p[2];
  }
  if (!knots.empty()) std::copy(knots.begin(), knots.end(), form.knots);
  return cv;
}

inline Owned MakeComposite(const Numbers& widths, std::vector<Owned>&& pieces) {
  Owned cv;
  auto* block = static_cast<KurvoSegcv*>(
      KurvocvMallocCurve(cv.get(), CV_SEGCV, static_cast<int32_t>(pieces.size())));
  std::copy(widths.begin(), widths.end(), block->widths);
  for (std::size_t i = 0; i < pieces.size(); ++i) block->curves[i] = pieces[i].Release();
  return cv;
}

inline Numbers ReadNumbers(std::istream& text) {
  Numbers numbers;
  for (double x; (text >> std::ws).good() && !std::strchr("|()", text.peek()) && text >> x;)
    numbers.push_back(x);
  return numbers;
}

// A curve from its description:
//   l x y x y         line                      b x y ...             Bezier
//   a x y r a s       arc from angle a by s     r x y w ...           rational Bezier
//   e                 line without data         B x y ... | knots     B-spline
//   c widths (..)..   composite of the curves   R x y w ... | knots   rational B-spline
inline Owned Make(std::istream& text) {
  char letter;
  text >> letter;
  const Numbers n = ReadNumbers(text);
  switch (letter) {
    case 'l': {
      Owned cv;
      auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(cv.get(), CV_LINE));
      KurvoclSetCoord(line->start, n[0], n[1], 0);
      KurvoclSetCoord(line->end, n[2], n[3], 0);
      return cv;
    }
    case 'a':
      return Arc(n[0], n[1], n[2], n[3], n[4]);
    case 'b':
    case 'r':
      return MakeFreeForm(letter == 'b' ? CV_BEZIER : CV_RBEZIER, n);
    case 'B':
    case 'R':
      text.ignore();  // the bar
      return MakeFreeForm(letter == 'B' ? CV_BSPLINE : CV_RBSPLINE, n, ReadNumbers(text));
    case 'c': {
      std::vector<Owned> pieces;
      while ((text >> std::ws).peek() == '(') {
        text.ignore();
        pieces.push_back(Make(text));
        text >> std::ws;
        text.ignore();
      }
      return MakeComposite(n, std::move(pieces));
    }
    default:
      return Owned(CV_LINE);
  }
}
inline Owned Make(const std::string& description) {
  std::istringstream text(description);
  return Make(text);
}

// `levels` composites of one piece, one in the other, around a line.
inline Owned Nested(int levels) {
  std::string text = "l 0 0 1 2";
  for (int i = 0; i < levels; ++i) text = "c 1 (" + text + ")";
  return Make(text);
}

constexpr double kSize = 10;  // of random coordinates

inline Numbers RandomPoints(Random& random, int count, bool weights) {
  Numbers points;
  for (int i = 0; i < count; ++i) {
    points.insert(points.end(), {random.Uniform(-kSize, kSize), random.Uniform(-kSize, kSize)});
    if (weights) points.push_back(random.Uniform(.2, 3));
  }
  return points;
}

inline int SplineCount(const Curve& cv) { return static_cast<KurvoBSpline*>(cv.data)->count; }

// The start and the length of the domain.
inline std::pair<double, double> Domain(const Curve& cv) {
  if (cv.type == CV_BSPLINE || cv.type == CV_RBSPLINE) {
    const FreeForm form(cv);
    const double start = form.knots[form.order - 1];
    return {start, form.knots[SplineCount(cv)] - start};
  }
  if (cv.type != CV_SEGCV) return {0, 1};
  const auto& b = *static_cast<KurvoSegcv*>(cv.data);
  double sum = 0;
  for (int i = 0; i < b.count; ++i) sum += b.widths[i];
  return {0, sum};
}

// The point at a fraction of the domain.
inline Point PointAt(const Curve& cv, double fraction) {
  const auto [start, length] = Domain(cv);
  Globals g;
  Point p;
  KurvocvPosition(&cv, start + fraction * length, p, &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return p;
}

}  // namespace kurvo_test
