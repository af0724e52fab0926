// Common points of two free-form curves: a sweep over the boxes of their Bezier pieces, then the
// pieces.
#include <algorithm>
#include <vector>

#include "relate/intersect/free_form_pieces.h"
#include "relate/intersect/merge_contacts.h"
#include "relate/intersect/pair_crossings.h"
#include "relate/intersect/piece_crossings.h"

namespace kurvo {
namespace {

// Pairs of parts, of low degree, that are examined for all pairs of pieces together. Two cubics
// that cross once take about ten, that touch about a hundred; what needs many times more is
// rounding noise throughout.
constexpr int64_t kBasePairs = 200000;
constexpr int64_t kPairsEach = 64;

// The pieces of one curve in the order of the left sides of their boxes.
std::vector<const BezierPiece*> ByLeftSide(const FreeFormPieces& pieces) {
  std::vector<const BezierPiece*> order;
  order.reserve(pieces.size());
  for (const BezierPiece& piece : pieces) order.push_back(&piece);
  std::stable_sort(order.begin(), order.end(), [](const BezierPiece* a, const BezierPiece* b) {
    return a->box.min.x < b->box.min.x;
  });
  return order;
}

struct PiecePair {
  const BezierPiece* a;
  const BezierPiece* b;
};

// Pairs of pieces whose boxes come within `tol`: a line sweeps over both curves from left to right,
// and each piece is compared with those of the other curve that the line still touches.
class BoxSweep {
 public:
  BoxSweep(const FreeFormPieces& a, const FreeFormPieces& b, double tol)
      : a_(ByLeftSide(a)), b_(ByLeftSide(b)), tol_(tol) {}

  std::vector<PiecePair> Pairs() {
    std::size_t i = 0, j = 0;
    while (i < a_.size() || j < b_.size()) {
      const bool next_is_a =
          j == b_.size() || (i < a_.size() && a_[i]->box.min.x <= b_[j]->box.min.x);
      if (next_is_a)
        Enter(*a_[i++], active_a_, active_b_, true);
      else
        Enter(*b_[j++], active_b_, active_a_, false);
    }
    // In the order of the pieces, so that results do not depend on how the boxes lie.
    std::sort(pairs_.begin(), pairs_.end(), [](const PiecePair& x, const PiecePair& y) {
      return x.a != y.a ? x.a < y.a : x.b < y.b;
    });
    return std::move(pairs_);
  }

 private:
  using Active = std::vector<const BezierPiece*>;

  void Enter(const BezierPiece& piece, Active& own, Active& others, bool is_a) {
    std::size_t kept = 0;
    for (const BezierPiece* other : others) {
      if (!(other->box.max.x >= piece.box.min.x - tol_)) continue;  // the line has left it behind
      others[kept++] = other;
      if (!Meet(piece.box, other->box, tol_)) continue;
      pairs_.push_back(is_a ? PiecePair{&piece, other} : PiecePair{other, &piece});
    }
    others.resize(kept);
    own.push_back(&piece);
  }

  const std::vector<const BezierPiece*> a_;
  const std::vector<const BezierPiece*> b_;
  const double tol_;
  Active active_a_;
  Active active_b_;
  std::vector<PiecePair> pairs_;
};

}  // namespace

Common CrossFreeForms(const Curve& a, const Curve& b, GlobalVar& g, Crossings& found) {
  const FreeFormPieces pieces_a(a, CompositePieces::kAll, kMaxPieceDegree, g);
  const FreeFormPieces pieces_b(b, CompositePieces::kAll, kMaxPieceDegree, g);
  Crossings local;
  const auto pairs = BoxSweep(pieces_a, pieces_b, g.epsilon).Pairs();
  WorkBudget work(kBasePairs + kPairsEach * std::ssize(pairs));
  for (const PiecePair& pair : pairs) {
    local.clear();
    const Common common = FindPieceCrossings(*pair.a, *pair.b, g.epsilon, work, local);
    if (common == Common::kStretch) return common;
    for (const Crossing& at : local)
      found.push_back({pair.a->ToCurve(at.first), pair.b->ToCurve(at.second), at.touch, at.place});
  }
  DropRepeatedTouches(pieces_a, pieces_b, g.epsilon, found);
  return found.empty() ? Common::kNothing : Common::kPoints;
}

}  // namespace kurvo
