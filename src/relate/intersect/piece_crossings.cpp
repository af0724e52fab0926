// The common points of two Bezier pieces, by subdivision with Newton's method at its leaves.
//
// A part of each piece is a control polygon, and pairs of parts are worked off depth first. A pair
// is dropped when boxes or fat lines keep the parts apart. Where no tangent of one part is parallel
// to one of the other they cross once at most, and Newton's method finds that crossing. Elsewhere
// they may touch: contacts are looked for where the tangents are parallel, at the ends of the
// pieces, and where the parts come closest. What is left is halved, the larger part first, down to
// leaves. Pieces that run together would be halved without end, so that a stretch in common is
// looked for when shared ends, a touch, or the number of pairs make it likely.
#include "relate/intersect/piece_crossings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "relate/intersect/alongside.h"
#include "relate/intersect/piece_overlap.h"
#include "relate/intersect/piece_pair.h"
#include "relate/piece_bounds.h"

namespace kurvo {
namespace {

constexpr int kOverlapPairs = 120;          // pairs of parts before an overlap is suspected
constexpr int kAlongsidePairs = 40;         // before pieces are taken to run alongside each other
constexpr int kMaxPairs = 20000;            // pairs of parts examined at most
constexpr double kLeafWidth = 1.0 / 65536;  // of a parameter: shorter parts are not divided
constexpr int kMaxHalvings = 40;            // of both parts together; above twice the leaf depth
constexpr int kContactHalvings = 12;        // of both parts together before contacts are looked for
constexpr int64_t kApproachCost = 24;       // in pairs of parts

// Newton's method and the halvings take time with the square of the degree.
int64_t CostOfPair(int32_t n, int32_t m) {
  // The sum of two squares of degrees that costs as much again.
  constexpr int64_t kCheapSquares = 32;
  return 1 + (int64_t{n} * n + int64_t{m} * m) / kCheapSquares;
}

class PieceSearch {
 public:
  PieceSearch(const BezierPiece& a, const BezierPiece& b, double tol, WorkBudget& work,
              Crossings& found)
      : pieces_{a, b, tol},
        tol_(tol),
        work_(work),
        pair_cost_(CostOfPair(a.degree, b.degree)),
        slot_(static_cast<std::size_t>(std::max(a.degree, b.degree)) + 1),
        found_(found),
        first_found_(found.size()) {
    const std::size_t needed = 2 * static_cast<std::size_t>(kMaxHalvings + 2) * slot_;
    if (needed > stack_arena_.size()) heap_arena_.resize(needed);
    arena_ = heap_arena_.empty() ? stack_arena_.data() : heap_arena_.data();
  }

  Common Run() {
    RecordSharedEnds();
    const BezierPiece part_a = WholeOf(pieces_.a), part_b = WholeOf(pieces_.b);
    rounding_ = std::min(tol_, kCoordinateRounding * Reach(part_a.box, part_b.box));
    Search(part_a, part_b, LookFor::kAnything, 0);
    if (overlap_) return Common::kStretch;
    return found_.size() > first_found_ ? Common::kPoints : Common::kNothing;
  }

 private:
  // Ends that coincide are common points with parameters of exactly 0 and 1.
  void RecordSharedEnds() {
    int shared = 0;
    for (const double end_a : {0.0, 1.0}) {
      for (const double end_b : {0.0, 1.0}) {
        const Vec2 p = EndOf(pieces_.a, end_a), gap = p - EndOf(pieces_.b, end_b);
        if (tol_ >= std::fabs(gap.x) && tol_ >= std::fabs(gap.y)) {
          Record({end_a, end_b}, false, p);
          ++shared;
        }
      }
    }
    if (shared >= 2) CheckOverlap();
  }

  void CheckOverlap() {
    if (overlap_checked_) return;
    overlap_checked_ = true;
    overlap_ = RunTogether(pieces_.a, pieces_.b, tol_);
  }

  static double Reach(const PlanarBox& a, const PlanarBox& b) {
    double reach = 0.0;
    for (const Vec2 p : {a.min, a.max, b.min, b.max})
      reach = std::max({reach, std::fabs(p.x), std::fabs(p.y)});
    return reach;
  }

  enum class LookFor {
    kAnything,   // crossings and contacts
    kMeeting,    // points where the parts meet but for rounding
    kCrossings,  // only these: the contact of this neighbourhood is known
  };

  void Search(const BezierPiece& a, const BezierPiece& b, LookFor what, int halvings) {
    const double slack = what == LookFor::kAnything ? tol_ : rounding_;
    if (overlap_ || !Meet(a.box, b.box, slack)) return;
    if (++pairs_ > kMaxPairs || work_.exhausted()) return;
    work_.Spend(pair_cost_);
    if (pairs_ > kOverlapPairs) CheckOverlap();
    if (overlap_ || StripApart(a, b, slack) || StripApart(b, a, slack)) return;
    if (pairs_ > kAlongsidePairs && SettledAlongside(a, b, slack)) return;

    if (ConesApart(ConeOf(a), ConeOf(b))) {
      if (FindCrossing(a, b)) return;
      // Without parallel tangents they come closest at an end of a piece, or where they meet.
      if (what == LookFor::kAnything)
        what = FindEndContacts(a, b) ? LookFor::kCrossings : LookFor::kMeeting;
    } else if (what == LookFor::kAnything && halvings >= kContactHalvings && FindContacts(a, b)) {
      what = LookFor::kCrossings;
    }
    const bool leaf_a = a.width <= kLeafWidth;
    const bool leaf_b = b.width <= kLeafWidth;
    if ((leaf_a && leaf_b) || halvings >= kMaxHalvings) {
      if (what == LookFor::kMeeting) FindNearMiddle(a, b, true);
      return;
    }
    const bool divide_a = leaf_b || (!leaf_a && a.extent() >= b.extent());
    const auto [left, right] = Halve(divide_a ? a : b, RoomFor(halvings), slot_);
    for (const BezierPiece* half : {&left, &right})
      divide_a ? Search(*half, b, what, halvings + 1) : Search(a, *half, what, halvings + 1);
  }

  bool SettledAlongside(const BezierPiece& a, const BezierPiece& b, double slack) {
    if (!alongside_) {
      alongside_.emplace(pieces_.a, pieces_.b, tol_);
      for (const double t : alongside_->ClosestPlaces()) FindNear(alongside_->PairAt(t));
      FindEndContacts(WholeOf(pieces_.a), WholeOf(pieces_.b));
    }
    return alongside_->Settles(a, b, slack);
  }

  // The crossing or the contact next to a place. From the point beside it: with equal parameters
  // the tangents of curves that differ by a shift are parallel, and Newton's method has no way to
  // go.
  void FindNear(ParameterPair place) {
    work_.Spend(kApproachCost * pair_cost_);
    place.s = RefineNearest(pieces_.a, PointAt(pieces_.b, place.t), place.s);
    const BezierPiece around_a = WindowAround(place.s), around_b = WindowAround(place.t);
    ParameterPair at = place;
    bool shallow = false;
    Vec2 p;
    if (pieces_.SolveCrossing(around_a, around_b, at, shallow, p) && OnPiece(at.s) && OnPiece(at.t))
      return Record(at, shallow, p);
    at = place;
    if (pieces_.SolveContact(around_a, around_b, at)) RecordTouch(OnPieces(at));
  }

  WeightedPoint* RoomFor(int halvings) {
    return arena_ + 2 * static_cast<std::size_t>(halvings) * slot_;
  }

  // Newton's method from where the chords cross. True when it ends in the one crossing that parts
  // without parallel tangents can have.
  bool FindCrossing(const BezierPiece& a, const BezierPiece& b) {
    const Vec2 start_a = Planar(a.points[0]), chord_a = Planar(a.points[a.degree]) - start_a;
    const Vec2 start_b = Planar(b.points[0]), chord_b = Planar(b.points[b.degree]) - start_b;
    const double det = Cross(chord_a, chord_b);
    const Vec2 between = start_b - start_a;
    const double share_a = std::clamp(Cross(between, chord_b) / det, 0.0, 1.0);
    const double share_b = std::clamp(Cross(between, chord_a) / det, 0.0, 1.0);
    ParameterPair at{a.ToCurve(share_a), b.ToCurve(share_b)};
    bool shallow = false;
    Vec2 place;
    if (!pieces_.SolveCrossing(a, b, at, shallow, place) || !OnPiece(at.s) || !OnPiece(at.t))
      return false;
    Record(at, shallow, place);
    return Holds(a, at.s) && Holds(b, at.t);
  }

  // True when the parts come within the tolerance, with a touch recorded: where their tangents are
  // parallel, at the ends of the pieces, else where it was seen.
  bool FindContacts(const BezierPiece& a, const BezierPiece& b) {
    bool found = FindEndContacts(a, b);
    ParameterPair at{a.middle(), b.middle()};
    if (pieces_.SolveContact(a, b, at) && Holds(a, at.s) && Holds(b, at.t))
      found = RecordTouch(OnPieces(at)) || found;
    return found || FindNearMiddle(a, b, false);
  }

  // Where the pieces come closest next to the middles of two parts; unless these are leaves, only
  // if they are close there already.
  bool FindNearMiddle(const BezierPiece& a, const BezierPiece& b, bool leaves) {
    work_.Spend(kApproachCost * pair_cost_);
    const Vec2 middle = PointAt(pieces_.a, a.middle());
    const ParameterPair start{a.middle(), RefineNearest(pieces_.b, middle, b.middle())};
    if (!leaves && !pieces_.Close(start)) return false;
    const ParameterPair at = pieces_.Approach(start);
    return Near(at, a, b) && RecordTouch(at);
  }

  // The ends of the pieces that lie in the parts.
  bool FindEndContacts(const BezierPiece& a, const BezierPiece& b) {
    bool found = false;
    for (const double end : {0.0, 1.0}) {
      const Vec2 end_a = EndOf(pieces_.a, end), end_b = EndOf(pieces_.b, end);
      if (Holds(a, end) && Contains(b.box, end_a, tol_))
        found = RecordTouch({end, RefineNearest(pieces_.b, end_a, b.middle())}) || found;
      if (Holds(b, end) && Contains(a.box, end_b, tol_))
        found = RecordTouch({RefineNearest(pieces_.a, end_b, a.middle()), end}) || found;
    }
    return found;
  }

  bool RecordTouch(const ParameterPair& seen) {
    if (!pieces_.Close(seen)) return false;
    const ParameterPair at = pieces_.GapAt(seen) > rounding_ ? pieces_.Closest(seen) : seen;
    Record(at, true, PointAt(pieces_.a, at.s));
    CheckOverlap();
    return true;
  }

  // `place` is the point of the first piece. A crossing takes the place of a touch that it is.
  void Record(ParameterPair at, bool touch, Vec2 place) {
    bool moved = false;
    if (!pieces_.MoveToEnds(at, moved)) return;
    if (moved) place = PointAt(pieces_.a, at.s);
    const auto known =
        std::find_if(found_.begin() + first_found_, found_.end(),
                     [&](const Crossing& c) { return pieces_.IsSame(c, at, touch); });
    if (known == found_.end())
      found_.push_back({at.s, at.t, touch, place});
    else if (known->touch && !touch)
      *known = {at.s, at.t, false, place};
  }

  const PiecePair pieces_;
  const double tol_;
  WorkBudget& work_;
  const int64_t pair_cost_;
  const std::size_t slot_;  // points of one part in the arena
  Crossings& found_;
  const std::size_t first_found_;
  double rounding_ = 0.0;  // closer points are the same but for rounding
  int pairs_ = 0;
  bool overlap_checked_ = false;
  bool overlap_ = false;
  std::optional<Alongside> alongside_;

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
