#include "geometry/crossings.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>
#include <utility>

#include "geometry/box_sweep.h"

namespace kurvo::tools {
namespace {

// Parameters of one curve that are this close belong to one visit of a joint of another outline.
constexpr double kSameVisit = 0.01;

// Parts of the way from a common point to a joint, the joint included, where it is tested whether
// the curves stay together.
constexpr double kWayToJoint[] = {1, 0.5, 0.25, 0.75};

// Where on a drawing a common point lies: at a joint or inside a curve.
struct Place {
  int drawing;
  bool at_joint;
  std::size_t number;  // of the joint or the curve
  double parameter;    // 0 at a joint

  auto Key() const { return std::tuple(drawing, at_joint, number); }
};

struct Pair {
  std::size_t first;
  std::size_t second;
  Common common;
};

class Search {
 public:
  Search(Library& library, const CurveList& first, const CurveList& second, bool joints)
      : library_(library), first_(first), second_(second), joints_(joints) {}

  void Look(std::size_t i, std::size_t k) {
    Common common = CommonOf(library_, *first_.curves[i].curve, *second_.curves[k].curve);
    if (common.overlap || !common.points.empty()) pairs_.push_back({i, k, std::move(common)});
  }

  Crossings Take() {
    std::sort(pairs_.begin(), pairs_.end(), [](const Pair& a, const Pair& b) {
      return std::tie(a.first, a.second) < std::tie(b.first, b.second);
    });
    for (const Pair& pair : pairs_) TakeOverlaps(pair);
    for (const Pair& pair : pairs_) TakePoints(pair);
    return std::move(found_);
  }

 private:
  const ListedCurve& First(const Pair& pair) const { return first_.curves[pair.first]; }
  const ListedCurve& Second(const Pair& pair) const { return second_.curves[pair.second]; }

  void TakeOverlaps(const Pair& pair) {
    const OwnedCurve& curve = *First(pair).curve;
    for (const CommonStretch& stretch : pair.common.stretches) {
      found_.overlaps.push_back({pair.first, pair.second, true, stretch,
                                 PositionOf(library_, curve, stretch.from.first),
                                 PositionOf(library_, curve, stretch.to.first)});
      IsNew(pair, stretch.from);
      IsNew(pair, stretch.to);
    }
    if (pair.common.overlap && pair.common.stretches.empty()) {
      found_.overlaps.push_back({pair.first, pair.second, false, {}, {}, {}});
    }
  }

  void TakePoints(const Pair& pair) {
    std::vector<CommonPoint> points = pair.common.points;
    std::sort(points.begin(), points.end(),
              [](const CommonPoint& a, const CommonPoint& b) { return a.first < b.first; });
    for (const CommonPoint& at : points) {
      if (!IsNew(pair, at)) continue;
      found_.crossings.push_back(
          {pair.first, pair.second, at, PositionOf(library_, *First(pair).curve, at.first)});
    }
  }

  // Remembers a point. Result: whether it is to be listed, being neither a joint of one outline
  // nor a point that was met before, on the neighbours of these curves.
  bool IsNew(const Pair& pair, const CommonPoint& at) {
    const bool one_list = &first_ == &second_;
    Place a = PlaceOf(0, pair.first, First(pair), at.first, Second(pair));
    Place b = PlaceOf(one_list ? 0 : 1, pair.second, Second(pair), at.second, First(pair));
    if (b.Key() < a.Key()) std::swap(a, b);
    if (a.Key() == b.Key() && !joints_) return false;
    if (!a.at_joint && !b.at_joint) return true;  // no other pair of curves meets there
    auto& visits = visits_[{a.Key(), b.Key()}];
    const auto same = [&](const std::pair<double, double>& visit) {
      return kSameVisit >= std::fabs(visit.first - a.parameter) &&
             kSameVisit >= std::fabs(visit.second - b.parameter);
    };
    if (std::any_of(visits.begin(), visits.end(), same)) return false;
    visits.emplace_back(a.parameter, b.parameter);
    return true;
  }

  Place PlaceOf(int drawing, std::size_t number, const ListedCurve& listed, double t,
                const ListedCurve& other) const {
    const double end = t < 0.5 ? 0 : 1;
    if (RunTogether(*listed.curve, t, end, *other.curve)) {
      return {drawing, true, t < 0.5 ? listed.start_joint : listed.end_joint, 0};
    }
    return {drawing, false, number, t};
  }

  // Whether `curve` stays on the other one from t to its end. It does so at the end itself, and
  // where it leaves an end so slowly that the place of contact is a stretch: of a line that meets a
  // circle at a tangent, the common point is the foot of the centre, up to sqrt(2 r tolerance) away
  // from the ends of both.
  bool RunTogether(const OwnedCurve& curve, double t, double end, const OwnedCurve& other) const {
    const WiderTolerance wider(library_);
    return std::all_of(std::begin(kWayToJoint), std::end(kWayToJoint), [&](double part) {
      return ParameterOf(library_, other, PositionOf(library_, curve, t + part * (end - t)))
          .has_value();
    });
  }

  using PlaceKey = std::tuple<int, bool, std::size_t>;

  Library& library_;
  const CurveList& first_;
  const CurveList& second_;
  const bool joints_;
  std::vector<Pair> pairs_;
  // Parameters of the points met at the joints so far.
  std::map<std::pair<PlaceKey, PlaceKey>, std::vector<std::pair<double, double>>> visits_;
  Crossings found_;
};

// Boxes that are within the tolerance of one another meet.
std::vector<Bounds> GrownBoxes(Library& library, const CurveList& list) {
  std::vector<Bounds> boxes;
  for (const ListedCurve& curve : list.curves) {
    boxes.push_back(curve.box);
    boxes.back().Grow(library.Tolerance());
  }
  return boxes;
}

}  // namespace

Crossings FindCrossings(Library& library, const CurveList& first, const CurveList& second,
                        Progress& progress) {
  Search search(library, first, second, true);
  SweepBoxes(
      GrownBoxes(library, first), GrownBoxes(library, second),
      [&](std::size_t i, std::size_t k) { search.Look(i, k); }, [&] { progress.Step(); });
  return search.Take();
}

Crossings FindCrossings(Library& library, const CurveList& curves, bool joints,
                        Progress& progress) {
  Search search(library, curves, curves, joints);
  SweepBoxes(
      GrownBoxes(library, curves), [&](std::size_t i, std::size_t k) { search.Look(i, k); },
      [&] { progress.Step(); });
  return search.Take();
}

}  // namespace kurvo::tools
