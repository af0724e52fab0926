// Random curves of every kind, and curves that are put through a given point.
#pragma once

#include <numbers>
#include <string>
#include <string_view>

#include "relate/intersection.h"

namespace kurvo_test {

constexpr std::string_view kKinds = "larbBRc";  // as in the descriptions of curves

class Generator {
 public:
  explicit Generator(double size) : size_(size) {}

  std::string Curve(char kind, double size) {
    size_ = size;
    return Curve(kind);
  }

  std::string Curve(char kind) {
    switch (kind) {
      case 'l':
        return Text("l", Points(2, false));
      case 'a': {
        const double sweep = random_.Uniform(.3, 6) * (Chance(.5) ? 1 : -1);
        return Text("a", {Place(), Place(), random_.Uniform(.2, .6) * size_, random_.Uniform(-3, 3),
                          sweep});
      }
      case 'b':
        return Text("b", Points(Count(2, 7), false));
      case 'r':
        return Text("r", Points(Count(2, 5), true));
      case 'B':
      case 'R': {
        const int order = Count(2, 5), count = order + Count(0, 6);
        const std::string points = Text({kind}, Points(count, kind == 'R'));
        return Text(points + " |", Knots(order, count));
      }
      default:
        return Composite();
    }
  }

  bool Chance(double share) { return random_.Uniform(0, 1) < share; }
  double Uniform(double low, double high) { return random_.Uniform(low, high); }
  std::string Trace() const { return random_.Trace(); }

 private:
  double Place() { return random_.Uniform(0, size_); }
  int Count(int low, int high) { return static_cast<int>(random_.Uniform(low, high + 1)); }

  Numbers Points(int count, bool rational) {
    Numbers points;
    for (int i = 0; i < count; ++i) {
      points.insert(points.end(), {Place(), Place()});
      if (rational) points.push_back(random_.Uniform(.3, 2));
    }
    return points;
  }

  // Over [2, 5] or so, clamped or not, with double knots now and then.
  Numbers Knots(int order, int count) {
    const bool clamped = Chance(.7);
    Numbers knots;
    double u = 2;
    for (int i = 0; i < order + count; ++i) {
      const bool end = i < order || i > count;
      if (i > 0 && !(clamped && end) && !(order > 2 && !end && Chance(.2)))
        u += random_.Uniform(.2, 1);
      knots.push_back(u);
    }
    return knots;
  }

  // Of one to three pieces, joined or not.
  std::string Composite() {
    Numbers widths;
    std::string pieces;
    for (int count = Count(1, 3); count > 0; --count) {
      widths.push_back(random_.Uniform(.2, 2));
      pieces += '(';
      pieces += Curve(Chance(.5) ? 'b' : 'r');
      pieces += ')';
    }
    return Text("c", widths) + pieces;
  }

  Random random_;
  double size_;
};

// Where and how a curve passes through a point, 0 <= turn < 2 pi. It goes on for about `size`,
// bending away from its tangent by `bend` of that, and starts there or passes through.
struct Passage {
  double x = 0, y = 0, turn = 0, size = 1, bend = .3;
  bool inside = false;

  Numbers At(double along, double aside) const {
    const double c = std::cos(turn), s = std::sin(turn);
    return {x + size * (along * c - aside * s), y + size * (along * s + aside * c)};
  }
};

inline Numbers Joined(const std::vector<Numbers>& points, double weight = 0) {
  Numbers all;
  for (std::size_t i = 0; i < points.size(); ++i) {
    all.insert(all.end(), points[i].begin(), points[i].end());
    if (weight > 0) all.push_back(i == 1 ? weight : 1);
  }
  return all;
}

inline std::string Through(char kind, const Passage& pass) {
  constexpr double kWeight = .8;
  const double bend = pass.bend, inner = kind == 'r' || kind == 'R' ? bend / kWeight : bend;
  const Numbers end = pass.At(1, bend), start = pass.inside ? pass.At(-1, bend) : pass.At(0, 0);
  const std::vector<Numbers> bow = {start, pass.inside ? pass.At(0, -inner) : pass.At(.5, 0), end};
  const bool spline = !pass.inside;  // of two spans
  switch (kind) {
    case 'l':
      return Text("l", Joined({pass.At(pass.inside ? -1 : 0, 0), pass.At(1, 0)}));
    case 'a': {
      const Numbers centre = pass.At(0, 1 / bend);
      const double way = bend > 0 ? 1 : -1;
      return Text("a", {centre[0], centre[1], pass.size / std::fabs(bend),
                        pass.turn - way * (std::numbers::pi / 2 + (pass.inside ? .5 : 0)), way});
    }
    case 'b':
      return Text("b", Joined(bow));
    case 'r':
      return Text("r", Joined(bow, kWeight));
    case 'B':
    case 'R': {
      std::vector<Numbers> points = bow;
      if (spline) points.push_back(pass.At(1.3, 2 * bend));
      return Text({kind}, Joined(points, kind == 'R' ? kWeight : 0)) +
             (spline ? " | 2 2 2 3 5 5 5" : " | 2 2 2 5 5 5");
    }
    default:
      return Text("c 2 3 (b", Joined(bow)) + ")" + Text("(b", Joined({end, pass.At(1, 2)})) + ")";
  }
}

// The parameter of that point on the curve.
inline double ParameterThrough(const Curve& cv, const Passage& pass) {
  const auto [start, length] = Domain(cv);
  if (!pass.inside) return start;
  return cv.type == CV_SEGCV ? 1 : start + length / 2;
}

}  // namespace kurvo_test
