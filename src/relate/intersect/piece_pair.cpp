// Two Bezier pieces A(s) and B(t) next to a pair of parameters.
#include "relate/intersect/piece_pair.h"

#include "relate/intersect/one_point.h"

namespace kurvo {
namespace {

constexpr int kCrossingSteps = 16;
constexpr int kContactSteps = 30;
constexpr int kApproachRounds = 4;
constexpr double kSettledStep = 1e-9;  // of a parameter: the next step would be rounding
constexpr double kRestlessStep =
    1e-7;  // of a parameter: Newton's method has settled but for rounding
constexpr double kRunShares[] = {0.5, 0.25, 0.75};  // of a way along a run, where it is looked at
constexpr double kGain = 0.5;  // of the gap: what is left of it where moving is worth while
constexpr double kOnePointReach = 0.1;  // of parameters of one point, at most

double SizeOf(const ParameterPair& step) { return std::max(std::fabs(step.s), std::fabs(step.t)); }

// Roots at an end of a piece become exactly that end.
double Snapped(double t) { return kInsideMargin >= t ? 0.0 : (kInsideMargin >= 1.0 - t ? 1.0 : t); }

bool IsSamePoint(const BezierPiece& piece, double s, double t, double tol) {
  if (!(kOnePointReach >= std::fabs(s - t))) return false;
  const Vec2 p = PointAt(piece, s), q = PointAt(piece, t);
  return tol >= Length(p - q) &&
         StaysAtPoint([&](double at) { return PointAt(piece, at); }, s, t, p, q, tol);
}

bool IsEnd(double t) { return t == 0.0 || t == 1.0; }

}  // namespace

// Newton's method on B(t) - A(s) = 0. With gap = B - A a step is the solution of
//   A' ds - B' dt = gap,
// of which the cross products with B' and A' leave one unknown each:
//   ds = gap x B' / (A' x B'),  dt = gap x A' / (A' x B').
// Where the pieces cross at an angle it doubles the digits with each step; where the determinant is
// all but 0, rounding keeps it moving a little.
bool PiecePair::SolveCrossing(const BezierPiece& part_a, const BezierPiece& part_b,
                              ParameterPair& at, bool& shallow, Vec2& place) const {
  for (int step = 0; step < kCrossingSteps; ++step) {
    const Jet on_a = JetAt(a, at.s), on_b = JetAt(b, at.t);
    const Vec2 gap = on_b.p - on_a.p;
    const double det = Cross(on_a.d1, on_b.d1);
    const ParameterPair move{Cross(gap, on_b.d1) / det, Cross(gap, on_a.d1) / det};
    at = {at.s + move.s, at.t + move.t};
    if (!Near(at, part_a, part_b)) return false;
    const bool last = step + 1 == kCrossingSteps && kRestlessStep >= SizeOf(move);
    if (!last && !(kSettledStep >= SizeOf(move))) continue;
    shallow = kShallowCrossing * (Length(on_a.d1) * Length(on_b.d1)) >= std::fabs(det);
    place = on_a.p + move.s * on_a.d1;
    return tol >= Length(gap);
  }
  return false;
}

// Newton's method on f = A' x B' = 0 and g = (B - A) . A' = 0, whose derivatives are
//   f_s = A'' x B'               f_t = A' x B''
//   g_s = (B - A) . A'' - A'.A'  g_t = B'.A'
// with Cramer's rule for the step.
bool PiecePair::SolveContact(const BezierPiece& part_a, const BezierPiece& part_b,
                             ParameterPair& at) const {
  for (int step = 0; step < kContactSteps; ++step) {
    const Jet on_a = JetAt(a, at.s), on_b = JetAt(b, at.t);
    const Vec2 gap = on_b.p - on_a.p;
    const double f = Cross(on_a.d1, on_b.d1), g = Dot(gap, on_a.d1);
    const double f_s = Cross(on_a.d2, on_b.d1), f_t = Cross(on_a.d1, on_b.d2);
    const double g_s = Dot(gap, on_a.d2) - Dot(on_a.d1, on_a.d1);
    const double g_t = Dot(on_b.d1, on_a.d1);
    const double det = f_s * g_t - f_t * g_s;
    const ParameterPair move{(f_t * g - f * g_t) / det, (f * g_s - f_s * g) / det};
    at = {at.s + move.s, at.t + move.t};
    if (!Near(at, part_a, part_b)) return false;
    if (SizeOf(move) <= kInsideMargin) return true;
  }
  return false;
}

namespace {

// Whether the pieces stay together between two places, by the distance across their tangents.
bool OnOneRun(const PiecePair& pieces, const ParameterPair& from, const ParameterPair& to) {
  return std::all_of(std::begin(kRunShares), std::end(kRunShares), [&](double share) {
    const Jet on_a = JetAt(pieces.a, from.s + share * (to.s - from.s));
    const Vec2 gap = PointAt(pieces.b, from.t + share * (to.t - from.t)) - on_a.p;
    return pieces.tol * Length(on_a.d1) >= std::fabs(Cross(gap, on_a.d1));
  });
}

}  // namespace

ParameterPair PiecePair::Closest(const ParameterPair& at) const {
  const BezierPiece around_a = WindowAround(at.s), around_b = WindowAround(at.t);
  const double gap = GapAt(at);
  const auto is_better = [&](const ParameterPair& other) {
    return OnPiece(other.s) && OnPiece(other.t) && kGain * gap >= GapAt(other) &&
           OnOneRun(*this, at, other);
  };
  bool shallow = false;
  Vec2 place;
  ParameterPair closest = at;
  if (SolveCrossing(around_a, around_b, closest, shallow, place) && is_better(closest))
    return closest;
  closest = at;
  return SolveContact(around_a, around_b, closest) && is_better(closest) ? closest : at;
}

ParameterPair PiecePair::Approach(ParameterPair at) const {
  for (int round = 0; round < kApproachRounds; ++round) {
    at.s = RefineNearest(a, PointAt(b, at.t), at.s);
    at.t = RefineNearest(b, PointAt(a, at.s), at.t);
  }
  return at;
}

bool PiecePair::MoveToEnds(ParameterPair& at, bool& moved) const {
  const ParameterPair snapped{Snapped(at.s), Snapped(at.t)};
  moved = snapped.s != at.s || snapped.t != at.t;
  if (!moved) return true;
  if (Close(snapped)) {
    at = snapped;
    return true;
  }
  const ParameterPair kept = OnPieces(at);
  const bool beyond_a = kept.s != at.s, beyond_b = kept.t != at.t;
  at = kept;
  if (Close(at)) return true;
  if (beyond_a == beyond_b) return false;
  if (beyond_a)
    at.t = RefineNearest(b, PointAt(a, at.s), at.t);
  else
    at.s = RefineNearest(a, PointAt(b, at.t), at.s);
  return Close(at);
}

bool PiecePair::IsSame(const Crossing& known, const ParameterPair& at, bool touch) const {
  const double apart_a = std::fabs(known.first - at.s), apart_b = std::fabs(known.second - at.t);
  if (tol >= apart_a && tol >= apart_b) return true;
  if (!known.touch && !touch && !(IsEnd(known.first) && IsEnd(known.second))) return false;
  return IsSamePoint(a, known.first, at.s, tol) && IsSamePoint(b, known.second, at.t, tol);
}

}  // namespace kurvo
