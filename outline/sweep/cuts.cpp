#include "sweep/cuts.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace kurvo::outline {
namespace {

// Of tol:
constexpr double kShort = 8;   // curves no larger may join in one corner
constexpr double kMargin = 2;  // what is so near a level strand may touch it
constexpr double kApart = 2;   // corners that are no farther from each other may be one
constexpr double kClear = 4;   // what ends beyond that, below or above, goes past a level strand
constexpr double kBack = 128;  // how far what leaves a level strand may run back beside it

// In the frame: heights of nearly level strands that are no farther apart are not told in order.
constexpr double kLeastStep = 0x1p-42;

// Sides between which a strand lies.
struct Sides {
  double least, most;
};

class Finder {
 public:
  Finder(const Scene& scene, const Array<Strand>& strands, Array<Cut>& cuts)
      : scene_(scene), strands_(strands), cuts_(cuts), tol_(scene.tol) {}

  bool Run(const Events& events) {
    cuts_.clear();
    if (!events.AreClear() || scene_.gaps > 0 || !AreLong()) return false;
    cuts_.reserve(2 * events.crossings.size());
    for (const Crossing& crossing : events.crossings)
      if (crossing.sense != 0)
        Add(crossing.a, crossing.b, crossing.height, crossing.height, crossing.sense,
            {crossing.side, crossing.height});
    if (!AddLevels(events.beside_level)) return false;
    PutInOrder();
    return AreApart();
  }

 private:
  const Strand& strand(int32_t i) const { return strands_[static_cast<std::size_t>(i)]; }

  bool AreLong() const {
    return std::none_of(scene_.sources.begin(), scene_.sources.end(), [this](const Source& s) {
      const auto is_short = [this](const Bounds& box) { return kShort * tol_ >= box.LongerSide(); };
      Bounds ends;
      ends.Add(s.span.Start());
      ends.Add(s.span.End());
      return s.IsBridge() || (is_short(ends) && is_short(HullOf(s.span)));
    });
  }

  // At these heights, or sides of level strands; `sense`: 1 where b goes to the right of a as both
  // go up.
  void Add(int32_t a, int32_t b, double at_a, double at_b, int32_t sense, Vec2 point) {
    const int32_t turn = sense * strand(a).direction * strand(b).direction;
    cuts_.push_back({a, 0, turn, Course(strand(a)).sign * at_a, point});
    cuts_.push_back({b, 0, -turn, Course(strand(b)).sign * at_b, point});
  }

  bool AddLevels(const Array<LevelPair>& pairs) {
    return std::all_of(pairs.begin(), pairs.end(), [this](const LevelPair& pair) {
      return LeavesFor(strand(pair.other), strand(pair.level)) || AddLevel(pair.level, pair.other);
    });
  }

  // Whether a strand goes on from the end of a level one and not back along it. It never comes back
  // to that height.
  bool LeavesFor(const Strand& s, const Strand& flat) const {
    const bool at_low = s.low == flat.low || s.low == flat.high;
    const bool at_high = s.high == flat.low || s.high == flat.high;
    if (at_low == at_high) return false;
    const Sides sides = s.is_flat ? Sides{s.least_x, s.most_x} : SidesBeside(s, flat.y_low);
    const int32_t shared = at_low ? s.low : s.high;
    const double end = shared == flat.low ? flat.x_low : flat.x_high;
    const double to = shared == flat.low ? flat.x_high : flat.x_low;
    const double back = to > end ? sides.most - end : end - sides.least;
    return kBack * tol_ >= back;
  }

  // Adds the crossing of a level strand and one that goes past its height. True as well where it
  // passes beside the level one.
  bool AddLevel(int32_t number, int32_t other) {
    const Strand &flat = strand(number), &s = strand(other);
    if (s.is_flat) return false;
    const double height = flat.y_low, margin = kMargin * tol_, clear = kClear * tol_;
    const Sides sides = SidesBeside(s, height);
    if (sides.most < flat.least_x - margin || sides.least > flat.most_x + margin) return true;
    const bool goes_past = s.y_low < height - clear && s.y_high > height + clear;
    if (!goes_past || sides.least < flat.least_x + clear || sides.most > flat.most_x - clear)
      return false;
    const double side = s.At(height);
    // What runs to the right and is crossed from below has the other go to its left.
    const int32_t sense = flat.x_high > flat.x_low ? -1 : 1;
    Add(number, other, side, height, sense, {side, height});
    return true;
  }

  // Where a strand is at heights about this one.
  Sides SidesBeside(const Strand& s, double height) const {
    const double low = std::max(height - kMargin * tol_, s.y_low);
    const double high = std::min(height + kMargin * tol_, s.y_high);
    const Stretch part = s.Between(low, high, s.LevelAt(low), s.LevelAt(high));
    return {std::min(part.at_low, part.at_high) + part.least,
            std::max(part.at_low, part.at_high) + part.most};
  }

  // Strands stand in the order of their sources. Cuts come in pairs.
  void PutInOrder() {
    Array<int32_t> order, place;
    order.reserve(cuts_.size());
    for (std::size_t i = 0; i < cuts_.size(); ++i) order.push_back(static_cast<int32_t>(i));
    const auto cut = [this](int32_t i) -> const Cut& { return cuts_[static_cast<std::size_t>(i)]; };
    std::sort(order.begin(), order.end(), [&](int32_t i, int32_t k) {
      return std::tuple(cut(i).strand, cut(i).at, i) < std::tuple(cut(k).strand, cut(k).at, k);
    });
    place.resize(order.size());
    for (std::size_t i = 0; i < order.size(); ++i)
      place[static_cast<std::size_t>(order[i])] = static_cast<int32_t>(i);
    Array<Cut> ordered;
    ordered.reserve(cuts_.size());
    for (const int32_t i : order) {
      ordered.push_back(cut(i));
      ordered.back().other = place[static_cast<std::size_t>(i ^ 1)];
    }
    cuts_.swap(ordered);
  }

  bool AreApart() const {
    for (std::size_t i = 0; i < cuts_.size(); ++i) {
      const Cut& cut = cuts_[i];
      const Strand& s = strand(cut.strand);
      const bool follows = i > 0 && cuts_[i - 1].strand == cut.strand;
      const Vec2 before = follows ? cuts_[i - 1].point : StartOf(s);
      const Course course(s);
      const double step = cut.at - (follows ? cuts_[i - 1].at : course.start);
      if (!(step >= kLeastStep && course.end - cut.at >= kLeastStep)) return false;
      if (!AreApart(before, cut.point) || !AreApart(cut.point, EndOf(s))) return false;
    }
    return true;
  }

  bool AreApart(Vec2 a, Vec2 b) const {
    return std::max(std::fabs(a.x - b.x), std::fabs(a.y - b.y)) >= kApart * tol_;
  }
  static Vec2 StartOf(const Strand& s) {
    return s.direction > 0 ? Vec2{s.x_low, s.y_low} : Vec2{s.x_high, s.y_high};
  }
  static Vec2 EndOf(const Strand& s) {
    return s.direction > 0 ? Vec2{s.x_high, s.y_high} : Vec2{s.x_low, s.y_low};
  }

  const Scene& scene_;
  const Array<Strand>& strands_;
  Array<Cut>& cuts_;
  const double tol_;
};

}  // namespace

bool FindCuts(const Scene& scene, const Array<Strand>& strands, const Events& events,
              Array<Cut>& cuts) {
  return Finder(scene, strands, cuts).Run(events);
}

}  // namespace kurvo::outline
