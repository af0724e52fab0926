// The distance between two curves.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

#include "foundation/guard.h"
#include "foundation/parallel_for.h"
#include "records/domain.h"
#include "relate/distance/elementary_distance.h"
#include "relate/distance/piece_distance.h"

namespace kurvo {
namespace {

// Coordinates whose fourth powers neither overflow nor vanish are used as they are.
constexpr double kLargestUnscaled = 0x1p240;
constexpr double kSmallestUnscaled = 0x1p-240;
constexpr int kMaxExponent = 1000;  // of the scale

// Of one call, in multiplications and additions of points.
constexpr int64_t kBaseWork = int64_t{1} << 24;  // some hundredths of a second
constexpr int64_t kWorkEach = int64_t{1} << 14;  // of the pieces
constexpr int64_t kMostWork = int64_t{1} << 27;  // some tenths of a second

// Pieces of so many points, at some 10 ns each, are worth another thread.
constexpr std::ptrdiff_t kManyPoints = 2000;

// What the steps of the search cost.
constexpr int64_t kNodeCost = 4;      // of one tree
constexpr int64_t kNodePairCost = 8;  // of both
constexpr int64_t kElementaryPairCost = 64;

int64_t WorkFor(std::size_t pieces) {
  return std::min(kMostWork, kBaseWork + kWorkEach * static_cast<int64_t>(pieces));
}

// The power of two that the coordinates are multiplied by.
double ScaleFor(double largest) {
  if (largest > kLargestUnscaled) return std::ldexp(kLargestUnscaled, -std::ilogb(largest));
  if (kSmallestUnscaled > largest && largest > 0.0)
    return std::ldexp(1.0, std::min(-std::ilogb(largest), kMaxExponent));
  return 1.0;
}

// Looks at pairs of pieces in the order of their distance, as far as the boxes around them tell.
class DistanceSearch {
 public:
  DistanceSearch(const DistancePieces& a, const DistancePieces& b, NearestPair& nearest)
      : a_(a),
        b_(b),
        nearest_(nearest),
        work_(WorkFor(a.size() + b.size())),
        pieces_(nearest, work_) {}

  void Run() {
    for (const End& end_a : EndsOf(a_))
      for (const End& end_b : EndsOf(b_))
        nearest_.Consider({end_a.t, end_b.t, Length(end_b.p - end_a.p)});
    // The ends with their nearest points on the other curve, which no search between pieces finds
    // where the curves run alongside each other. Between two pieces that are lines or arcs they
    // come up anyway.
    if (!IsOneElementary(a_) || !IsOneElementary(b_)) {
      for (const End& end : EndsOf(a_)) SearchEnd(end, b_, false);
      for (const End& end : EndsOf(b_)) SearchEnd(end, a_, true);
    }
    const Range whole_a = a_.Whole(), whole_b = b_.Whole();
    Visit(whole_a, whole_b, BoxDistance(a_.BoxOf(whole_a), b_.BoxOf(whole_b)));
  }

 private:
  using Range = DistancePieces::Range;

  static bool IsElementary(const DistancePiece& piece) {
    return piece.kind != PieceKind::kFreeForm;
  }

  static bool IsOneElementary(const DistancePieces& pieces) {
    return pieces.size() == 1 && IsElementary(pieces[0]);
  }

  struct End {
    Vec2 p;
    double t;
  };
  static std::array<End, 2> EndsOf(const DistancePieces& pieces) {
    const DistancePiece &first = pieces[0], &last = pieces[pieces.size() - 1];
    return {End{Planar(first.bezier.points[0]), first.ToCurve(0.0)},
            End{Planar(last.bezier.points[last.bezier.degree]), last.ToCurve(1.0)}};
  }

  // The end as a line without length.
  void SearchEnd(const End& end, const DistancePieces& other, bool swapped) {
    const WeightedPoint points[] = {{end.p.x, end.p.y, 1.0}, {end.p.x, end.p.y, 1.0}};
    const BezierPiece line{points, 1, false, end.t, 0.0, BoxAround(points, 1)};
    const DistancePiece point{PieceKind::kLine, line, {}};
    VisitFrom(point, other, other.Whole(), swapped);
  }

  void VisitFrom(const DistancePiece& point, const DistancePieces& other, const Range& range,
                 bool swapped) {
    work_.Spend(kNodeCost);
    const double bound = BoxDistance(point.bezier.box, other.BoxOf(range));
    const double ta = swapped ? StartOf(other, range) : point.bezier.start;
    if (work_.exhausted() || !Promising(bound, ta)) return;
    if (range.single()) {
      swapped ? SearchPair(other[range.begin], point) : SearchPair(point, other[range.begin]);
      return;
    }
    const Range first = range.First(), second = range.Second();
    const bool second_nearer = BoxDistance(point.bezier.box, other.BoxOf(second)) <
                               BoxDistance(point.bezier.box, other.BoxOf(first));
    VisitFrom(point, other, second_nearer ? second : first, swapped);
    VisitFrom(point, other, second_nearer ? first : second, swapped);
  }

  bool Promising(double bound, double ta) const {
    return nearest_.CanImprove(bound) || nearest_.CanTie(bound, ta);
  }

  static double StartOf(const DistancePieces& pieces, const Range& range) {
    return pieces[range.begin].bezier.start;
  }

  void Visit(const Range& a, const Range& b, double bound) {
    work_.Spend(kNodePairCost);
    if (work_.exhausted() || !Promising(bound, StartOf(a_, a))) return;
    if (a.single() && b.single()) return SearchPair(a_[a.begin], b_[b.begin]);
    const PlanarBox &box_a = a_.BoxOf(a), &box_b = b_.BoxOf(b);
    if (b.single() || (!a.single() && Extent(box_a) >= Extent(box_b))) {
      const Range halves[] = {a.First(), a.Second()};
      const double bounds[] = {BoxDistance(a_.BoxOf(halves[0]), box_b),
                               BoxDistance(a_.BoxOf(halves[1]), box_b)};
      const std::size_t nearer = bounds[1] < bounds[0] ? 1 : 0;
      Visit(halves[nearer], b, bounds[nearer]);
      Visit(halves[1 - nearer], b, bounds[1 - nearer]);
    } else {
      const Range halves[] = {b.First(), b.Second()};
      const double bounds[] = {BoxDistance(box_a, b_.BoxOf(halves[0])),
                               BoxDistance(box_a, b_.BoxOf(halves[1]))};
      const std::size_t nearer = bounds[1] < bounds[0] ? 1 : 0;
      Visit(a, halves[nearer], bounds[nearer]);
      Visit(a, halves[1 - nearer], bounds[1 - nearer]);
    }
  }

  static double Extent(const PlanarBox& box) {
    return std::max(box.max.x - box.min.x, box.max.y - box.min.y);
  }

  void SearchPair(const DistancePiece& a, const DistancePiece& b) {
    if (!IsElementary(a) || !IsElementary(b)) return pieces_.Search(a, b);
    ForEachElementaryPair(a, b, [&](const OnPiece& on_a, const OnPiece& on_b) {
      nearest_.Consider({a.ToCurve(on_a.u), b.ToCurve(on_b.u), Length(on_b.p - on_a.p)});
    });
    work_.Spend(kElementaryPairCost);
  }

  const DistancePieces& a_;
  const DistancePieces& b_;
  NearestPair& nearest_;
  WorkBudget work_;
  PieceDistance pieces_;
};

// Not found when a curve has no points or an error was recorded.
struct CurveDistance {
  bool found = false;
  NearPair at{0.0, 0.0, 0.0};
};

// About how many points the pieces of the curve have: what their making costs.
std::ptrdiff_t PointsIn(const Curve& curve) {
  std::ptrdiff_t points = 0;
  const auto add = Overloaded{
      [&](const Curve&, const auto&) { points += 2; },
      [&]<std::size_t kDim>(const Curve&, const BezierView<kDim>& view) { points += view.degree; },
      [&]<std::size_t kDim>(const Curve&, const SplineView<kDim>& view) {
        points += std::ptrdiff_t{view.count} * view.order;
      }};
  AllLeaves(curve, [&](const Curve& leaf, const auto& view) { return add(leaf, view), true; });
  return points;
}

CurveDistance DistanceBetween(const Curve& a, const Curve& b, GlobalVar& g) {
  const Curve* const curves[] = {&a, &b};
  std::optional<DistancePieces> pieces[2];
  // A thread a curve. The search between them goes from one pair to the next.
  const std::ptrdiff_t least = std::min(PointsIn(a), PointsIn(b)) >= kManyPoints ? 2 : 3;
  const auto for_both = [least](const auto& prepare) {
    ParallelFor(2, least, [&prepare](std::ptrdiff_t begin, std::ptrdiff_t end) {
      for (std::ptrdiff_t i = begin; i < end; ++i) prepare(i);
    });
  };
  for_both([&](std::ptrdiff_t i) { pieces[i].emplace(*curves[i], g.epsilon); });
  if (pieces[0]->refused() || pieces[1]->refused())
    return Fail(g, KURVO_ERR_CURVE), CurveDistance{};
  if (pieces[0]->size() == 0 || pieces[1]->size() == 0) return {};
  const double largest = std::max(pieces[0]->LargestCoordinate(), pieces[1]->LargestCoordinate());
  const double scale = ScaleFor(largest);
  for_both([&](std::ptrdiff_t i) {
    if (scale != 1.0) pieces[i]->Scale(scale);
    pieces[i]->BuildTree();
  });
  NearestPair nearest(scale * g.epsilon, scale * largest, DomainOf(a).width(), DomainOf(b).width());
  DistanceSearch(*pieces[0], *pieces[1], nearest).Run();
  if (!nearest.found()) return {};
  return {true, {nearest.best().ta, nearest.best().tb, nearest.distance() / scale}};
}

}  // namespace
}  // namespace kurvo

extern "C" double KurvocvDistCurve(const Curve* a, const Curve* b, double* ta, double* tb,
                                   GlobalVar* g) noexcept {
  if (kurvo::ErrorPending(*g) || !a || !b || !a->data || !b->data) return 0.0;
  const auto nearest =
      kurvo::Guard(*g, kurvo::CurveDistance{}, [&] { return kurvo::DistanceBetween(*a, *b, *g); });
  if (!nearest.found) return 0.0;
  if (ta) *ta = nearest.at.ta;
  if (tb) *tb = nearest.at.tb;
  return nearest.at.dist;
}
