#include "raw/far.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kurvo::outline {
namespace {

// A disc of radius d that touches a and b from the right of the way from a to b, and spans between
// them all outside of it: whatever disc of that radius holds a point between the spans and the disc
// holds a point of the spans too, as it is at least as wide as they are. To grow the pocket with
// the region changes nothing.
class Far {
 public:
  Far(const Array<Span>& spans, double distance, double tol, StripList& list)
      : spans_(spans),
        distance_(distance),
        tol_(tol),
        list_(list),
        work_left_(kMostLooks * spans.size()) {
    for (const Span& span : spans) boxes_.push_back(HullOf(span));
  }

  void Append() {
    Array<std::size_t> ends = Extremes();
    // Ranges still to be done, the next one last.
    Array<Range> ranges;
    for (std::size_t i = ends.size(); i-- > 1;) ranges.push_back({ends[i - 1], ends[i]});
    while (!ranges.empty()) {
      const Range range = ranges.back();
      ranges.pop_back();
      const std::size_t deepest = AppendPocket(range);
      if (deepest == kDone) continue;
      ranges.push_back({deepest, range.to});
      ranges.push_back({range.from, deepest});
    }
  }

 private:
  // From one start of a span to another, modulo their number.
  struct Range {
    std::size_t from, to;
  };
  static constexpr std::size_t kDone = static_cast<std::size_t>(-1);
  static constexpr std::size_t kMostLooks = 256;  // at each span; then they are taken as they are

  std::size_t count() const { return spans_.size(); }
  Vec2 Vertex(std::size_t i) const { return spans_[i % count()].Start(); }

  // The first and the last are the same vertex, a whole loop apart.
  Array<std::size_t> Extremes() const {
    std::size_t at[4] = {};
    for (std::size_t i = 1; i < count(); ++i) {
      const Vec2 p = Vertex(i);
      if (p.x < Vertex(at[0]).x) at[0] = i;
      if (p.y < Vertex(at[1]).y) at[1] = i;
      if (p.x > Vertex(at[2]).x) at[2] = i;
      if (p.y > Vertex(at[3]).y) at[3] = i;
    }
    std::sort(at, at + 4);
    Array<std::size_t> ends(at, std::unique(at, at + 4));
    ends.push_back(ends.front() + count());
    return ends;
  }

  // Appends the strip of the disc that touches both ends, or the range's only span. Result: kDone,
  // or the vertex where the range is to be cut.
  std::size_t AppendPocket(const Range& range) {
    const Vec2 a = Vertex(range.from), b = Vertex(range.to);
    const double chord = Length(b - a);
    const std::size_t size = range.to - range.from;
    if (size == 1 || !(chord > 0) || work_left_ < size) {
      if (size > 1 && work_left_ >= size) return range.from + size / 2;
      for (std::size_t i = range.from; i < range.to; ++i)
        AppendStrips(spans_[i % count()], distance_, tol_, list_);
      return kDone;
    }
    work_left_ -= size;
    const double height = std::sqrt(distance_ * distance_ - 0.25 * chord * chord);
    const Vec2 centre = 0.5 * (a + b) + (height / chord) * Right(b - a);
    bool is_pocket = true;
    double nearest = std::numeric_limits<double>::infinity();
    std::size_t deepest = range.from + size / 2;
    for (std::size_t i = range.from; i < range.to; ++i) {
      is_pocket = is_pocket && !(SquaredDistance(boxes_[i % count()], centre) <
                                 distance_ * distance_ * (1 - kRounding));
      const double square = SquaredLength(Vertex(i) - centre);
      if (i > range.from && square < nearest) {
        nearest = square;
        deepest = i;
      }
    }
    if (!is_pocket) return deepest;
    const Span& first = spans_[range.from % count()];
    const Span& last = spans_[(range.to - 1) % count()];
    list_.strips.push_back({a, b, DirectionAt(a, centre), DirectionAt(b, centre), distance_,
                            distance_, first.from, last.to, first.curve, false, list_.pieces.size(),
                            0});
    return kDone;
  }
  static constexpr double kRounding = 0x1p-50;

  // Of an arc whose centre lies at the distance to its right.
  Vec2 DirectionAt(Vec2 p, Vec2 centre) const { return (1 / distance_) * Left(centre - p); }

  const Array<Span>& spans_;
  const double distance_, tol_;
  StripList& list_;
  Array<Bounds> boxes_;
  std::size_t work_left_;
};

}  // namespace

bool IsFar(const Bounds& box, double distance) {
  return distance > std::hypot(box.high.x - box.low.x, box.high.y - box.low.y);
}

void AppendFarStrips(const Array<Span>& spans, double distance, double tol, StripList& list) {
  Far(spans, distance, tol, list).Append();
}

}  // namespace kurvo::outline
