#include "fit/biarc_fit.h"

#include <cmath>
#include <limits>

#include "fit/greedy.h"

namespace kurvo::outline {
namespace {

constexpr double kOrder = 3;              // the deviation of a biarc goes with its length cubed
constexpr double kStraight = 4e-10;       // radians between tangents and chord of a line
constexpr double kOneArc = 2e-10;         // radians that the end of one arc may be off
constexpr double kTinyStretch = 0x1p-36;  // of the size: below it a stretch is a point
constexpr double kMostLonger = 2;         // the polygon of a stretch against its arc
constexpr int kMostHalvings = 4;          // of a part until its distance from the arc is clear

// All points p with bend |p - at|^2 / 2 = (p - at) . left: the circle, or line, through `at` to the
// left of whose direction the centre lies at the distance 1 / bend.
struct Circle {
  Vec2 at, left;
  double bend;

  // Through `at` in a direction, and through `to`.
  static Circle Through(Vec2 at, Vec2 direction, Vec2 to) {
    const Vec2 chord = to - at;
    return {at, Left(direction), 2 * Cross(direction, chord) / SquaredLength(chord)};
  }
  // The distance from the circle to the first order in it, inside positive.
  // (p - c)^2 - r^2 = |w|^2 - 2 r w . left with w = p - at, and this is its part by 2 r.
  double Inside(Vec2 p, Vec2 q) const { return Dot(0.5 * (p + q), left) - 0.5 * bend * Dot(p, q); }
};

// Two arcs with a common tangent, or one, or a line.
struct Biarc {
  enum class Kind { kLine, kArc, kTwoArcs };
  Kind kind;
  Circle first, second;  // through the start and the end
  Vec2 start, joint, end;
};

// The shares of what is allowed inside and outside of a circle of radius r: a point that is off by
// e inwards has the value e - e^2 / (2 r), which nowhere is above r / 2.
struct Allowed {
  Allowed(double bend, double d)
      : deviation(d), half(0.5 * std::fabs(bend) * d), sign(bend < 0 ? -1 : 1) {}
  double ShareOf(double inside) const {
    const double value = sign * inside / deviation;
    if (value <= 0) return -value / (1 + half);
    return half < 0.5 ? value / (1 - half) : 0;
  }
  double deviation, half, sign;
};

// What arcs ask of a part of a cubic, by the coefficients in Bernstein form.
struct Around {
  double off;     // bound of the deviation, by the one allowed
  double sure;    // reached at its ends
  bool forwards;  // goes around the centre in the sense of the circle
};

// The squared distance has degree 6 and the coefficients sum C(3,i) C(3,k-i) / C(6,k) a_i a_k-i;
// velocity times direction around has degree 5.
Around LookAround(const Circle& circle, const Vec2* part, const Allowed& allowed) {
  constexpr double kThree[] = {1, 3, 3, 1}, kTwo[] = {1, 2, 1};
  constexpr double kSix[] = {1, 6, 15, 20, 15, 6, 1}, kFive[] = {1, 5, 10, 10, 5, 1};
  Vec2 w[4], v[3], ahead[4];
  for (int i = 0; i < 4; ++i) {
    w[i] = part[i] - circle.at;
    const Vec2 inwards = circle.left - circle.bend * w[i];
    ahead[i] = -Left(inwards);
  }
  for (int i = 0; i < 3; ++i) v[i] = part[i + 1] - part[i];
  double inside[7] = {}, along[6] = {};
  for (int i = 0; i < 4; ++i) {
    inside[2 * i] += kThree[i] * kThree[i] * circle.Inside(w[i], w[i]);
    for (int j = i + 1; j < 4; ++j)
      inside[i + j] += 2 * kThree[i] * kThree[j] * circle.Inside(w[i], w[j]);
  }
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 4; ++j) along[i + j] += kTwo[i] * kThree[j] * Dot(v[i], ahead[j]);
  Around around = {0, std::max(allowed.ShareOf(inside[0]), allowed.ShareOf(inside[6])), true};
  for (int k = 0; k < 7; ++k)
    around.off = std::max(around.off, allowed.ShareOf(inside[k] / kSix[k]));
  const double rounding = 0x1p-48 * (std::fabs(along[0]) + std::fabs(along[5]));
  for (int k = 0; k < 6; ++k) around.forwards &= along[k] / kFive[k] >= -rounding;
  return around;
}

class ArcFitting {
 public:
  ArcFitting(const CellRun& run, double deviation) : run_(run), deviation_(deviation) {}

  Attempt Try(double from, double to, Biarc& biarc) const {
    biarc.start = run_.PointAt(from);
    biarc.end = run_.PointAt(to);
    const Vec2 leaves = run_.TangentAt(from), arrives = run_.TangentAt(to);
    const Vec2 chord = biarc.end - biarc.start;
    const double length = Length(chord);
    if (TryLine(leaves, arrives, from, to, biarc)) return {true, 0};
    biarc.kind = Biarc::Kind::kLine;
    if (!(length > 0)) return {IsTiny(from, to), 0};
    if (TryOneArc(leaves, arrives, biarc)) {
      const Attempt one = Measure(biarc, from, to, to);
      if (one.fits) return one;
    }
    double middle;
    if (!Join(leaves, arrives, from, to, biarc, middle)) {
      biarc.kind = Biarc::Kind::kLine;
      return {IsTiny(from, to), 0};
    }
    return Measure(biarc, from, middle, to);
  }

 private:
  bool TryLine(Vec2 leaves, Vec2 arrives, double from, double to, Biarc& biarc) const {
    const Vec2 chord = biarc.end - biarc.start;
    const double length = Length(chord), slack = kStraight * length;
    if (!(length > 0 && slack >= std::fabs(Cross(leaves, chord)) &&
          slack >= std::fabs(Cross(arrives, chord)) && Dot(leaves, chord) > 0 &&
          Dot(arrives, chord) > 0))
      return false;
    biarc.kind = Biarc::Kind::kLine;
    biarc.first = {biarc.start, Left((1 / length) * chord), 0};
    return MeasureArc(biarc.first, length, from, to).fits;
  }

  // The circle through the start with its tangent and through the end, when it arrives there in the
  // direction of the run: the tangent and the chord make the same angle at both ends.
  bool TryOneArc(Vec2 leaves, Vec2 arrives, Biarc& biarc) const {
    const Vec2 chord = biarc.end - biarc.start;
    const double length = Length(chord);
    const Vec2 along = (1 / length) * chord;
    const double sine = Cross(leaves, along), other = Cross(along, arrives);
    if (!(kOneArc >= std::fabs(sine - other) && Dot(leaves, along) > 0 && Dot(arrives, along) > 0))
      return false;
    biarc.kind = Biarc::Kind::kArc;
    biarc.first = biarc.second = Circle::Through(biarc.start, leaves, biarc.end);
    biarc.joint = biarc.end;
    return true;
  }

  // Of the family of biarcs (Bolton, Biarc curves, CAD 7, 1975) the one whose joint lies on the
  // run, as the locus of joints is a circle through both ends that the run crosses (Meek and
  // Walton, Approximating smooth planar curves by arc splines, 1995). At a joint the chords from
  // the start and to the end make half the angle between the tangents.
  bool Join(Vec2 leaves, Vec2 arrives, double from, double to, Biarc& biarc, double& middle) const {
    const Vec2 sum = leaves + arrives;
    const double length = Length(sum);
    if (!(length > kStraight)) return false;
    const Vec2 half = (1 / length) * sum;
    const double cosine = Dot(half, leaves), sine = Cross(leaves, half);
    const auto turned = [&](Vec2 v) {
      return Vec2{cosine * v.x - sine * v.y, sine * v.x + cosine * v.y};
    };
    const Vec2 chord = biarc.end - biarc.start;
    const auto off = [&](double s) {
      const Vec2 p = run_.PointAt(s);
      return Cross(turned(p - biarc.start), biarc.end - p) / ((s - from) * (to - s));
    };
    middle = Crossing(off, from, to, Cross(turned(run_.VelocityAt(from)), chord) / (to - from),
                      Cross(turned(chord), run_.VelocityAt(to)) / (to - from));
    return Place(leaves, arrives, run_.PointAt(middle), biarc);
  }

  // Between ends with values of different sign, by the rule of false position with halved ends
  // (Illinois); the joint need not be exact.
  template <class F>
  static double Crossing(const F& f, double from, double to, double at_from, double at_to) {
    constexpr int kSteps = 4;
    constexpr double kLeast = 0.05, kClose = 1e-3;  // of the stretch
    if (!(at_from * at_to < 0)) return 0.5 * (from + to);
    double low = from, high = to, middle = from;
    for (int i = 0; i < kSteps; ++i) {
      const double last = middle;
      middle = low + (high - low) * (at_from / (at_from - at_to));
      const double margin = kLeast * (to - from);
      middle = std::clamp(middle, from + margin, to - margin);
      if (i > 0 && kClose * (to - from) >= std::fabs(middle - last)) break;
      const double value = f(middle);
      if ((value < 0) == (at_from < 0)) {
        low = middle;
        at_from = value;
        at_to /= 2;
      } else {
        high = middle;
        at_to = value;
        at_from /= 2;
      }
    }
    return middle;
  }

  // The arc from the start towards `joint` has legs of |w|^2 / (2 w . t); those of the other, d2,
  // follow from |v - d1 t1 - d2 t2| = d1 + d2, and the joint divides the line between the corners.
  static bool Place(Vec2 leaves, Vec2 arrives, Vec2 joint, Biarc& biarc) {
    const Vec2 v = biarc.end - biarc.start, w = joint - biarc.start;
    const double leg = SquaredLength(w) / (2 * Dot(w, leaves));
    const double rest = 0.5 * SquaredLength(v) - leg * Dot(v, leaves);
    const double other = rest / (Dot(v, arrives) + leg * (1 - Dot(leaves, arrives)));
    if (!(leg > 0 && other > 0 && std::isfinite(other))) return false;
    biarc.joint = Mix(biarc.start + leg * leaves, biarc.end - other * arrives, leg / (leg + other));
    // Legs that are positive and finite make arcs below half a turn.
    if (!(Dot(leaves, biarc.joint - biarc.start) > 0 && Dot(arrives, biarc.end - biarc.joint) > 0))
      return false;
    biarc.kind = Biarc::Kind::kTwoArcs;
    biarc.first = Circle::Through(biarc.start, leaves, biarc.joint);
    biarc.second = Circle::Through(biarc.end, arrives, biarc.joint);
    return true;
  }

  Attempt Measure(const Biarc& biarc, double from, double middle, double to) const {
    const Attempt first = MeasureArc(biarc.first, Length(biarc.joint - biarc.start), from, middle);
    if (biarc.kind == Biarc::Kind::kArc) return first;
    if (!first.fits && !(first.error > 0)) return first;
    const Attempt second = MeasureArc(biarc.second, Length(biarc.end - biarc.joint), middle, to);
    if (!second.fits && !(second.error > 0)) return second;
    return {first.fits && second.fits, std::max(first.error, second.error)};
  }

  static double LengthOfArc(const Circle& circle, double chord) {
    constexpr double kFlat = 1e-4;  // sine below which the chord says it
    const double sine = 0.5 * std::fabs(circle.bend) * chord;
    return sine > kFlat ? 2 * std::asin(std::min(sine, 1.0)) / std::fabs(circle.bend) : chord;
  }

  // A stretch that keeps its distance, goes around in one sense and is not much longer than the arc
  // is as near to the arc as the arc to it. So is one that the circle around its end holds, as that
  // holds arcs below half a turn on shorter chords.
  Attempt MeasureArc(const Circle& circle, double chord, double from, double to) const {
    double error = 0, length = 0;
    bool forwards = true;
    const Allowed allowed(circle.bend, deviation_);
    const bool near = run_.ForEachPart(from, to, [&](const Vec2* part) {
      for (int i = 0; i < 3; ++i) length += Length(part[i + 1] - part[i]);
      error = std::max(error, deviation_ * AboutShareOf(circle, part, allowed));
      return error <= deviation_ && IsAround(circle, part, allowed, kMostHalvings, forwards);
    });
    const bool once = forwards && kMostLonger * LengthOfArc(circle, chord) + deviation_ >= length;
    if (near && once) return {true, error};
    if (deviation_ >= chord && deviation_ >= Radius(from, to, circle.at)) return {true, 0};
    return {false, once ? error : 0};
  }

  // About the largest share of what is allowed: of five points, and of the parabola through three.
  static double AboutShareOf(const Circle& circle, const Vec2* part, const Allowed& allowed) {
    constexpr double kStep = 0.25;
    double inside[5];
    for (int i = 0; i < 5; ++i) {
      const Vec2 w = CubicAt(part, i * kStep) - circle.at;
      inside[i] = circle.Inside(w, w);
    }
    double share = std::max(allowed.ShareOf(inside[0]), allowed.ShareOf(inside[4]));
    for (int i = 1; i < 4; ++i) {
      const double slope = 0.5 * (inside[i + 1] - inside[i - 1]);
      const double bend = inside[i + 1] - 2 * inside[i] + inside[i - 1];
      const bool peaks = std::fabs(bend) > std::fabs(slope);
      const double top = peaks ? inside[i] - 0.5 * slope * slope / bend : inside[i];
      share = std::max(share, allowed.ShareOf(top));
    }
    return share;
  }

  static bool IsAround(const Circle& circle, const Vec2* part, const Allowed& allowed,
                       int halvings_left, bool& forwards) {
    const Around around = LookAround(circle, part, allowed);
    if (around.sure > 1) return false;
    const bool clear = around.forwards && around.off <= 1;
    if (clear || halvings_left == 0) {
      forwards &= around.forwards;
      return clear;
    }
    Vec2 half[4];
    CubicPart(part, 0, 0.5, half);
    if (!IsAround(circle, half, allowed, halvings_left - 1, forwards)) return false;
    CubicPart(part, 0.5, 1, half);
    return IsAround(circle, half, allowed, halvings_left - 1, forwards);
  }

  double Radius(double from, double to, Vec2 middle) const {
    double most = 0;
    run_.ForEachPart(from, to, [&](const Vec2* part) {
      for (int i = 0; i < 4; ++i) most = std::max(most, SquaredLength(part[i] - middle));
      return true;
    });
    return std::sqrt(most);
  }
  bool IsTiny(double from, double to) const {
    return std::min(kTinyStretch, 0.5 * deviation_) >= Radius(from, to, run_.PointAt(from));
  }
  const CellRun& run_;
  const double deviation_;
};

void AddArc(const Circle& circle, Vec2 end, Pieces& pieces) {
  constexpr double kLeastBend = 0x1p-60;  // of a circle, in a frame of size 1
  if (!(std::fabs(circle.bend) > kLeastBend)) return pieces.Line(end);
  const double radius = 1 / circle.bend;
  pieces.Arc(circle.at + radius * circle.left, std::fabs(radius), circle.bend < 0, end);
}

}  // namespace

void FitArcs(const CellRun& run, double deviation, Vec2 end, Pieces& pieces) {
  const ArcFitting fitting(run, deviation);
  FitGreedily<Biarc>(
      run.Size(), deviation, kOrder,
      [&](double from, double to, Biarc& biarc) { return fitting.Try(from, to, biarc); },
      [&](const Biarc& biarc, double to) {
        const Vec2 at = to >= run.Size() ? end : pieces.frame().Outwards(biarc.end);
        if (biarc.kind == Biarc::Kind::kLine) return pieces.Line(at);
        if (biarc.kind == Biarc::Kind::kTwoArcs)
          AddArc(biarc.first, pieces.frame().Outwards(biarc.joint), pieces);
        AddArc(biarc.second, at, pieces);
      });
}

}  // namespace kurvo::outline
