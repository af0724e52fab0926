#include "fit/offset_cubic.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "chain/gauss.h"
#include "fit/cubic.h"
#include "fit/over_chord.h"

namespace kurvo::outline {
namespace {

constexpr double kStraight = 1e-9;  // radians between chord and tangents of what has no area
constexpr int kLeastParts = 2, kMostParts = 32;  // of a piece that is compared
constexpr double kHopeless = 0.999;              // of the tolerance: more parts change little

Vec2 OffsetOf(const CubicSide::At& at, double distance) {
  return at.point + distance * Vec2{at.tangent.y, -at.tangent.x};
}

// Area and first moment under the side over its chord.
Under UnderSide(const CubicSide& side, double u0, double u1, Vec2 start, Vec2 along,
                double length) {
  using Rule = Gauss<8>;
  const double half = 0.5 * (u1 - u0), middle = 0.5 * (u0 + u1);
  Under under = {0, 0};
  for (std::size_t i = 0; i < std::size(Rule::kAt); ++i)
    for (const double sign : {-1.0, 1.0}) {
      const CubicSide::At at = side.LookAt(middle + sign * half * Rule::kAt[i]);
      const Vec2 w = OffsetOf(at, side.distance()) - start;
      const double x = Dot(w, along), y = Cross(along, w);
      const double dx = half * at.run * Dot(at.tangent, along);
      under.area += Rule::kWeight[i] * y * dx;
      under.moment += Rule::kWeight[i] * x * y * dx;
    }
  return {under.area / (length * length), under.moment / (length * length * length)};
}

// The coefficients by powers of w of a cubic in Bernstein form.
void ToPowers(const Vec2* b, Vec2* p) {
  p[0] = b[0];
  p[1] = 3.0 * (b[1] - b[0]);
  p[2] = 3.0 * ((b[2] - b[1]) - (b[1] - b[0]));
  p[3] = (b[3] - b[0]) - 3.0 * (b[2] - b[1]);
}

// From coefficients by powers of w to those of the Bernstein form times its binomials, in place: by
// Horner's rule each power takes the missing factors w + (1 - w).
template <std::size_t kCount>
void ToScaledBernstein(Vec2 (&f)[kCount]) {
  for (std::size_t k = 1; k < kCount; ++k)
    for (std::size_t i = k; i > 0; --i) f[i] = f[i] + f[i - 1];
}

struct Range {
  double low, high;
};

// A range over [0, 1] of what has the Bernstein coefficients f[k] / binomials[k].
template <std::size_t kCount>
Range RangeOf(const double (&f)[kCount], const double (&binomials)[kCount]) {
  Range range = {f[0], f[0]};
  for (std::size_t k = 1; k < kCount; ++k) {
    const double value = f[k] / binomials[k];
    range = {std::min(range.low, value), std::max(range.high, value)};
  }
  return range;
}

// Compares a cubic with a side.
class Comparison {
 public:
  Comparison(const CubicSide& side, const Vec2* piece, double tol)
      : side_(side), piece_(piece), tol_(tol), distance_(std::fabs(side.distance())) {}

  // A bound of how far the piece is from the side; where that is beyond the tolerance, or the piece
  // does not go along the side, how far it was found to be, or infinity.
  double Off(const CubicSide::At& start, double u0, const CubicSide::At& end, double u1) {
    for (int parts = kLeastParts;; parts *= 2) {
      bound_ = reached_ = 0;
      const bool goes = Walk(start, u0, end, u1, parts);
      if (reached_ > tol_) return reached_;
      if (goes && tol_ >= bound_) return bound_;
      if (parts == kMostParts || reached_ > kHopeless * tol_)
        return goes ? bound_ : std::numeric_limits<double>::infinity();
    }
  }

 private:
  // Cuts both where normals of the cubic meet the piece, in the middle of each part too.
  bool Walk(const CubicSide::At& start, double u0, const CubicSide::At& end, double u1, int parts) {
    Meeting from = {u0, 0, start.stretch, start.halts};
    const double step = 0.5 * (u1 - u0) / parts;
    for (int i = 0; i < parts; ++i) {
      Meeting middle, to;
      if (!Meet(u0 + (2 * i + 1) * step, u1 - u0, from, middle)) return false;
      if (i + 1 == parts) {
        to = {u1, 1, end.stretch, end.halts};
      } else if (!Meet(u0 + (2 * i + 2) * step, u1 - u0, middle, to)) {
        return false;
      }
      if (!(middle.t > from.t && to.t > middle.t)) return false;
      if (!ComparePart(from, middle, to)) return false;
      from = to;
    }
    return true;
  }

  struct Meeting {
    double u, t;  // of the cubic and of the piece
    double stretch;
    bool halts;
  };

  // The normal at u meets the piece after `before`: Newton's method, within a bracket that halves
  // when a step leaves it.
  bool Meet(double u, double width, const Meeting& before, Meeting& meeting) {
    constexpr int kMostSteps = 40;
    constexpr double kSettled = 1e-4;  // parameter: then the next step is off by the square
    const CubicSide::At at = side_.LookAt(u);
    double low = before.t, high = 1;
    double t = std::min(before.t + (u - before.u) / width, 1.0);
    bool settled = false;
    for (int i = 0; i < kMostSteps && !settled; ++i) {
      const double ahead = Dot(CubicAt(piece_, t) - at.point, at.tangent);
      (ahead > 0 ? high : low) = t;
      double next = t - ahead / Dot(CubicDerivatives(piece_, t).first, at.tangent);
      if (!(next > low && next < high)) next = 0.5 * (low + high);
      settled = kSettled >= std::fabs(next - t);
      t = next;
    }
    meeting = {u, t, at.stretch, false};
    const double gap = Length(CubicAt(piece_, t) - at.point);
    reached_ = std::max(reached_, std::fabs(gap - distance_));
    return settled;
  }

  // With P the part of the cubic and Q that of the piece, over t = w + c w (1 - w) so that the
  // middles meet as the ends do: |Q - P| is compared with the distance, and what Q is ahead of the
  // normal by, s, brings it nearer by at most s^2 / (2 d (1 + d k)), or by s. Result: whether P
  // goes along its chord; how near they are is looked at where that can still matter.
  bool ComparePart(const Meeting& from, const Meeting& middle, const Meeting& to) {
    Vec2 b[4], p[4];
    CubicPart(side_.points(), from.u, to.u, b);
    const Vec2 chord = b[3] - b[0];
    ToPowers(b, p);
    Vec2 along[3] = {p[1], 2.0 * p[2], 3.0 * p[3]};  // the velocity of P
    if (from.halts) {                                // over w
      along[0] = along[1];
      along[1] = along[2];
      along[2] = {0, 0};
    } else if (to.halts) {  // over 1 - w
      along[1] = along[0] + along[1];
      along[2] = {0, 0};
    }
    ToScaledBernstein(along);
    const double slowest =
        std::min({Dot(along[0], chord), 0.5 * Dot(along[1], chord), Dot(along[2], chord)}) /
        Length(chord);
    const double c = 4 * ((middle.t - from.t) / (to.t - from.t) - 0.5);
    if (!(std::fabs(c) < 1 && slowest > 0)) return false;
    if (reached_ > tol_) return true;
    CubicPart(piece_, from.t, to.t, b);
    Vec2 gap[7];
    GapOf(p, b, c, gap);
    const double stretch = 0.5 * std::min({from.stretch, middle.stretch, to.stretch});
    Bound(gap, along, slowest, stretch);
    return true;
  }

  // Q(t(w)) - P(w) as ToScaledBernstein() has it.
  static void GapOf(const Vec2* p, const Vec2* piece, double c, Vec2 (&g)[7]) {
    Vec2 q[4];
    ToPowers(piece, q);
    const double a = 1 + c;
    g[0] = q[0] - p[0];
    g[1] = a * q[1] - p[1];
    g[2] = (a * a) * q[2] - c * q[1] - p[2];
    g[3] = (a * a * a) * q[3] - (2 * a * c) * q[2] - p[3];
    g[4] = (c * c) * q[2] - (3 * a * a * c) * q[3];
    g[5] = (3 * a * c * c) * q[3];
    g[6] = -(c * c * c) * q[3];
    ToScaledBernstein(g);
  }

  void Bound(const Vec2 (&g)[7], const Vec2 (&along)[3], double slowest, double stretch) {
    constexpr double kOfEight[] = {1, 8, 28, 56, 70, 56, 28, 8, 1};
    constexpr double kOfTwelve[] = {1, 12, 66, 220, 495, 792, 924, 792, 495, 220, 66, 12, 1};
    double square[13] = {}, ahead[9] = {};
    for (int i = 0; i < 7; ++i) {
      square[2 * i] += Dot(g[i], g[i]);
      for (int k = i + 1; k < 7; ++k) square[i + k] += 2 * Dot(g[i], g[k]);
      for (int k = 0; k < 3; ++k) ahead[i + k] += Dot(g[i], along[k]);
    }
    const Range gap = RangeOf(square, kOfTwelve);
    const Range slip = RangeOf(ahead, kOfEight);
    const double s = std::max(std::fabs(slip.low), std::fabs(slip.high)) / slowest;
    const double curved = s * s / (2 * distance_ * std::max(stretch, 0.0));
    const double nearer = s > curved ? curved : s;  // s where that is 0 / 0
    const double least = std::sqrt(std::max(gap.low, 0.0)),
                 most = std::sqrt(std::max(gap.high, 0.0));
    bound_ = std::max({bound_, most - distance_, distance_ - least + nearer});
  }

  const CubicSide& side_;
  const Vec2* piece_;
  const double tol_, distance_;
  double bound_ = 0, reached_ = 0;
};

// Moves a part that is straight, and goes nowhere back, to the side as it is: its parameter may run
// as it likes, and stand still at an end, where comparing would need speed. Result: whether it is.
bool MoveStraight(const CubicSide& side, double u0, double u1, Vec2 along, double tol,
                  SideFit& fit) {
  constexpr double kBeside = 0x1p-10;  // of the tolerance
  Vec2 part[4];
  CubicPart(side.points(), u0, u1, part);
  const Vec2 chord = part[3] - part[0];
  const Vec2 move = (side.distance() / Length(chord)) * Vec2{chord.y, -chord.x};
  double off = 0;
  for (int i = 1; i < 4; ++i) {
    off = std::max(off, std::fabs(Cross(along, part[i] - part[0])));
    if (!(Dot(along, part[i] - part[i - 1]) >= 0)) return false;
  }
  if (!(kBeside * tol >= off)) return false;
  fit.points[1] = part[1] + move;
  fit.points[2] = part[2] + move;
  fit.off = off;
  return true;
}

}  // namespace

// What is straight but for rounding is straight.
CubicSide::CubicSide(const Vec2* points, double distance) : points_(points), distance_(distance) {
  constexpr double kRounding = 0x1p-46;
  double farthest = 0, longest = 0;
  for (int i = 0; i < 4; ++i) farthest = std::max(farthest, Length(points[i]));
  for (int i = 0; i < 3; ++i) longest = std::max(longest, Length(points[i + 1] - points[i]));
  noise_ = kRounding * longest * farthest;
}

CubicSide::At CubicSide::LookAt(double u) const {
  const CubicDerivatives d(points_, u);
  const double speed = Length(d.first), cross = Cross(d.first, d.second);
  const double bend = noise_ >= std::fabs(cross) ? 0 : cross / (speed * speed * speed);
  const double stretch = 1 + distance_ * bend;
  return {CubicAt(points_, u), (1 / speed) * d.first, stretch, speed * stretch, false};
}

SideFit FitSide(const CubicSide& side, const CubicSide::At& start, double u0,
                const CubicSide::At& end, double u1, double tol) {
  const Vec2 first = OffsetOf(start, side.distance()), last = OffsetOf(end, side.distance());
  const Vec2 chord = last - first;
  const double length = Length(chord);
  SideFit fit = {{first, first, last, last}, 0};
  // All of it is as short as its chord but for a factor of less than 2.
  if (!(length > 0.25 * tol)) return fit;
  const Vec2 along = (1 / length) * chord;
  const auto turned = [&](Vec2 v) { return Vec2{Dot(v, along), Cross(along, v)}; };
  const Vec2 leaves = turned(start.tangent), arrives = turned(end.tangent);
  const double third = (u1 - u0) / 3 / length;
  const double guess_a = third * std::max(start.run, 0.0);
  const double guess_b = third * std::max(end.run, 0.0);
  double a = guess_a, b = guess_b;
  const bool is_straight = std::fabs(leaves.y) <= kStraight && std::fabs(arrives.y) <= kStraight;
  if (is_straight && MoveStraight(side, u0, u1, along, tol, fit)) return fit;
  if (is_straight ||
      !OverChord(leaves, arrives).Solve(UnderSide(side, u0, u1, first, along, length), a, b)) {
    a = guess_a;
    b = guess_b;
  }
  fit.points[1] = first + (a * length) * start.tangent;
  fit.points[2] = last - (b * length) * end.tangent;
  fit.off = Comparison(side, fit.points, tol).Off(start, u0, end, u1);
  return fit;
}

SideFit PlainSide(const CubicSide& side, const CubicSide::At& start, double u0,
                  const CubicSide::At& end, double u1) {
  const Vec2 first = OffsetOf(start, side.distance()), last = OffsetOf(end, side.distance());
  const double chord = Length(last - first);
  Vec2 part[4];
  CubicPart(side.points(), u0, u1, part);
  double length = 0;
  for (int i = 0; i < 3; ++i) length += Length(part[i + 1] - part[i]);
  const double turn =
      std::atan2(std::fabs(Cross(start.tangent, end.tangent)), Dot(start.tangent, end.tangent));
  return {{first, first + (chord / 3) * start.tangent, last - (chord / 3) * end.tangent, last},
          chord + length + std::fabs(side.distance()) * turn};
}

}  // namespace kurvo::outline
