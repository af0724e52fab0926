// How often regions go around points: their loops as many short segments, in long double.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "outline/wide.h"
#include "support/region.h"

namespace kurvo_test {

class Flattened {
 public:
  struct Edge {
    LongPoint from, to;
  };

  // No farther than the deviation from the loops, but where a curve wiggles between quarters of a
  // stretch. Joints are lines.
  Flattened(const KurvoRegion& region, Wide deviation) : deviation_(deviation) {
    for (int i = 0; i < region.count; ++i) {
      const std::size_t first = edges_.size();
      for (int k = 0; k < region.loops[i].count; ++k)
        for (Oracle::Part part : Oracle(region.loops[i].curves[k]).Parts()) {
          if (part.points.empty()) CloseCircle(region.loops[i].curves[k], part);
          const LongPoint start = PointOf(part, 0);
          if (edges_.size() > first) Add(edges_.back().to, start);
          Halve(part, 0, 1, start, PointOf(part, 1), 3, 24);
        }
      if (edges_.size() > first) Add(edges_.back().to, edges_[first].from);
    }
    Sort();
  }

  const std::vector<Edge>& edges() const { return edges_; }

  // Counter-clockwise: what crosses the half-line from q to the right upwards, less what downwards.
  int Turns(LongPoint q) const {
    int turns = 0;
    ForEachAt(q.y, q.y, [&](const Edge& e) {
      const bool from_above = e.from.y > q.y, to_above = e.to.y > q.y;
      if (from_above != to_above && (Cross(e.to - e.from, q - e.from) > 0) == to_above)
        turns += to_above ? 1 : -1;
    });
    return turns;
  }

  bool IsNear(LongPoint q, Wide distance) const {
    bool near = false;
    ForEachAt(q.y - distance, q.y + distance, [&](const Edge& e) {
      const LongPoint along = e.to - e.from, to = q - e.from;
      const Wide squared = Dot(along, along);
      const Wide t = squared > 0 ? std::clamp(Dot(along, to) / squared, Wide(0), Wide(1)) : 0;
      near = near || Gap(to, t * along) < distance;
    });
    return near;
  }

  Wide Area() const {
    Wide area = 0;
    for (const Edge& e : edges_) area += Cross(e.from - edges_[0].from, e.to - edges_[0].from) / 2;
    return area;
  }
  Wide Length() const {
    Wide length = 0;
    for (const Edge& e : edges_) length += Gap(e.from, e.to);
    return length;
  }

 private:
  static constexpr std::size_t kBands = 512;

  static LongPoint PointOf(const Oracle::Part& part, Wide s) {
    const WideAt at = AtPart(part, s);
    return {at.x, at.y};
  }
  // An arc whose ends are equal goes all around.
  static void CloseCircle(const Curve& cv, Oracle::Part& part) {
    if (part.sweep == 0 && cv.type == CV_ARC)
      part.sweep = (static_cast<const KurvoArc*>(cv.data)->normal[2] < 0 ? -2 : 2) * kPiL;
  }
  void Add(LongPoint from, LongPoint to) {
    if (from.x != to.x || from.y != to.y) edges_.push_back({from, to});
  }
  void Halve(const Oracle::Part& part, Wide s, Wide t, LongPoint from, LongPoint to, int least,
             int most) {
    Wide off = 0;
    for (const Wide share : {.25L, .5L, .75L}) {
      const LongPoint p = PointOf(part, s + share * (t - s)), chord = to - from, to_p = p - from;
      const Wide length = Gap(from, to);
      off = std::max(off, length > 0 ? std::fabs(Cross(chord, to_p)) / length : Gap(from, p));
    }
    const bool is_line = part.points.size() == 2;
    if (is_line || most == 0 || (least <= 0 && deviation_ >= off)) return Add(from, to);
    const LongPoint middle = PointOf(part, (s + t) / 2);
    Halve(part, s, (s + t) / 2, from, middle, least - 1, most - 1);
    Halve(part, (s + t) / 2, t, middle, to, least - 1, most - 1);
  }

  void Sort() {
    if (edges_.empty()) return;
    low_ = high_ = edges_[0].from.y;
    for (const Edge& e : edges_) {
      low_ = std::min(low_, e.from.y);
      high_ = std::max(high_, e.from.y);
    }
    bands_.resize(kBands);
    for (std::size_t i = 0; i < edges_.size(); ++i) {
      const auto [low, high] = std::minmax(edges_[i].from.y, edges_[i].to.y);
      for (std::size_t band = BandOf(low); band <= BandOf(high); ++band) bands_[band].push_back(i);
    }
  }
  std::size_t BandOf(Wide y) const {
    const Wide share = high_ > low_ ? (y - low_) / (high_ - low_) : 0;
    return static_cast<std::size_t>(std::clamp(share, Wide(0), Wide(1)) * (kBands - 1));
  }
  template <class Use>
  void ForEachAt(Wide low, Wide high, const Use& use) const {
    if (edges_.empty() || high < low_ || low > high_) return;
    for (std::size_t band = BandOf(low); band <= BandOf(high); ++band)
      for (const std::size_t i : bands_[band]) use(edges_[i]);
  }

  Wide deviation_, low_ = 0, high_ = 0;
  std::vector<Edge> edges_;
  std::vector<std::vector<std::size_t>> bands_;  // of the heights: the edges that reach into each
};

}  // namespace kurvo_test
