#include "raw/pockets.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace kurvo::outline {
namespace {

constexpr double kRounding = 0x1p-49;  // of points in a frame

double SquaredDistanceToSegment(Vec2 a, Vec2 b, Vec2 p) {
  const Vec2 chord = b - a, from_a = p - a;
  const double square = SquaredLength(chord);
  const double share = square > 0 ? std::clamp(Dot(from_a, chord) / square, 0.0, 1.0) : 0;
  return SquaredLength(from_a - share * chord);
}

double SquaredDistanceToArc(const Span& arc, Vec2 p) {
  const Vec2 spoke = p - arc.centre;
  const double to_circle = Length(spoke) - arc.radius;
  const double middle = arc.angle + 0.5 * arc.sweep;
  const double turn = std::remainder(std::atan2(spoke.y, spoke.x) - middle, 2 * std::numbers::pi);
  if (0.5 * std::fabs(arc.sweep) >= std::fabs(turn)) return to_circle * to_circle;
  return std::min(SquaredLength(p - arc.Start()), SquaredLength(p - arc.End()));
}

// Whether a span lies outside of a disc: an arc itself, of another one the hull of its control
// points. The nearest point of a hull lies on a segment between two of them; a disc that is inside
// of all segments is larger than the hulls that are asked for.
bool IsOutside(const Span& span, Vec2 centre, double square) {
  if (span.kind == Span::Kind::kArc) return SquaredDistanceToArc(span, centre) >= square;
  const auto at = [&span](int i) {
    return span.kind == Span::Kind::kRational ? (1 / span.weights[i]) * span.points[i]
                                              : span.points[i];
  };
  for (int i = 0; i < span.degree; ++i)
    for (int k = i + 1; k <= span.degree; ++k)
      if (!(SquaredDistanceToSegment(at(i), at(k), centre) >= square)) return false;
  return true;
}

// A disc of radius d that touches a and b from the side of the offset, and spans on the way from a
// to b, all of them outside of it and less than 2 d wide together: whatever disc of that radius
// holds a point between the spans and the disc holds a point of the spans too. For it would come in
// between a and b, and more than half of it would lie beyond the first disc, which the spans are
// too short to go around. To grow the pocket with the region changes nothing.
class Along {
 public:
  Along(const Array<Span>& spans, double distance, double tol, StripList& list)
      : spans_(spans),
        distance_(distance),
        radius_(std::fabs(distance)),
        outside_((radius_ - 2 * kRounding) * radius_),
        tol_(tol),
        list_(list),
        work_left_(kMostLooks * spans.size()) {}

  void Append() {
    Bounds box;
    for (const Span& span : spans_) box.Join(HullOf(span));
    if (IsNarrow(box)) {
      const Array<std::size_t> ends = Extremes();
      for (std::size_t i = 1; i < ends.size(); ++i) AppendRun({ends[i - 1], ends[i]});
    } else {
      for (std::size_t from = 0; from < count();) from = AppendRunFrom(from);
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
  const Span& At(std::size_t i) const { return spans_[i % count()]; }
  Vec2 Vertex(std::size_t i) const { return At(i).Start(); }

  bool IsNarrow(const Bounds& box) const {
    constexpr double kNarrow = 1.5;  // of the radius
    return kNarrow * radius_ > Length(box.high - box.low);
  }

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

  // As many spans as are narrow together. Result: where the next begins.
  std::size_t AppendRunFrom(std::size_t from) {
    Bounds box = HullOf(At(from));
    std::size_t to = from + 1;
    for (; to < count(); ++to) {
      box.Join(HullOf(At(to)));
      if (!IsNarrow(box)) break;
    }
    AppendRun({from, to});
    return to;
  }

  void AppendRun(const Range& run) {
    ranges_.clear();  // still to be done, the next one last
    ranges_.push_back(run);
    while (!ranges_.empty()) {
      const Range range = ranges_.back();
      ranges_.pop_back();
      const std::size_t deepest = AppendPocket(range);
      if (deepest == kDone) continue;
      ranges_.push_back({deepest, range.to});
      ranges_.push_back({range.from, deepest});
    }
  }

  // Appends the strip of the disc that touches both ends, or the range's only span. Result: kDone,
  // or the vertex where the range is to be cut.
  std::size_t AppendPocket(const Range& range) {
    const std::size_t size = range.to - range.from;
    if (size == 1 || work_left_ < size) {
      for (std::size_t i = range.from; i < range.to; ++i)
        AppendStrips(At(i), distance_, tol_, list_);
      return kDone;
    }
    work_left_ -= size;
    const Vec2 a = Vertex(range.from), b = Vertex(range.to);
    const double chord = Length(b - a);
    if (!(chord > 0)) return range.from + size / 2;
    const double height = std::sqrt(radius_ * radius_ - 0.25 * chord * chord);
    const Vec2 centre = 0.5 * (a + b) + std::copysign(height / chord, distance_) * Right(b - a);
    for (std::size_t i = range.from; i < range.to; ++i)
      if (!IsOutside(At(i), centre, outside_)) return Deepest(range, centre);
    const Span &first = At(range.from), &last = At(range.to - 1);
    list_.strips.push_back({a, b, DirectionAt(a, centre), DirectionAt(b, centre), distance_,
                            distance_, first.from, last.to, first.curve, false, list_.pieces.size(),
                            0});
    return kDone;
  }

  // The inner vertex that is nearest to the centre.
  std::size_t Deepest(const Range& range, Vec2 centre) const {
    double nearest = std::numeric_limits<double>::infinity();
    std::size_t deepest = range.from + (range.to - range.from) / 2;
    for (std::size_t i = range.from + 1; i < range.to; ++i) {
      const double square = SquaredLength(Vertex(i) - centre);
      if (!(square < nearest)) continue;
      nearest = square;
      deepest = i;
    }
    return deepest;
  }

  // Of an arc whose centre lies at the distance to its right.
  Vec2 DirectionAt(Vec2 p, Vec2 centre) const { return (1 / distance_) * Left(centre - p); }

  const Array<Span>& spans_;
  const double distance_, radius_;
  const double outside_;  // the square of what points outside keep away
  const double tol_;
  StripList& list_;
  std::size_t work_left_;
  Array<Range> ranges_;
};

}  // namespace

void AppendStripsAlong(const Array<Span>& spans, double distance, double tol, StripList& list) {
  Along(spans, distance, tol, list).Append();
}

}  // namespace kurvo::outline
