// Bezier pieces of curves, and parts of them, as intersection and distance work on them.
#include "relate/bezier_piece.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "control/blossom.h"
#include "control/homogeneous.h"
#include "foundation/with_constant.h"

namespace kurvo {
namespace {

constexpr int kNearestSteps = 12;
constexpr double kParameterRounding = 1e-15;
constexpr int32_t kMaxExactSamples = 9;  // degree up to which the other way is no faster

// Value and the first two derivatives of a Bezier function by de Casteljau's algorithm, whose last
// three points give them as differences. `n` is a number, or a constant for loops that the compiler
// unrolls.
template <class Value>
struct ValueJet {
  Value p, d1, d2;
};

template <class Value, class Degree>
ValueJet<Value> CasteljauJet(Value* work, Degree n, double t) {
  for (int32_t level = n; level > 2; --level)
    for (int32_t i = 0; i < level; ++i) MixInto(work[i], work[i + 1], t, work[i]);
  const double degree = n;
  ValueJet<Value> jet{};
  if (n >= 2) {
    jet.d2 = (degree * (degree - 1.0)) * ((work[2] - work[1]) - (work[1] - work[0]));
    for (int32_t i = 0; i < 2; ++i) MixInto(work[i], work[i + 1], t, work[i]);
  }
  jet.d1 = degree * (work[1] - work[0]);
  jet.p = Mix(work[0], work[1], t);
  return jet;
}

// The jet of the function whose control values are load(point).
template <class Load>
auto JetOf(const BezierPiece& piece, double t, Load&& load) {
  using Value = decltype(load(piece.points[0]));
  return WithConstant<1, 2, 3>(piece.degree, [&]<class Degree>(Degree n) {
    constexpr bool kFew = !std::is_same_v<Degree, int32_t>;
    Value work[kFew ? 4 : kMaxPieceDegree + 1];
    for (int32_t i = 0; i <= n; ++i) work[i] = load(piece.points[i]);
    return CasteljauJet(work, n, t);
  });
}

ValueJet<Vec2> PlainJet(const BezierPiece& piece, double t) {
  return JetOf(piece, t, [](const WeightedPoint& p) { return Planar(p); });
}

ValueJet<Homogeneous> HomogeneousJet(const BezierPiece& piece, double t) {
  return JetOf(piece, t, [](const WeightedPoint& p) {
    return Homogeneous{p.w * p.x, p.w * p.y, p.w};
  });
}

// C = N / W: C' = (N' - W' C) / W, C'' = (N'' - 2 W' C' - W'' C) / W.
Jet RationalJet(const BezierPiece& piece, double t) {
  const ValueJet<Homogeneous> h = HomogeneousJet(piece, t);
  const double scale = 1.0 / h.p.w;
  Jet jet;
  jet.p = scale * Planar(h.p);
  jet.d1 = scale * (Planar(h.d1) - h.d1.w * jet.p);
  jet.d2 = scale * (Planar(h.d2) - 2.0 * h.d1.w * jet.d1 - h.d2.w * jet.p);
  return jet;
}

WeightedPoint Middle(const WeightedPoint& a, const WeightedPoint& b, bool rational) {
  if (!rational) return {0.5 * (a.x + b.x), 0.5 * (a.y + b.y), 1.0};
  const double w = a.w + b.w;
  const double share = b.w / w;
  return {a.x + share * (b.x - a.x), a.y + share * (b.y - a.y), 0.5 * w};
}

}  // namespace

Jet JetAt(const BezierPiece& piece, double t) {
  if (piece.rational) return RationalJet(piece, t);
  const ValueJet<Vec2> jet = PlainJet(piece, t);
  return {jet.p, jet.d1, jet.d2};
}

Vec2 PointAt(const BezierPiece& piece, double t) {
  if (!piece.rational) return PlainJet(piece, t).p;
  const Homogeneous p = HomogeneousJet(piece, t).p;
  return (1.0 / p.w) * Planar(p);
}

namespace {

// Degree is a number or, for the compiler to unroll the loops, an integral constant.
template <class Degree>
[[gnu::always_inline]] inline PlanarBox BoxOf(const WeightedPoint* points, Degree degree) {
  PlanarBox box;
  for (int32_t i = 0; i <= degree; ++i) box.Widen(Planar(points[i]));
  return box;
}

template <class Degree, class MixPoints>
[[gnu::always_inline]] inline Halves HalvesOf(const BezierPiece& piece, Degree degree,
                                              WeightedPoint* left, WeightedPoint* right,
                                              const MixPoints& mix) {
  for (int32_t i = 0; i <= degree; ++i) right[i] = piece.points[i];
  left[0] = right[0];
  ToBothEdges(right, degree, left, mix);
  const double width = 0.5 * piece.width;
  return {{left, degree, piece.rational, piece.start, width, BoxOf(left, degree)},
          {right, degree, piece.rational, piece.start + width, width, BoxOf(right, degree)}};
}

}  // namespace

PlanarBox BoxAround(const WeightedPoint* points, int32_t degree) { return BoxOf(points, degree); }

Halves Halve(const BezierPiece& piece, WeightedPoint* room, std::size_t slot) {
  WeightedPoint *left = room, *right = room + slot;
  return WithConstant<2, 3>(piece.degree, [&](auto degree) {
    if (piece.rational)
      return HalvesOf(piece, degree, left, right,
                      [](WeightedPoint& a, const WeightedPoint& b) { a = Middle(a, b, true); });
    return HalvesOf(piece, degree, left, right,
                    [](WeightedPoint& a, const WeightedPoint& b) { a = Middle(a, b, false); });
  });
}

double RefineNearest(const BezierPiece& piece, Vec2 p, double t) {
  for (int step = 0; step < kNearestSteps; ++step) {
    const Jet jet = JetAt(piece, t);
    const Vec2 gap = jet.p - p;
    const double slope = Dot(jet.d1, jet.d1) + Dot(gap, jet.d2);
    const double speed2 = Dot(jet.d1, jet.d1);
    // Where the distance is not convex Newton's method would climb; the Gauss-Newton step descends.
    const double next = t - Dot(gap, jet.d1) / (slope > 0.5 * speed2 ? slope : speed2);
    const double kept = std::clamp(next, 0.0, 1.0);
    if (!(std::fabs(kept - t) > kParameterRounding)) return kept == kept ? kept : t;
    t = kept;
  }
  return t;
}

namespace {

// Points close enough to compare distances. At high degrees by Horner's scheme in t / (1 - t), or
// from the other end, which is linear in the degree where de Casteljau's algorithm is quadratic.
class Samples {
 public:
  explicit Samples(const BezierPiece& piece) : piece_(piece) {
    if (kMaxExactSamples >= piece.degree) return;
    double binomial = 1.0;
    for (int32_t k = 0; k <= piece.degree; ++k) {
      const WeightedPoint& p = piece.points[k];
      scaled_[k] = binomial * Homogeneous{p.w * p.x, p.w * p.y, p.w};
      binomial = binomial * (piece.degree - k) / (k + 1);
    }
  }

  Vec2 At(double t) const {
    const int32_t n = piece_.degree;
    if (kMaxExactSamples >= n) return PointAt(piece_, t);
    Homogeneous sum = {};
    if (t > 0.5) {
      for (int32_t k = 0; k <= n; ++k) sum = ((1.0 - t) / t) * sum + scaled_[k];
    } else {
      for (int32_t k = n; k >= 0; --k) sum = (t / (1.0 - t)) * sum + scaled_[k];
    }
    return (1.0 / sum.w) * Planar(sum);
  }

 private:
  const BezierPiece& piece_;
  Homogeneous scaled_[kMaxPieceDegree + 1];
};

}  // namespace

double NearestParameter(const BezierPiece& piece, Vec2 p) {
  const int32_t count = 4 * piece.degree + 4;
  double best_t = 0.0;
  const Samples samples(piece);
  double best = Length(samples.At(0.0) - p);
  for (int32_t i = 1; i <= count; ++i) {
    const double t = static_cast<double>(i) / count;
    const double dist = Length(samples.At(t) - p);
    if (dist < best) {
      best = dist;
      best_t = t;
    }
  }
  return RefineNearest(piece, p, best_t);
}

}  // namespace kurvo
