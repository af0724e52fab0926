#include "strand/span.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "strand/bernstein.h"
#include "strand/check.h"

namespace kurvo::outline {
namespace {

Vec2 OnCircle(const Span& arc, double angle) {
  return arc.centre + arc.radius * Vec2{std::cos(angle), std::sin(angle)};
}

// Weighted point and weight.
struct Weighted {
  Vec2 point;
  double weight;
};
Weighted operator*(double s, const Weighted& p) { return {s * p.point, s * p.weight}; }
Weighted operator+(const Weighted& a, const Weighted& b) {
  return {a.point + b.point, a.weight + b.weight};
}
Weighted operator-(const Weighted& a, const Weighted& b) {
  return {a.point - b.point, a.weight - b.weight};
}

template <class At>
struct Derivatives {
  At at;
  int degree;

  auto Value(double u) const { return BernsteinSum(degree, u, at); }
  auto First(double u) const {
    const auto step = [this](int i) { return at(i + 1) - at(i); };
    return degree * BernsteinSum(degree - 1, u, step);
  }
  auto Second(double u) const {
    const auto bend = [this](int i) { return (at(i + 2) - at(i + 1)) - (at(i + 1) - at(i)); };
    return (degree * (degree - 1.0)) * BernsteinSum(degree - 2, u, bend);
  }
};

// Quotient rule: P = W / w.
Jet Quotient(const Weighted& value, const Weighted& first, const Weighted& second) {
  const double by = 1 / value.weight;
  Jet jet;
  jet.point = by * value.point;
  jet.first = by * (first.point - first.weight * jet.point);
  jet.second = by * (second.point - (2 * first.weight) * jet.first - second.weight * jet.point);
  return jet;
}

// f with the control points by index, and the degree.
template <class F>
auto OfPolynomial(const Span& span, const F& f) {
  return WithDegree(span.degree, [&](int degree) {
    const Vec2* points = span.points;
    const auto at = [points](int i) { return points[i]; };
    return f(Derivatives<decltype(at)>{at, degree});
  });
}

template <class F>
auto OfRational(const Span& span, const F& f) {
  return WithDegree(span.degree, [&](int degree) {
    const auto at = [&span](int i) { return Weighted{span.points[i], span.weights[i]}; };
    return f(Derivatives<decltype(at)>{at, degree});
  });
}

}  // namespace

Vec2 PointAt(const Span& span, double u) {
  if (u <= 0) return span.Start();
  if (u >= 1) return span.End();
  switch (span.kind) {
    case Span::Kind::kLine:
      return Mix(span.points[0], span.points[1], u);
    case Span::Kind::kArc:
      return OnCircle(span, span.angle + u * span.sweep);
    case Span::Kind::kBezier:
      return OfPolynomial(span, [u](const auto& p) { return p.Value(u); });
    default: {
      const Weighted p = OfRational(span, [u](const auto& q) { return q.Value(u); });
      return (1 / p.weight) * p.point;
    }
  }
}

Jet JetAt(const Span& span, double u) {
  switch (span.kind) {
    case Span::Kind::kLine:
      return {PointAt(span, u), span.points[1] - span.points[0], {}};
    case Span::Kind::kArc: {
      const double angle = span.angle + u * span.sweep;
      const Vec2 out = span.radius * Vec2{std::cos(angle), std::sin(angle)};
      return {PointAt(span, u), span.sweep * Left(out), -(span.sweep * span.sweep) * out};
    }
    case Span::Kind::kBezier:
      return OfPolynomial(span, [u](const auto& p) {
        return Jet{p.Value(u), p.First(u), p.Second(u)};
      });
    default:
      return OfRational(span, [u](const auto& p) {
        const auto bend = p.degree > 1 ? p.Second(u) : Weighted{};
        return Quotient(p.Value(u), p.First(u), bend);
      });
  }
}

Vec2 VelocityAt(const Span& span, double u) {
  switch (span.kind) {
    case Span::Kind::kLine:
      return span.points[1] - span.points[0];
    case Span::Kind::kArc: {
      const double angle = span.angle + u * span.sweep;
      return (span.sweep * span.radius) * Vec2{-std::sin(angle), std::cos(angle)};
    }
    case Span::Kind::kBezier:
      return OfPolynomial(span, [u](const auto& p) { return p.First(u); });
    default:
      return OfRational(
          span, [u](const auto& p) { return Quotient(p.Value(u), p.First(u), Weighted{}).first; });
  }
}

// Beside a point without velocity the direction is that of the chord to it; chords shrink towards
// the point until one that is sound is found.
Vec2 TangentAt(const Span& span, double u) {
  constexpr double kLeastSpeed =
      0x1p-40;  // of the longest velocity: below it only rounding is left
  constexpr double kLeastChord = 0x1p-46;  // of the size
  const auto unit = [](Vec2 v) { return (1 / Length(v)) * v; };

  double most = 0;
  for (int i = 0; i < span.degree; ++i)
    most = std::max(most, Length(span.points[i + 1] - span.points[i]));
  const Vec2 velocity = VelocityAt(span, u);
  const double speed = Length(velocity);
  if (speed > span.degree * most * kLeastSpeed) return unit(velocity);

  const Bounds hull = HullOf(span);
  const double least = kLeastChord * hull.LongerSide();
  const bool arrives = u >= 1;
  const Vec2 here = PointAt(span, u);
  Vec2 direction = {};
  for (double step = 0x1p-10; step <= 1; step *= 4) {
    const double v = arrives ? std::max(u - step, 0.0) : std::min(u + step, 1.0);
    const Vec2 chord = arrives ? here - PointAt(span, v) : PointAt(span, v) - here;
    if (!(Length(chord) > least)) continue;
    direction = unit(chord);
    break;
  }
  return direction;
}

Bounds HullOf(const Span& span) {
  Bounds box;
  if (span.kind == Span::Kind::kArc) {
    box.Add(span.Start());
    box.Add(span.End());
    // The quarter turns that the sweep passes.
    constexpr double kQuarter = std::numbers::pi / 2;
    const double low = std::min(span.angle, span.angle + span.sweep);
    const double high = std::max(span.angle, span.angle + span.sweep);
    for (double k = std::ceil(low / kQuarter); k * kQuarter <= high; ++k) {
      const int quarter = static_cast<int>(std::fmod(std::fmod(k, 4) + 4, 4));
      constexpr Vec2 kAxes[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
      box.Add(span.centre + span.radius * kAxes[quarter]);
    }
  } else if (span.kind == Span::Kind::kRational) {
    for (int i = 0; i <= span.degree; ++i) box.Add((1 / span.weights[i]) * span.points[i]);
  } else {
    for (int i = 0; i <= span.degree; ++i) box.Add(span.points[i]);
  }
  return box;
}

Span PartOf(const Span& span, double u0, double u1, Arena& arena) {
  Span part = span;
  part.from = span.ParameterAt(u0);
  part.to = span.ParameterAt(u1);
  if (span.kind == Span::Kind::kLine || span.kind == Span::Kind::kArc) {
    auto* ends = arena.New<Vec2>(2);
    ends[0] = PointAt(span, u0);
    ends[1] = PointAt(span, u1);
    part.points = ends;
    part.angle = span.angle + u0 * span.sweep;
    part.sweep = (u1 - u0) * span.sweep;
    return part;
  }
  const int n = span.degree;
  auto* points = arena.New<Vec2>(static_cast<std::size_t>(n) + 1);
  CutBernstein(span.points, n, u0, u1, points);
  double first = 1, last = 1;
  if (span.kind == Span::Kind::kRational) {
    auto* weights = arena.New<double>(static_cast<std::size_t>(n) + 1);
    CutBernstein(span.weights, n, u0, u1, weights);
    part.weights = weights;
    first = weights[0];
    last = weights[n];
  }
  // What both neighbours ask the evaluator for is the same.
  if (u0 > 0) points[0] = first * PointAt(span, u0);
  if (u1 < 1) points[n] = last * PointAt(span, u1);
  part.points = points;
  return part;
}

Span Kept(const Span& span, Arena& arena) {
  Span kept = span;
  const auto count = static_cast<std::size_t>(span.kind == Span::Kind::kArc ? 2 : span.degree + 1);
  auto* points = arena.New<Vec2>(count);
  std::copy(span.points, span.points + count, points);
  kept.points = points;
  if (span.kind == Span::Kind::kRational) {
    auto* weights = arena.New<double>(count);
    std::copy(span.weights, span.weights + count, weights);
    kept.weights = weights;
  }
  return kept;
}

}  // namespace kurvo::outline
