#include "geometry/crossings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include "geometry/box_sweep.h"
#include "geometry/curve_ask.h"

namespace kurvo::tools {
namespace {

// Parameters of one curve that are this close belong to one visit of a joint of another outline.
constexpr double kSameVisit = 0.01;

// Parts of the way from a common point to a joint, the joint included, where it is tested whether
// the curves stay together.
constexpr double kWayToJoint[] = {1, 0.5, 0.25, 0.75};

// What two curves have in common.
struct Common {
  bool overlap = false;
  std::vector<CommonPoint> points;
  // Of curves that overlap; empty when neither ends where they run together, so that no end of a
  // stretch is known.
  std::vector<CommonStretch> stretches;
};

// The length tolerance for points that are compared after both were computed: a point that lies on
// two curves may be off each of them by the library's tolerance. While it lives.
EpsilonScope TwiceTheTolerance(Context& context) { return {context, 2 * context.Epsilon()}; }

double Within(double t) { return std::clamp(t, 0.0, 1.0); }

double Between(double from, double to, double part) { return from + part * (to - from); }

// Finds where two curves that overlap begin and cease to do so. Lines, arcs and Bezier curves on
// one carrier run together until one of them ends, so each end of a stretch is an end of one curve
// on the other. Two kinds of stretch have other ends and are not found: a straight Bezier curve
// that turns back before it ends, and curves that only come so close that the tolerance joins them.
class StretchFinder {
 public:
  StretchFinder(Context& context, const Curve& first, const Curve& second)
      : context_(context), first_(first), second_(second) {}

  void Run(Common& common) const {
    const std::vector<CommonPoint> ends = CommonEnds();
    bool after_stretch = false;
    for (std::size_t i = 0; i < ends.size(); ++i) {
      std::optional<CommonStretch> stretch;
      if (i + 1 < ends.size()) stretch = StretchBetween(ends[i], ends[i + 1]);
      if (stretch) {
        common.stretches.push_back(*stretch);
      } else if (!after_stretch) {
        common.points.push_back(ends[i]);
      }
      after_stretch = stretch.has_value();
    }
  }

 private:
  // Ascending along the first curve.
  std::vector<CommonPoint> CommonEnds() const {
    std::vector<CommonPoint> ends;
    for (const double t : {0.0, 1.0}) {
      const auto on_second = ParameterOf(context_, second_, PositionOf(context_, first_, t));
      if (on_second) ends.push_back({t, Within(*on_second)});
      const auto on_first = ParameterOf(context_, first_, PositionOf(context_, second_, t));
      if (on_first) ends.push_back({Within(*on_first), t});
    }
    std::sort(ends.begin(), ends.end(),
              [](const CommonPoint& a, const CommonPoint& b) { return a.first < b.first; });
    // Ends of both curves at one point.
    const auto same = [&](const CommonPoint& a, const CommonPoint& b) {
      return Same(PositionOf(context_, first_, a.first), PositionOf(context_, first_, b.first),
                  context_) &&
             b.first - a.first < 0.5;  // not the two ends of a curve that closes
    };
    ends.erase(std::unique(ends.begin(), ends.end(), same), ends.end());
    return ends;
  }

  std::optional<CommonStretch> StretchBetween(const CommonPoint& from,
                                              const CommonPoint& to) const {
    std::array<double, 3> second{};
    for (std::size_t i = 0; i < second.size(); ++i) {
      const double t = Between(from.first, to.first, static_cast<double>(i + 1) / 4);
      const auto on_second = ParameterOf(context_, second_, PositionOf(context_, first_, t));
      if (!on_second) return std::nullopt;
      second[i] = *on_second;
    }
    // The start and the end of a curve that closes are one point with two parameters: the right
    // one lies before or after the points inside.
    const bool forward = second.front() < second.back();
    const auto past = [](double t, double limit, bool above) {
      return above ? (t > limit ? t : 1.0) : (t < limit ? t : 0.0);
    };
    return CommonStretch{{from.first, past(from.second, second.front(), !forward)},
                         {to.first, past(to.second, second.back(), forward)}};
  }

  Context& context_;
  const Curve& first_;
  const Curve& second_;
};

Common CommonOf(Context& context, const Curve& first, const Curve& second) {
  const Meetings meetings = first.Intersect(second, context).value();
  Common common;
  for (std::size_t i = 0; i < meetings.a.size(); ++i) {
    common.points.push_back({Within(meetings.a[i]), Within(meetings.b[i])});
  }
  if (meetings.overlap) {
    common.overlap = true;
    const EpsilonScope wider = TwiceTheTolerance(context);
    StretchFinder(context, first, second).Run(common);
  }
  return common;
}

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
  Search(Context& context, const CurveList& first, const CurveList& second, bool joints)
      : context_(context), first_(first), second_(second), joints_(joints) {}

  void Look(std::size_t i, std::size_t k) {
    Common common = CommonOf(context_, *first_.curves[i].curve, *second_.curves[k].curve);
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
    const Curve& curve = *First(pair).curve;
    for (const CommonStretch& stretch : pair.common.stretches) {
      found_.overlaps.push_back({pair.first, pair.second, true, stretch,
                                 PositionOf(context_, curve, stretch.from.first),
                                 PositionOf(context_, curve, stretch.to.first)});
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
          {pair.first, pair.second, at, PositionOf(context_, *First(pair).curve, at.first)});
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
  bool RunTogether(const Curve& curve, double t, double end, const Curve& other) const {
    const EpsilonScope wider = TwiceTheTolerance(context_);
    return std::all_of(std::begin(kWayToJoint), std::end(kWayToJoint), [&](double part) {
      return ParameterOf(context_, other, PositionOf(context_, curve, t + part * (end - t)))
          .has_value();
    });
  }

  using PlaceKey = std::tuple<int, bool, std::size_t>;

  Context& context_;
  const CurveList& first_;
  const CurveList& second_;
  const bool joints_;
  std::vector<Pair> pairs_;
  // Parameters of the points met at the joints so far.
  std::map<std::pair<PlaceKey, PlaceKey>, std::vector<std::pair<double, double>>> visits_;
  Crossings found_;
};

// Boxes that are within the tolerance of one another meet.
std::vector<Bounds> GrownBoxes(Context& context, const CurveList& list) {
  std::vector<Bounds> boxes;
  for (const ListedCurve& curve : list.curves) {
    boxes.push_back(curve.box);
    boxes.back().Grow(context.Epsilon());
  }
  return boxes;
}

}  // namespace

Crossings FindCrossings(Context& context, const CurveList& first, const CurveList& second,
                        const CurveDone& done) {
  Search search(context, first, second, true);
  SweepBoxes(
      GrownBoxes(context, first), GrownBoxes(context, second),
      [&](std::size_t i, std::size_t k) { search.Look(i, k); }, [&] { done(); });
  return search.Take();
}

Crossings FindCrossings(Context& context, const CurveList& curves, bool joints,
                        const CurveDone& done) {
  Search search(context, curves, curves, joints);
  SweepBoxes(
      GrownBoxes(context, curves), [&](std::size_t i, std::size_t k) { search.Look(i, k); },
      [&] { done(); });
  return search.Take();
}

}  // namespace kurvo::tools
