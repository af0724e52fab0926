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

// Where and how a curve passes through a point, at an angle of `turn`. It goes on for about `size`,
// bending away from its tangent by `bend` of that, and starts there or passes through, splines and
// composites at a joint. A free-form curve that starts there may end there, too.
struct Passage {
  double x = 0, y = 0, turn = 0, size = 1, bend = .3;
  bool inside = false, closed = false;

  Numbers At(double along, double aside) const {
    const double c = std::cos(turn), s = std::sin(turn);
    return {x + size * (along * c - aside * s), y + size * (along * s + aside * c)};
  }
};

// One after the other; with weights of 1 at both ends and of `weight` between.
inline Numbers Joined(const std::vector<Numbers>& points, double weight = 0) {
  Numbers all;
  for (const Numbers& p : points) {
    all.insert(all.end(), p.begin(), p.end());
    if (weight > 0) all.push_back(&p == &points.front() || &p == &points.back() ? 1 : weight);
  }
  return all;
}

inline std::string Through(char kind, const Passage& pass) {
  constexpr double kWeight = .8;
  const double bend = pass.bend, inner = kind == 'r' ? bend / kWeight : bend;
  const Numbers here = pass.At(0, 0), ahead = pass.At(.5, 0), end = pass.At(1, bend);
  const Numbers behind = pass.At(-.5, 0), start = pass.At(-1, bend);
  const Numbers last = pass.closed ? here : pass.At(1.3, 2 * bend);
  std::vector<Numbers> bow = {here, ahead, end, last};
  if (pass.inside) bow = {start, pass.At(0, -inner), end};
  switch (kind) {
    case 'l':
      return Text("l", Joined({pass.inside ? pass.At(-1, 0) : here, pass.At(1, 0)}));
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
    case 'R':
      if (pass.inside) bow = {start, behind, ahead, end};
      return Text({kind}, Joined(bow, kind == 'R' ? kWeight : 0)) + " | 2 2 2 3.5 5 5 5";
    default:
      bow = {here, ahead, end, end, last};
      if (pass.inside) bow = {start, behind, here, here, ahead, end};
      return Text("c 2 3 (b", Joined({bow.begin(), bow.begin() + 3})) + ")" +
             Text("(b", Joined({bow.begin() + 3, bow.end()})) + ")";
  }
}

// The parameter of that point on the curve.
inline double ParameterThrough(const Curve& cv, const Passage& pass) {
  const auto [start, length] = Domain(cv);
  if (!pass.inside) return start;
  return cv.type == CV_SEGCV ? 2 : start + length / 2;
}

}  // namespace kurvo_test
