// Which touches are contacts of their own.
//
// Curves that touch stay within the tolerance along a run, of a length like the root of tolerance
// by difference of curvature, and every pair of parts along it that is looked at may report a
// touch. Touches of one run are found by walking from each to its neighbours along the first curve:
// if the second curve is close all the way, both are on it. Runs are the trees of a union-find
// forest (Tarjan, Journal of the ACM 22, 1975); of each the closest touch is kept.
#include "relate/intersect/merge_contacts.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace kurvo {
namespace {

constexpr int kLooksBetween = 8;  // of the way between two points; the middle is looked at first
constexpr int kLooksAround = 16;  // at neighbours along the first curve, each way
constexpr double kAside = 0.4;    // of the way: parameters need not run alike

// The last piece that begins at or before t, else the first.
const BezierPiece& PieceAt(const FreeFormPieces& pieces, double t) {
  const auto* after =
      std::upper_bound(pieces.begin(), pieces.end(), t,
                       [](double value, const BezierPiece& piece) { return value < piece.start; });
  return after == pieces.begin() ? *after : *(after - 1);
}

double ToPiece(const BezierPiece& piece, double t) {
  return std::clamp((t - piece.start) / piece.width, 0.0, 1.0);
}

Vec2 PointAt(const FreeFormPieces& pieces, double t) {
  const BezierPiece& piece = PieceAt(pieces, t);
  return PointAt(piece, ToPiece(piece, t));
}

class Runs {
 public:
  Runs(const FreeFormPieces& a, const FreeFormPieces& b, double tol) : a_(a), b_(b), tol_(tol) {}

  double Gap(const Crossing& at) const {
    const double gap = Length(PointAt(b_, at.second) - PointAt(a_, at.first));
    return tol_ >= gap ? gap : tol_;  // a number also for NaN
  }

  // True when the curves stay together on the way from one common point to another.
  bool Join(const Crossing& from, const Crossing& to) const {
    for (int stride = kLooksBetween / 2; stride >= 1; stride /= 2)
      for (int i = stride; i < kLooksBetween; i += 2 * stride)
        if (!TogetherAt(from, to, static_cast<double>(i) / kLooksBetween)) return false;
    return true;
  }

 private:
  // Whether the second curve passes close to the point at this share of the way along the first, at
  // about this share of its own way.
  bool TogetherAt(const Crossing& from, const Crossing& to, double share) const {
    const Vec2 p = PointAt(a_, from.first + share * (to.first - from.first));
    const double way = to.second - from.second, t = from.second + share * way;
    const BezierPiece& piece = PieceAt(b_, t);
    const auto near = [&](const BezierPiece& on, double start) {
      const double found = RefineNearest(on, p, start);
      return kAside * std::fabs(way) >= std::fabs(on.ToCurve(found) - t) &&
             tol_ >= Length(PointAt(on, found) - p);
    };
    if (tol_ >= Length(PointAt(b_, t) - p) || near(piece, ToPiece(piece, t))) return true;
    return (&piece != b_.begin() && near(*(&piece - 1), 1.0)) ||  // across a joint
           (&piece + 1 != b_.end() && near(*(&piece + 1), 0.0));
  }

  const FreeFormPieces& a_;
  const FreeFormPieces& b_;
  const double tol_;
};

// Common points that lie on one run, as a forest: each points to another one of its run or to
// itself.
class RunForest {
 public:
  explicit RunForest(std::size_t count) : next_(count) {
    std::iota(next_.begin(), next_.end(), std::size_t{0});
  }

  std::size_t Root(std::size_t i) {
    while (next_[i] != i) i = next_[i] = next_[next_[i]];
    return i;
  }

  void Unite(std::size_t i, std::size_t j) { next_[Root(i)] = Root(j); }

 private:
  std::vector<std::size_t> next_;
};

// Unites each touch with the nearest common points before and after it, along the first curve, that
// can be reached on a run. Requires ascending order.
RunForest FindRuns(const Runs& runs, const Crossings& found) {
  RunForest forest(found.size());
  const auto count = static_cast<std::ptrdiff_t>(found.size());
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    const Crossing& touch = found[static_cast<std::size_t>(i)];
    if (!touch.touch) continue;
    for (const std::ptrdiff_t way : {-1, 1}) {
      std::ptrdiff_t j = i + way;
      for (int look = 0; look < kLooksAround && j >= 0 && j < count; ++look, j += way) {
        if (!runs.Join(touch, found[static_cast<std::size_t>(j)])) continue;
        forest.Unite(static_cast<std::size_t>(i), static_cast<std::size_t>(j));
        break;
      }
    }
  }
  return forest;
}

}  // namespace

void DropRepeatedTouches(const FreeFormPieces& a, const FreeFormPieces& b, double tol,
                         Crossings& found) {
  if (std::none_of(found.begin(), found.end(), [](const Crossing& at) { return at.touch; })) return;
  SortByFirst(found);
  const Runs runs(a, b, tol);
  RunForest forest = FindRuns(runs, found);

  // Of each run the smallest gap; a crossing has none.
  constexpr double kCrossing = -1.0;
  std::vector<double> smallest(found.size(), tol);
  std::vector<std::size_t> nearest(found.size(), found.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    const double gap = found[i].touch ? runs.Gap(found[i]) : kCrossing;
    const std::size_t root = forest.Root(i);
    if (nearest[root] < found.size() && !(gap < smallest[root])) continue;
    smallest[root] = gap;
    nearest[root] = i;
  }
  std::size_t kept = 0;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const Crossing at = found[i];
    if (!at.touch || nearest[forest.Root(i)] == i) found[kept++] = at;
  }
  found.shrink(kept);
}

}  // namespace kurvo
