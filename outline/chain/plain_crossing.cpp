#include "chain/plain_crossing.h"

#include <algorithm>
#include <cmath>

#include "chain/shared_stretch.h"
#include "strand/bernstein.h"

namespace kurvo::outline {
namespace {

constexpr double kLeastSine = 0.1;    // of the angle between wedges: two pieces are near each other
                                      // for 10 tolerances on either side
constexpr double kClearOfEnds = 512;  // of the tolerance: far more than contacts there reach
constexpr double kBeyond = 0.25;      // of the chords: pieces bend, so that they may cross all the
                                      // same
constexpr double kSettled = 0x1p-28;  // of the parameters: Newton's next step is about its square
constexpr int kMostSteps = 10;

// Directions of less than a quarter turn, counter-clockwise from the first to the last.
class Wedge {
 public:
  void Add(Vec2 direction) {
    if (!(SquaredLength(direction) > 0)) return;
    if (is_empty_) first_ = last_ = direction;
    is_empty_ = false;
    if (!(Dot(first_, direction) > 0 && Dot(last_, direction) > 0)) is_wide_ = true;
    if (Cross(first_, direction) < 0) first_ = direction;
    if (Cross(last_, direction) > 0) last_ = direction;
  }
  // When all have been added. Result: whether it is one.
  bool Close() {
    if (is_empty_ || is_wide_ || !(Dot(first_, last_) > 0)) return false;
    const bool is_one = first_ == last_;
    first_ = (1 / Length(first_)) * first_;
    last_ = is_one ? first_ : (1 / Length(last_)) * last_;
    return true;
  }

  // Of two that are: whether every direction of this one is to the other side of every one of
  // that, or more than a quarter turn away from all.
  bool IsApartFrom(const Wedge& other) const {
    bool left = true, right = true, behind = true;
    for (const Vec2 d : {first_, last_}) {
      for (const Vec2 e : {other.first_, other.last_}) {
        const double sine = Cross(d, e);
        left = left && sine >= kLeastSine;
        right = right && sine <= -kLeastSine;
        behind = behind && Dot(d, e) < 0;
      }
    }
    return left || right || behind;
  }

 private:
  Vec2 first_, last_;
  bool is_empty_ = true, is_wide_ = false;
};

// In which a piece lies before and after u, as seen from the point there.
struct Wedges {
  Wedge before, after;

  Wedges(const Span& span, double u, Vec2 point) {
    switch (span.kind) {
      case Span::Kind::kLine:
        before.Add(span.Start() - point);
        after.Add(span.End() - point);
        break;
      case Span::Kind::kArc: {
        const Vec2 along = VelocityAt(span, u);
        for (const Vec2 d : {-along, span.Start() - point}) before.Add(d);
        for (const Vec2 d : {along, span.End() - point}) after.Add(d);
        break;
      }
      default:
        AddHulls(span, u, point);
    }
  }

  // Those of the control points of the parts.
  void AddHulls(const Span& span, double u, Vec2 point) {
    const int n = span.degree;
    const bool is_rational = span.kind == Span::Kind::kRational;
    Vec2 low[kMostDegree + 1], high[kMostDegree + 1];
    double low_weight[kMostDegree + 1], high_weight[kMostDegree + 1];
    SplitBernstein(span.points, n, u, low, high);
    if (is_rational) SplitBernstein(span.weights, n, u, low_weight, high_weight);
    for (int i = 0; i < n; ++i)
      before.Add((is_rational ? (1 / low_weight[i]) * low[i] : low[i]) - point);
    for (int i = 1; i <= n; ++i)
      after.Add((is_rational ? (1 / high_weight[i]) * high[i] : high[i]) - point);
  }

  bool Close() { return before.Close() && after.Close(); }

  bool AreApartFrom(const Wedges& other) const {
    return before.IsApartFrom(other.before) && before.IsApartFrom(other.after) &&
           after.IsApartFrom(other.before) && after.IsApartFrom(other.after);
  }
};

// A point and the first derivative there.
struct Motion {
  Vec2 point, velocity;
};
Motion MotionAt(const Span& span, double u) {
  if (span.kind == Span::Kind::kBezier && span.degree > 3) {
    Motion motion;
    const auto at = [&span](int i) { return span.points[i]; };
    motion.point = BernsteinSumWithSlope(span.degree, u, at, motion.velocity);
    return motion;
  }
  if (span.kind != Span::Kind::kArc) return {PointAt(span, u), VelocityAt(span, u)};
  const double angle = span.angle + u * span.sweep;
  const Vec2 out = span.radius * Vec2{std::cos(angle), std::sin(angle)};
  return {span.centre + out, span.sweep * Left(out)};
}

// Newton's method on A(u) = B(v), from where the chords cross; what leaves the pieces twice running
// is given up.
bool Settle(const Span& a, const Span& b, double& u, double& v) {
  const Vec2 gap = b.Start() - a.Start();
  const Vec2 chord_a = a.End() - a.Start(), chord_b = b.End() - b.Start();
  const double by = Cross(chord_a, chord_b);
  u = Cross(gap, chord_b) / by;
  v = Cross(gap, chord_a) / by;
  constexpr double kLow = -kBeyond, kHigh = 1 + kBeyond;
  if (!(u >= kLow && u <= kHigh && v >= kLow && v <= kHigh)) return false;
  bool was_outside = false;
  for (int step = 0; step < kMostSteps; ++step) {
    u = std::clamp(u, 0.0, 1.0);
    v = std::clamp(v, 0.0, 1.0);
    const Motion on_a = MotionAt(a, u), on_b = MotionAt(b, v);
    const Vec2 miss = on_b.point - on_a.point;
    const double turn = Cross(on_a.velocity, on_b.velocity);
    const double du = Cross(miss, on_b.velocity) / turn, dv = Cross(miss, on_a.velocity) / turn;
    u += du;
    v += dv;
    if (!(std::isfinite(u) && std::isfinite(v))) return false;
    const bool is_inside = u > 0 && u < 1 && v > 0 && v < 1;
    if (kSettled >= std::fabs(du) && kSettled >= std::fabs(dv)) return is_inside;
    if (!is_inside && was_outside) return false;
    was_outside = !is_inside;
  }
  return false;
}

}  // namespace

PlainCrossings::PlainCrossings(const Track& a, const Track& b, bool with_itself, double tol)
    : a_(a), b_(b), with_itself_(with_itself), clear_(kClearOfEnds * tol) {}

// Along one chain: where the pieces cross it does not only go on.
bool PlainCrossings::IsFarAlong(const Crossing& crossing) const {
  const double from = a_.ChordsTo(crossing.a), to = b_.ChordsTo(crossing.b);
  return to - from > clear_ && !(a_.IsClosed(0) && from + a_.Chords(0) - to <= clear_);
}

std::optional<PlainCrossings::Crossing> PlainCrossings::Find(int32_t i, int32_t k) const {
  // Where the tolerance is no small part of the size, what is near is no point.
  if (!(clear_ < kLongStretch)) return std::nullopt;
  const Span& a = a_.pieces()[static_cast<std::size_t>(i)].span;
  const Span& b = b_.pieces()[static_cast<std::size_t>(k)].span;
  Crossing crossing = {{i, 0}, {k, 0}};
  double &u = crossing.a.u, &v = crossing.b.u;
  if (!Settle(a, b, u, v)) return std::nullopt;
  const Vec2 on_a = PointAt(a, u), on_b = PointAt(b, v);
  for (const Vec2 end : {a.Start(), a.End(), b.Start(), b.End()})
    if (!(Length(end - on_a) > clear_)) return std::nullopt;
  Wedges of_a(a, u, on_a);
  if (!of_a.Close()) return std::nullopt;
  Wedges of_b(b, v, on_b);
  if (!(of_b.Close() && of_a.AreApartFrom(of_b))) return std::nullopt;
  if (with_itself_ && !IsFarAlong(crossing)) return std::nullopt;
  return crossing;
}

}  // namespace kurvo::outline
