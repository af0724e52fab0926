#include "chain/fan.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "chain/gauss.h"
#include "strand/bernstein.h"
#include "strand/check.h"

namespace kurvo::outline {
namespace {

// What a rule adds up.
struct Sums {
  double one = 0, x = 0, y = 0, xx = 0, xy = 0, yy = 0;

  void Add(Vec2 p, Vec2 velocity, double weight) {
    const double cross = weight * Cross(p, velocity);
    one += cross;
    x += cross * p.x;
    y += cross * p.y;
    xx += cross * (p.x * p.x);
    xy += cross * (p.x * p.y);
    yy += cross * (p.y * p.y);
  }
  Fan Scaled(double by) const {
    return {by / 2 * one, by / 3 * x, by / 3 * y, by / 4 * xx, by / 4 * xy, by / 4 * yy};
  }
};

// A span of degree n = 2 or 3: p and p' by powers of v in [-1, 1]. The integrands have degree
// 4 n - 2, for which 2 n nodes are exact.
template <std::size_t kNodes>
Fan FanOfPowers(Vec2 p0, Vec2 p1, Vec2 p2, Vec2 p3) {
  using Rule = Gauss<kNodes>;
  Sums sums;
  for (std::size_t i = 0; i < kNodes / 2; ++i) {
    const double v = Rule::kAt[i], square = v * v;
    const Vec2 even = p0 + square * p2, odd = v * (p1 + square * p3);
    const Vec2 even_velocity = p1 + (3 * square) * p3, odd_velocity = (2 * v) * p2;
    sums.Add(even + odd, even_velocity + odd_velocity, Rule::kWeight[i]);
    sums.Add(even - odd, even_velocity - odd_velocity, Rule::kWeight[i]);
  }
  return sums.Scaled(1);
}

Fan FanOfQuadratic(const Vec2* p) {
  return FanOfPowers<4>(0.25 * (p[0] + p[2]) + 0.5 * p[1], 0.5 * (p[2] - p[0]),
                        0.25 * ((p[0] - p[1]) + (p[2] - p[1])), {0, 0});
}

Fan FanOfCubic(const Vec2* p) {
  const Vec2 ends = p[0] + p[3], inner = p[1] + p[2];
  const Vec2 end_gap = p[3] - p[0], inner_gap = p[2] - p[1];
  return FanOfPowers<6>(0.125 * (ends + 3.0 * inner), 0.375 * (end_gap + inner_gap),
                        0.375 * (ends - inner), 0.125 * (end_gap - 3.0 * inner_gap));
}

// 16 nodes between two parameters of any span.
Fan FanOfStretch(const Span& span, double from, double to) {
  const double middle = 0.5 * (from + to), half = 0.5 * (to - from);
  Sums sums;
  for (std::size_t i = 0; i < 8; ++i) {
    for (const double at : {-half * Gauss<16>::kAt[i], half * Gauss<16>::kAt[i]}) {
      const double u = middle + at;
      sums.Add(PointAt(span, u), VelocityAt(span, u), Gauss<16>::kWeight[i]);
    }
  }
  return sums.Scaled(half);
}

// Halves until a rule agrees with two on the halves to the root of the precision, when those have
// all of it. What a rule could miss is seen beforehand: wiggles by the degree, poles nearby by the
// weights, of which the heaviest is then at most twice the lightest.
class Halving {
 public:
  explicit Halving(const Span& span) : span_(span) {
    double far = 0, length = 0;
    for (int i = 0; i <= span.degree; ++i) {
      const double by = span.kind == Span::Kind::kRational ? 1 / span.weights[i] : 1;
      far = std::max(far, by * Length(span.points[i]));
    }
    Vec2 before = span.Start();
    for (int i = 1; i <= span.degree; ++i) {
      const double by = span.kind == Span::Kind::kRational ? 1 / span.weights[i] : 1;
      length += Length(by * span.points[i] - before);
      before = by * span.points[i];
    }
    tolerance_ = kAgree * far * length;
  }

  void Add(Fans& fans) {
    const int parts = span_.degree <= kSmooth ? 1 : (span_.degree + 3) / 4;
    double weights[kMostDegree + 1];
    for (int i = 0; i < parts; ++i) {
      const double from = static_cast<double>(i) / parts, to = static_cast<double>(i + 1) / parts;
      if (span_.kind == Span::Kind::kRational) {
        double unused[kMostDegree + 1];
        SplitBernstein(span_.weights, span_.degree, to, weights, unused);
        SplitBernstein(weights, span_.degree, from / to, unused, weights);
      }
      Stretch(from, to, weights, FanOfStretch(span_, from, to), kMostHalvings, fans);
    }
  }

 private:
  static constexpr double kAgree = 1e-10;
  static constexpr int kSmooth = 8;  // degree up to which 16 nodes follow every wiggle
  static constexpr int kMostHalvings = 24;
  static constexpr int kMostStretches = 512;

  bool Agrees(const Fan& whole, const Fan& low, const Fan& high) const {
    const auto agree = [this](double all, double first, double second) {
      return tolerance_ >= std::fabs(all - (first + second));
    };
    return agree(whole.one, low.one, high.one) && agree(whole.x, low.x, high.x) &&
           agree(whole.y, low.y, high.y) && agree(whole.xx, low.xx, high.xx) &&
           agree(whole.xy, low.xy, high.xy) && agree(whole.yy, low.yy, high.yy);
  }

  bool IsSmooth(const double* weights) const {
    if (span_.kind != Span::Kind::kRational) return true;
    const auto [light, heavy] = std::minmax_element(weights, weights + span_.degree + 1);
    return 2 * *light >= *heavy;
  }

  // `weights` are overwritten.
  void Stretch(double from, double to, double* weights, const Fan& whole, int halvings_left,
               Fans& fans) {
    const double middle = 0.5 * (from + to);
    const Fan low = FanOfStretch(span_, from, middle), high = FanOfStretch(span_, middle, to);
    ++stretches_;
    if (halvings_left == 0 || stretches_ > kMostStretches ||
        (IsSmooth(weights) && Agrees(whole, low, high))) {
      fans.Add(low);
      fans.Add(high);
      return;
    }
    double high_weights[kMostDegree + 1];
    if (span_.kind == Span::Kind::kRational)
      SplitBernstein(weights, span_.degree, 0.5, weights, high_weights);
    Stretch(from, middle, weights, low, halvings_left - 1, fans);
    Stretch(middle, to, high_weights, high, halvings_left - 1, fans);
  }

  const Span& span_;
  double tolerance_;
  int stretches_ = 0;
};

// A segment of the unit circle between the arc from -h to h and its chord: its area, and about the
// middle of the chord its moments outwards, twice outwards and twice along the chord.
struct Segment {
  double area = 0, out = 0, out_out = 0, along_along = 0;
};

// With f(x) = x - sin x they are f(2h) / 2, 2/3 sin^3 h about the centre, f(4h) / 16 about the
// centre and (8 f(2h) - f(4h)) / 48. Small ones of the order of h^3 to h^7 are integrated over
// strips of the height cos t - cos h, for which 8 nodes are exact to rounding.
Segment SegmentOf(double h) {
  constexpr double kSmall = 0.5;  // radians
  Segment segment;
  if (std::fabs(h) >= kSmall) {
    const double sine = std::sin(h), cosine = std::cos(h);
    const double f2 = 2 * h - 2 * sine * cosine, f4 = 4 * h - std::sin(4 * h);
    const double from_centre = 2.0 / 3 * sine * sine * sine;
    segment.area = f2 / 2;
    segment.out = from_centre - cosine * segment.area;
    segment.out_out = f4 / 16 - cosine * (2 * from_centre - cosine * segment.area);
    segment.along_along = (8 * f2 - f4) / 48;
    return segment;
  }
  for (std::size_t i = 0; i < 4; ++i) {
    const double t = h * Gauss<8>::kAt[i];
    const double height = 2 * std::sin(0.5 * (h + t)) * std::sin(0.5 * (h - t));
    const double along = std::sin(t);
    const double area = 2 * h * Gauss<8>::kWeight[i] * std::cos(t) * height;  // of both strips
    segment.area += area;
    segment.out += area * height / 2;
    segment.out_out += area * height * height / 3;
    segment.along_along += area * along * along;
  }
  return segment;
}

// The triangle to the chord, and the segment beyond it.
void AddArc(const Span& arc, Fans& fans) {
  fans.Add(FanOfLine(arc.points[0], arc.points[1]));
  const double h = 0.5 * arc.sweep, r = arc.radius;
  const Segment segment = SegmentOf(h);
  const double area = r * r * segment.area, out = r * r * r * segment.out;
  const double out_out = r * r * r * r * segment.out_out;
  const double along_along = r * r * r * r * segment.along_along;
  const Vec2 middle = 0.5 * (arc.points[0] + arc.points[1]);
  const Vec2 e = {std::cos(arc.angle + h), std::sin(arc.angle + h)};
  const double turned = out_out - along_along;
  fans.Add(
      {area, middle.x * area + e.x * out, middle.y * area + e.y * out,
       middle.x * (middle.x * area + 2 * e.x * out) + along_along + e.x * e.x * turned,
       middle.x * middle.y * area + (middle.x * e.y + middle.y * e.x) * out + e.x * e.y * turned,
       middle.y * (middle.y * area + 2 * e.y * out) + along_along + e.y * e.y * turned});
}

}  // namespace

Fan FanOfLine(Vec2 from, Vec2 to) {
  const double cross = Cross(from, to);
  return {cross / 2,
          cross / 6 * (from.x + to.x),
          cross / 6 * (from.y + to.y),
          cross / 12 * (from.x * from.x + from.x * to.x + to.x * to.x),
          cross / 24 * (2 * (from.x * from.y + to.x * to.y) + from.x * to.y + from.y * to.x),
          cross / 12 * (from.y * from.y + from.y * to.y + to.y * to.y)};
}

void AddFan(const Span& span, Fans& fans) {
  switch (span.kind) {
    case Span::Kind::kLine:
      return fans.Add(FanOfLine(span.points[0], span.points[1]));
    case Span::Kind::kArc:
      return AddArc(span, fans);
    case Span::Kind::kBezier:
      if (span.degree == 2) return fans.Add(FanOfQuadratic(span.points));
      if (span.degree == 3) return fans.Add(FanOfCubic(span.points));
      if (span.degree <= 8) return fans.Add(FanOfStretch(span, 0, 1));  // 4 n - 2 <= 31
      return Halving(span).Add(fans);
    default:
      return Halving(span).Add(fans);
  }
}

}  // namespace kurvo::outline
