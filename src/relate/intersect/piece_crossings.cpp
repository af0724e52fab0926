// The common points of two Bezier pieces, by subdivision with Newton's method at its leaves.
#include "relate/intersect/piece_crossings.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "relate/intersect/one_point.h"
#include "relate/intersect/piece_overlap.h"
#include "relate/piece_bounds.h"

namespace kurvo {
namespace {

constexpr int kOverlapPairs = 120;          // pairs of parts before an overlap is suspected
constexpr int kMaxPairs = 20000;            // pairs of parts examined at most
constexpr double kLeafWidth = 1.0 / 65536;  // of a parameter: shorter parts are not divided
constexpr int kMaxHalvings = 40;            // of both parts together; above twice the leaf depth
constexpr int kContactHalvings = 5;         // of both parts together before contacts are looked for
constexpr int kNewtonSteps = 16;
constexpr int kContactSteps = 30;
constexpr int kApproachRounds = 4;
constexpr int64_t kApproachCost = 24;  // in pairs of parts
constexpr double kSettled = 1e-9;      // of a parameter: the next step would be rounding
constexpr double kRestless = 1e-7;  // of a parameter: Newton's method has settled but for rounding
constexpr double kInsideMargin = 1e-10;  // of a parameter, for roots at the joint of two parts
constexpr double kOnePointReach = 0.1;   // of parameters of one point, at most
constexpr double kCoordinateRounding = 2e-15;  // of the largest coordinate, for subdivided points

// Parameters of a point on both pieces.
struct Pair {
  double a;
  double b;
};

// Newton's method and the halvings take time with the square of the degree.
int64_t CostOfPair(int32_t n, int32_t m) {
  // The sum of two squares of degrees that costs as much again.
  constexpr int64_t kCheapSquares = 32;
  return 1 + (int64_t{n} * n + int64_t{m} * m) / kCheapSquares;
}

bool OnPiece(double t) { return t >= -kInsideMargin && 1.0 + kInsideMargin >= t; }

// Within a part, joints included.
bool Holds(const BezierPiece& part, double t) {
  return t >= part.start - kInsideMargin && part.end() + kInsideMargin >= t;
}

class PieceSearch {
 public:
  PieceSearch(const BezierPiece& a, const BezierPiece& b, double tol, WorkBudget& work,
              Crossings& found)
      : a_(a),
        b_(b),
        tol_(tol),
        work_(work),
        pair_cost_(CostOfPair(a.degree, b.degree)),
        found_(found),
        first_found_(found.size()) {
    const std::size_t needed = 2 * static_cast<std::size_t>(kMaxHalvings + 2) *
                               static_cast<std::size_t>(std::max(a.degree, b.degree) + 1);
    if (needed > stack_arena_.size()) heap_arena_.resize(needed);
    arena_ = heap_arena_.empty() ? stack_arena_.data() : heap_arena_.data();
  }

  Common Run() {
    RecordSharedEnds();
    const BezierPiece part_a = WholeOf(a_), part_b = WholeOf(b_);
    rounding_ = std::min(tol_, kCoordinateRounding * Reach(part_a.box, part_b.box));
    Search(part_a, part_b, Quest::kAnything, 0);
    if (overlap_) return Common::kStretch;
    return found_.size() > first_found_ ? Common::kPoints : Common::kNothing;
  }

 private:
  // Ends that coincide are common points with parameters of exactly 0 and 1.
  void RecordSharedEnds() {
    int shared = 0;
    for (const double end_a : {0.0, 1.0}) {
      for (const double end_b : {0.0, 1.0}) {
        const Vec2 gap = End(a_, end_a) - End(b_, end_b);
        if (tol_ >= std::fabs(gap.x) && tol_ >= std::fabs(gap.y)) {
          Record({end_a, end_b}, false, End(a_, end_a));
          ++shared;
        }
      }
    }
    if (shared >= 2) CheckOverlap();
  }

  static Vec2 End(const BezierPiece& piece, double t) {
    return Planar(piece.points[t == 0.0 ? 0 : piece.degree]);
  }

  void CheckOverlap() {
    if (overlap_checked_) return;
    overlap_checked_ = true;
    overlap_ = RunTogether(a_, b_, tol_);
  }

  static double Reach(const PlanarBox& a, const PlanarBox& b) {
    double reach = 0.0;
    for (const Vec2 p : {a.min, a.max, b.min, b.max})
      reach = std::max({reach, std::fabs(p.x), std::fabs(p.y)});
    return reach;
  }

  // What is still looked for in a pair of parts.
  enum class Quest {
    kAnything,   // crossings and contacts
    kMeeting,    // points where they meet but for rounding
    kCrossings,  // only these: the contact of this neighbourhood is known
  };

  void Search(const BezierPiece& a, const BezierPiece& b, Quest quest, int halvings) {
    const double slack = quest == Quest::kAnything ? tol_ : rounding_;
    if (overlap_ || !Meet(a.box, b.box, slack)) return;
    if (++pairs_ > kMaxPairs || work_.exhausted()) return;
    work_.Spend(pair_cost_);
    if (pairs_ > kOverlapPairs) CheckOverlap();
    if (overlap_ || StripApart(a, b, slack) || StripApart(b, a, slack)) return;

    if (ConesApart(ConeOf(a), ConeOf(b))) {
      if (FindCrossing(a, b)) return;
      // Without parallel tangents they come closest at an end of a piece, or where they meet.
      if (quest == Quest::kAnything)
        quest = FindEndContacts(a, b) ? Quest::kCrossings : Quest::kMeeting;
    } else if (quest == Quest::kAnything && halvings >= kContactHalvings && FindContacts(a, b)) {
      quest = Quest::kCrossings;
    }
    const bool leaf_a = a.width <= kLeafWidth;
    const bool leaf_b = b.width <= kLeafWidth;
    if ((leaf_a && leaf_b) || halvings >= kMaxHalvings) {
      if (quest == Quest::kMeeting) FindNearMiddle(a, b, true);
      return;
    }
    const bool divide_a = leaf_b || (!leaf_a && a.extent() >= b.extent());
    const std::size_t slot = static_cast<std::size_t>(std::max(a_.degree, b_.degree)) + 1;
    WeightedPoint* room = arena_ + 2 * static_cast<std::size_t>(halvings) * slot;
    const auto [left, right] = Halve(divide_a ? a : b, room, slot);
    for (const BezierPiece* half : {&left, &right})
      divide_a ? Search(*half, b, quest, halvings + 1) : Search(a, *half, quest, halvings + 1);
  }

  // Newton's method for A(s) = B(t) from where the chords cross. True when it ends in the one
  // crossing that parts without parallel tangents can have.
  bool FindCrossing(const BezierPiece& a, const BezierPiece& b) {
    const Vec2 start_a = Planar(a.points[0]), chord_a = Planar(a.points[a.degree]) - start_a;
    const Vec2 start_b = Planar(b.points[0]), chord_b = Planar(b.points[b.degree]) - start_b;
    const double det = Cross(chord_a, chord_b);
    const Vec2 between = start_b - start_a;
    const double share_a = std::clamp(Cross(between, chord_b) / det, 0.0, 1.0);
    const double share_b = std::clamp(Cross(between, chord_a) / det, 0.0, 1.0);
    Pair at{a.ToCurve(share_a), b.ToCurve(share_b)};
    bool shallow = false;
    Vec2 place;
    if (!SolveCrossing(at, shallow, place, a, b) || !OnPiece(at.a) || !OnPiece(at.b)) return false;
    Record(at, shallow, place);
    return Holds(a, at.a) && Holds(b, at.b);
  }

  // Solves A(s) = B(t); false when the iteration leaves the neighbourhood of the parts or does not
  // settle. Rounding may keep it moving a little.
  bool SolveCrossing(Pair& at, bool& shallow, Vec2& place, const BezierPiece& a,
                     const BezierPiece& b) const {
    for (int step = 0; step < kNewtonSteps; ++step) {
      const Jet jet_a = JetAt(a_, at.a), jet_b = JetAt(b_, at.b);
      const Vec2 gap = jet_b.p - jet_a.p;
      const double det = Cross(jet_a.d1, jet_b.d1);
      const Pair move{Cross(gap, jet_b.d1) / det, Cross(gap, jet_a.d1) / det};
      at = {at.a + move.a, at.b + move.b};
      if (!Near(at, a, b)) return false;
      const double size = std::max(std::fabs(move.a), std::fabs(move.b));
      const bool last = step + 1 == kNewtonSteps && kRestless >= size;
      if (!last && !(kSettled >= size)) continue;
      shallow = kShallowCrossing * (Length(jet_a.d1) * Length(jet_b.d1)) >= std::fabs(det);
      place = jet_a.p + move.a * jet_a.d1;
      return tol_ >= Length(gap);
    }
    return false;
  }

  // Not further from the middle of the parts than twice their width; false for NaN.
  static bool Near(const Pair& at, const BezierPiece& a, const BezierPiece& b) {
    return 2.0 * a.width >= std::fabs(at.a - a.middle()) &&
           2.0 * b.width >= std::fabs(at.b - b.middle());
  }

  bool Close(const Pair& at) const { return tol_ >= Length(PointAt(b_, at.b) - PointAt(a_, at.a)); }

  // True when the parts come within the tolerance, with a touch recorded: where their tangents are
  // parallel, at the ends of the pieces, else where it was seen.
  bool FindContacts(const BezierPiece& a, const BezierPiece& b) {
    bool found = FindEndContacts(a, b);
    Pair at{a.middle(), b.middle()};
    if (SolveContact(at, a, b) && Holds(a, at.a) && Holds(b, at.b))
      found = RecordTouch({std::clamp(at.a, 0.0, 1.0), std::clamp(at.b, 0.0, 1.0)}) || found;
    return found || FindNearMiddle(a, b, false);
  }

  // Where the pieces come closest next to the middles of two parts; unless these are leaves, only
  // if they are close there already.
  bool FindNearMiddle(const BezierPiece& a, const BezierPiece& b, bool leaves) {
    work_.Spend(kApproachCost * pair_cost_);
    Pair at{a.middle(), RefineNearest(b_, PointAt(a_, a.middle()), b.middle())};
    if (!leaves && !Close(at)) return false;
    for (int round = 0; round < kApproachRounds; ++round) {
      at.a = RefineNearest(a_, PointAt(b_, at.b), at.a);
      at.b = RefineNearest(b_, PointAt(a_, at.a), at.b);
    }
    return Near(at, a, b) && RecordTouch(at);
  }

  // The ends of the pieces that lie in the parts.
  bool FindEndContacts(const BezierPiece& a, const BezierPiece& b) {
    bool found = false;
    for (const double end : {0.0, 1.0}) {
      if (Holds(a, end) && Contains(b.box, End(a_, end), tol_))
        found = RecordTouch({end, RefineNearest(b_, End(a_, end), b.middle())}) || found;
      if (Holds(b, end) && Contains(a.box, End(b_, end), tol_))
        found = RecordTouch({RefineNearest(a_, End(b_, end), a.middle()), end}) || found;
    }
    return found;
  }

  bool RecordTouch(const Pair& at) {
    if (!Close(at)) return false;
    Record(at, true, PointAt(a_, at.a));
    CheckOverlap();
    return true;
  }

  // Newton's method for the point where the tangents are parallel and the gap is normal to them:
  // where curves touch, or come closest, or are furthest apart between two crossings.
  // A' x B' = 0 and (B - A) . A' = 0.
  bool SolveContact(Pair& at, const BezierPiece& a, const BezierPiece& b) const {
    for (int step = 0; step < kContactSteps; ++step) {
      const Jet jet_a = JetAt(a_, at.a), jet_b = JetAt(b_, at.b);
      const Vec2 gap = jet_b.p - jet_a.p;
      const double f = Cross(jet_a.d1, jet_b.d1), g = Dot(gap, jet_a.d1);
      const double f_a = Cross(jet_a.d2, jet_b.d1), f_b = Cross(jet_a.d1, jet_b.d2);
      const double g_a = Dot(gap, jet_a.d2) - Dot(jet_a.d1, jet_a.d1);
      const double g_b = Dot(jet_b.d1, jet_a.d1);
      const double det = f_a * g_b - f_b * g_a;
      const Pair move{(f_b * g - f * g_b) / det, (f * g_a - f_a * g) / det};
      at = {at.a + move.a, at.b + move.b};
      if (!Near(at, a, b)) return false;
      if (std::max(std::fabs(move.a), std::fabs(move.b)) <= kInsideMargin) return true;
    }
    return false;
  }

  // Two crossings are one when Newton's method gave the same root, a touch or shared ends and
  // another one where the points agree.
  bool SamePlace(const Crossing& known, const Pair& at, bool touch) const {
    const double apart_a = std::fabs(known.first - at.a), apart_b = std::fabs(known.second - at.b);
    if (tol_ >= apart_a && tol_ >= apart_b) return true;
    if (!known.touch && !touch && !(IsEnd(known.first) && IsEnd(known.second))) return false;
    return SamePointOf(a_, known.first, at.a) && SamePointOf(b_, known.second, at.b);
  }

  static bool IsEnd(double t) { return t == 0.0 || t == 1.0; }

  bool SamePointOf(const BezierPiece& piece, double s, double t) const {
    if (!(kOnePointReach >= std::fabs(s - t))) return false;
    const Vec2 p = PointAt(piece, s), q = PointAt(piece, t);
    return tol_ >= Length(p - q) &&
           StaysAtPoint([&](double at) { return PointAt(piece, at); }, s, t, p, q, tol_);
  }

  // Roots at an end of a piece become exactly that end.
  static double Snapped(double t) {
    return kInsideMargin >= t ? 0.0 : (kInsideMargin >= 1.0 - t ? 1.0 : t);
  }

  // From a root next to an end to the end itself, but where that parts the points: on a large piece
  // the way may be long. False for a root beyond an end where no common point is near.
  bool MoveToEnds(Pair& at, const Pair& snapped) const {
    if (Close(snapped)) {
      at = snapped;
      return true;
    }
    const Pair kept{std::clamp(at.a, 0.0, 1.0), std::clamp(at.b, 0.0, 1.0)};
    const bool beyond_a = kept.a != at.a, beyond_b = kept.b != at.b;
    at = kept;
    if (Close(at)) return true;
    if (beyond_a == beyond_b) return false;
    if (beyond_a)
      at.b = RefineNearest(b_, PointAt(a_, at.a), at.b);
    else
      at.a = RefineNearest(a_, PointAt(b_, at.b), at.a);
    return Close(at);
  }

  // `place` is the point of the first piece.
  void Record(Pair at, bool touch, Vec2 place) {
    const Pair snapped{Snapped(at.a), Snapped(at.b)};
    if (snapped.a != at.a || snapped.b != at.b) {
      if (!MoveToEnds(at, snapped)) return;
      place = PointAt(a_, at.a);
    }
    const auto known =
        std::find_if(found_.begin() + static_cast<std::ptrdiff_t>(first_found_), found_.end(),
                     [&](const Crossing& c) { return SamePlace(c, at, touch); });
    if (known == found_.end())
      found_.push_back({at.a, at.b, touch, place});
    else if (known->touch && !touch)
      *known = {at.a, at.b, false, place};
  }

  const BezierPiece& a_;
  const BezierPiece& b_;
  const double tol_;
  WorkBudget& work_;
  const int64_t pair_cost_;
  Crossings& found_;
  const std::size_t first_found_;
  double rounding_ = 0.0;
  int pairs_ = 0;
  bool overlap_checked_ = false;
  bool overlap_ = false;

  std::array<WeightedPoint, 2 * (kMaxHalvings + 2) * 4> stack_arena_;  // enough for cubics
  std::vector<WeightedPoint> heap_arena_;
  WeightedPoint* arena_ = nullptr;
};

}  // namespace

Common FindPieceCrossings(const BezierPiece& a, const BezierPiece& b, double tol, WorkBudget& work,
                          Crossings& found) {
  return PieceSearch(a, b, tol, work, found).Run();
}

}  // namespace kurvo
