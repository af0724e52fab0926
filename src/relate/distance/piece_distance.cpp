// The nearest points of two free-form pieces by branch and bound.
//
// The distance of A(s) and B(t) over the unit square of parameters has many local minima; the
// square is halved, the side of the larger part first, into cells, each a part of A by a part of B.
//   bound:    control points hold their part, so that no two points of a cell are closer than the
//             hulls are; the nearer half comes first, so that bounds fail early.
//   descent:  Newton's method from the middle of a cell goes down to a local minimum, which lowers
//             what bounds are compared with (nearest_pair.h).
//   one minimum: where bounds on the derivatives show that a cell has a single minimum
//             (unique_minimum.cpp), the descent has found it and the cell is done.
// A cell is left when its bound is not below the best distance, or only ties with it and lies after
// it. What remains ends at parts of 2^-26 or when the work is spent.
#include "relate/distance/piece_distance.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "relate/distance/squared_distance.h"
#include "relate/distance/unique_minimum.h"
#include "relate/piece_bounds.h"

namespace kurvo {
namespace {

constexpr double kShortestPart = 0x1p-26;  // of a parameter: shorter parts are not divided
constexpr double kTieWidth = 0x1p-7;       // the same where only a tie is sought
constexpr int kMaxHalvings = 56;           // of both parts together
constexpr int kDescentSteps = 48;          // of the descent
constexpr int kShorter = 12;               // halvings of one of its steps
constexpr double kGain = 1e-14;      // of the squared distance: a step that gains less is the last
constexpr int64_t kBoundsCost = 24;  // of the bounds on derivatives, at degree 0
constexpr std::size_t kStackPoints = 2 * (kMaxHalvings + 1) * 4;

// How far the parts are apart in the direction `axis` at least; negative when they overlap.
double Gap(const BezierPiece& a, const BezierPiece& b, Vec2 axis) {
  double low_a = Dot(axis, Planar(a.points[0])), high_a = low_a;
  for (int32_t i = 1; i <= a.degree; ++i) {
    const double at = Dot(axis, Planar(a.points[i]));
    low_a = std::min(low_a, at);
    high_a = std::max(high_a, at);
  }
  double low_b = Dot(axis, Planar(b.points[0])), high_b = low_b;
  for (int32_t i = 1; i <= b.degree; ++i) {
    const double at = Dot(axis, Planar(b.points[i]));
    low_b = std::min(low_b, at);
    high_b = std::max(high_b, at);
  }
  return std::max(low_b - high_a, low_a - high_b) / Length(axis);
}

Vec2 ChordOf(const BezierPiece& part) {
  return Planar(part.points[part.degree]) - Planar(part.points[0]);
}

Vec2 MiddleOf(const BezierPiece& part) {
  return 0.5 * (Planar(part.points[part.degree]) + Planar(part.points[0]));
}

// No two points of the parts are closer than this: control points lie apart in the directions of
// the axes, across a chord, or from one part to the other. For short parts that run alongside, the
// error is of the order of their sagitta.
double LowerBound(const BezierPiece& a, const BezierPiece& b) {
  if (!Encloses(a) || !Encloses(b)) return 0.0;
  double bound = BoxDistance(a.box, b.box);
  const Vec2 chord_a = ChordOf(a), chord_b = ChordOf(b);
  for (const Vec2 axis :
       {MiddleOf(b) - MiddleOf(a), Vec2{-chord_a.y, chord_a.x}, Vec2{-chord_b.y, chord_b.x}}) {
    const double gap = Gap(a, b, axis);
    if (gap > bound) bound = gap;  // not for NaN
  }
  return bound;
}

// By de Casteljau's algorithm, for each coordinate; the weight is one more.
int64_t CostOfJet(const BezierPiece& piece) {
  return (piece.rational ? 3 : 2) * int64_t{piece.degree} * (piece.degree + 1);
}

bool Holds(const BezierPiece& part, double t) { return t >= part.start && part.end() >= t; }

}  // namespace

double BoxDistance(const PlanarBox& a, const PlanarBox& b) {
  const auto [x, y] = GapBetween(a, b);
  return x == 0.0 ? y : (y == 0.0 ? x : std::sqrt(x * x + y * y));
}

void PieceDistance::Search(const DistancePiece& a, const DistancePiece& b) {
  a_ = &a;
  b_ = &b;
  step_cost_ = CostOfJet(a.bezier) + CostOfJet(b.bezier);
  slot_ = static_cast<std::size_t>(std::max(a.bezier.degree, b.bezier.degree)) + 1;
  std::array<WeightedPoint, kStackPoints> stack;
  const std::size_t needed = 2 * (kMaxHalvings + 1) * slot_;
  if (needed > stack.size() && heap_.size() < needed) heap_.resize(needed);
  arena_ = needed > stack.size() ? heap_.data() : stack.data();
  const BezierPiece part_a = WholeOf(a.bezier), part_b = WholeOf(b.bezier);
  SearchParts(part_a, part_b, LowerBound(part_a, part_b), {-1.0, -1.0}, 0);
}

bool PieceDistance::IsPoint(const BezierPiece& part) const {
  return nearest_.rounding() >= part.extent();
}

bool PieceDistance::IsLeaf(const BezierPiece& part) const {
  return part.width <= kShortestPart || IsPoint(part);
}

bool PieceDistance::Promising(const BezierPiece& a, const BezierPiece& b, double bound) const {
  if (nearest_.CanImprove(bound)) return true;
  const auto wide = [&](const BezierPiece& part) {
    return part.width > kTieWidth && !IsPoint(part);
  };
  const double first = a_->bezier.width < 0.0 ? a.end() : a.start;
  return (wide(a) || wide(b)) && nearest_.CanTie(bound, a_->BezierToCurve(first));
}

// Whether a descent from the middles of the parts is likely to lead to another nearest pair.
bool PieceDistance::WorthDescending(const BezierPiece& a, const BezierPiece& b, double bound) {
  if (!nearest_.CanImprove(bound)) return true;  // a tie is sought
  work_.Spend(step_cost_ / 2);
  const Jet jet = JetAt(a_->bezier, a.middle());
  const Vec2 gap = PointAt(b_->bezier, b.middle()) - jet.p;
  // For curves alongside each other the distance across counts, not that along them.
  return nearest_.distance() * Length(jet.d1) >= std::fabs(Cross(gap, jet.d1));
}

// `known` is where a descent from around here has ended.
void PieceDistance::SearchParts(const BezierPiece& a, const BezierPiece& b, double bound,
                                Pair known, int halvings) {
  if (work_.exhausted() || !Promising(a, b, bound)) return;
  const bool known_here = Holds(a, known.s) && Holds(b, known.t);
  const bool enclosed_a = Encloses(a), enclosed_b = Encloses(b);
  const bool one_minimum = enclosed_a && enclosed_b && HaveOneMinimum(a, b);
  work_.Spend(kBoundsCost + 4 * static_cast<int64_t>(a.degree + b.degree));
  if (one_minimum && known_here) return;
  const bool leaf_a = IsLeaf(a), leaf_b = IsLeaf(b);
  const bool last =
      (leaf_a && (leaf_b || !enclosed_a)) || (leaf_b && !enclosed_b) || halvings >= kMaxHalvings;
  if (!known_here && (one_minimum || last || halvings == 0 || WorthDescending(a, b, bound))) {
    const Cell here = {{a.start, b.start}, {a.end(), b.end()}};
    known = Descend({a.middle(), b.middle()}, one_minimum ? here : kWhole);
    if ((one_minimum && known.s >= 0.0) || !Promising(a, b, bound)) return;
  }
  if (last) return;
  if (leaf_b || (!leaf_a && a.extent() >= b.extent()))
    SearchHalves(a, true, b, known, halvings);
  else
    SearchHalves(b, false, a, known, halvings);
}

void PieceDistance::SearchHalves(const BezierPiece& whole, bool of_a, const BezierPiece& other,
                                 Pair known, int halvings) {
  const auto [left, right] =
      Halve(whole, arena_ + 2 * static_cast<std::size_t>(halvings) * slot_, slot_);
  work_.Spend(static_cast<int64_t>(whole.degree + 1) * whole.degree +
              12 * static_cast<int64_t>(slot_));
  const BezierPiece halves[] = {left, right};
  const double bounds[] = {LowerBound(left, other), LowerBound(right, other)};
  const std::size_t first = bounds[1] < bounds[0] ? 1 : 0;
  for (const std::size_t i : {first, 1 - first}) {
    if (of_a)
      SearchParts(halves[i], other, bounds[i], known, halvings + 1);
    else
      SearchParts(other, halves[i], bounds[i], known, halvings + 1);
  }
}

// Takes the step, or the first of its halves that goes down; false when none does.
bool PieceDistance::StepDown(Pair& at, Pair step, double square, const Cell& cell) {
  for (int shorter = 0; shorter < kShorter; ++shorter) {
    const Pair next = {ClampedS(cell, at.s + step.s), ClampedT(cell, at.t + step.t)};
    const Vec2 gap = PointAt(b_->bezier, next.t) - PointAt(a_->bezier, next.s);
    work_.Spend(step_cost_ / 2);
    if (Dot(gap, gap) < square) {
      at = next;
      return true;
    }
    step = {0.5 * step.s, 0.5 * step.t};
  }
  return false;
}

// Newton's method for the minimum of the squared distance in a cell, from `at`; steps are halved
// until they go down. A parameter on a side of the cell stays there while the function falls
// outwards. Considers where it ends; returns that, or no pair when the steps ran out before.
PieceDistance::Pair PieceDistance::Descend(Pair at, const Cell& cell) {
  bool arrived = false;
  for (int step = 0; step < kDescentSteps && !arrived; ++step) {
    work_.Spend(step_cost_);
    const SquaredDistance here(JetAt(a_->bezier, at.s), JetAt(b_->bezier, at.t));
    const bool fixed_s =
        (at.s <= cell.low.s && here.slope_s >= 0.0) || (at.s >= cell.high.s && 0.0 >= here.slope_s);
    const bool fixed_t =
        (at.t <= cell.low.t && here.slope_t >= 0.0) || (at.t >= cell.high.t && 0.0 >= here.slope_t);
    if ((fixed_s && fixed_t) || nearest_.rounding() >= std::sqrt(here.square)) {
      arrived = true;
      break;
    }
    const Pair whole = here.StepDown(fixed_s, fixed_t);
    const bool last = kGain * here.square >= -(here.slope_s * whole.s + here.slope_t * whole.t);
    const Cell room = {{cell.low.s - at.s, cell.low.t - at.t},
                       {cell.high.s - at.s, cell.high.t - at.t}};
    bool lower = StepDown(at, here.Within(room, whole), here.square, cell);
    if (!lower && !last) lower = StepDown(at, here.SteepStep(fixed_s, fixed_t), here.square, cell);
    arrived = last || !lower;
  }
  const Vec2 gap = PointAt(b_->bezier, at.t) - PointAt(a_->bezier, at.s);
  nearest_.Consider({a_->BezierToCurve(at.s), b_->BezierToCurve(at.t), Length(gap)});
  return arrived ? at : Pair{-1.0, -1.0};
}

}  // namespace kurvo
