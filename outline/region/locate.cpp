// Where points lie in a region.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/memory.h"
#include "base/refusal.h"
#include "region/check_region.h"
#include "region/crossings.h"
#include "strand/box_tree.h"
#include "strand/glance.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

constexpr double kOnShare = 0x1p-30;  // of the region's size: as near as that is on a loop

// How often the loops go around a point; nothing when it is on one.
using Turns = std::optional<int>;

// Every loop, checked: its records, its joints and that it closes.
Bounds CheckLoops(const KurvoRegion& region, double epsilon) {
  Glances glances(epsilon);
  for (int i = 0; i < region.count; ++i) {
    RequireChain(&region.loops[i]);
    glances.ForEach(region.loops[i], [](int, const Glance&) {});
    Require(glances.IsClosed(), KURVO_ERR_CHAIN_ENDS);
  }
  return glances.box();
}

struct Field {
  Frame frame;
  double band;  // in the frame
};

int Rise(bool from_above, bool to_above) { return int{to_above} - int{from_above}; }

// ---- One point: one more look at each record ----

class OnePoint {
 public:
  OnePoint(const Field& field, const double* point)
      : frame_(field.frame),
        band_(field.band),
        at_{point[0], point[1]},
        q_(frame_.Inwards(at_)),
        reach_(frame_.LengthOutwards(field.band)) {}

  Turns Around(const KurvoRegion& region) {
    for (int i = 0; i < region.count && !is_on_; ++i) Loop(region.loops[i]);
    return is_on_ ? Turns() : Turns(turns_);
  }

 private:
  // Of curves to the left nothing counts, of those beside and above and below only the ends.
  void Loop(const Cvseq& loop) {
    Glances again(kInfinite);
    Vec2 first = {};
    bool is_first = true;
    again.ForEach(loop, [&](int i, const Glance& glance) {
      if (!glance.has_ends || is_on_) return;
      if (is_first) {
        first = frame_.Inwards(glance.start.both());
        above_ = IsAbove(first);
      }
      is_first = false;
      const Vec2 low = glance.low.both(), high = glance.high.both();
      if (high.x + reach_ < at_.x) return;
      if (low.y - reach_ > at_.y || high.y + reach_ < at_.y) {
        above_ = low.y > at_.y;
      } else if (low.x - reach_ > at_.x) {
        Enter(frame_.Inwards(glance.start.both()));
        Leave(frame_.Inwards(glance.end.both()));
      } else {
        Enter(frame_.Inwards(glance.start.both()));
        Spans(loop.curves[i], i);
        if (!is_on_) Enter(frame_.Inwards(glance.end.both()));
      }
    });
    if (!is_first && !is_on_) Enter(first);
  }

  void Spans(const Curve& curve, int index) {
    ForEachSpan(
        curve, index, frame_,
        [this](const Stretch& stretch) {
          const Bounds box = stretch.Box();
          if (is_on_ || box.high.x + reach_ < at_.x) return false;
          const bool is_above = box.low.y - reach_ > at_.y;
          if (!is_above && !(box.high.y + reach_ < at_.y)) return true;
          above_ = is_above;
          return false;
        },
        [this](const Span& span) {
          if (is_on_) return;
          Enter(span.Start());
          const bool end_above = IsAbove(span.End());
          const Turns turns = CrossingsOf(span, q_, band_, above_, end_above);
          is_on_ = !turns;
          turns_ += turns.value_or(0);
          above_ = end_above;
        });
  }

  bool IsAbove(Vec2 p) const { return p.y > q_.y; }

  // To the start of the next curve, across a joint as wide as epsilon at the most. After a curve to
  // the left, which leaves `above_` as it was, the joint is to the left too.
  void Enter(Vec2 start) {
    const bool above = IsAbove(start);
    if (start.x > q_.x) turns_ += Rise(above_, above);
    above_ = above;
  }

  // A curve to the right.
  void Leave(Vec2 end) {
    const bool above = IsAbove(end);
    turns_ += Rise(above_, above);
    above_ = above;
  }

  static constexpr double kInfinite = std::numeric_limits<double>::infinity();

  const Frame& frame_;
  const double band_;
  const Vec2 at_, q_;
  const double reach_;  // the band in the caller's unit
  bool above_ = false;  // whether the last vertex is
  bool is_on_ = false;
  int turns_ = 0;
};

// ---- Many points: a tree over boxes ----

// What a run of spans crosses of a ray that starts to the left of them all: for each y in `up` that
// is above it one, for each y in `down` one less. The ends of neighbours cancel, so that at most
// two of either are left: of a loop that the run cuts at its beginning, and of one at its end.
struct Rises {
  static constexpr double kNone = -std::numeric_limits<double>::infinity();  // never above
  double up[2] = {kNone, kNone}, down[2] = {kNone, kNone};

  int At(double y) const { return Rise(down[0] > y, up[0] > y) + Rise(down[1] > y, up[1] > y); }
};

// Four runs, one behind the other.
Rises Joined(const Rises* runs) {
  double up[8], down[8];
  int ups = 0, downs = 0;
  const auto add = [](double y, double* to, int& count, double* against, int& others) {
    if (y == Rises::kNone) return;
    double* found = std::find(against, against + others, y);
    if (found == against + others)
      to[count++] = y;
    else
      *found = against[--others];
  };
  for (uint32_t k = 0; k < BoxTree::kFan; ++k) {
    for (const double y : runs[k].down) add(y, down, downs, up, ups);
    for (const double y : runs[k].up) add(y, up, ups, down, downs);
  }
  Rises rises;
  std::copy(up, up + std::min(ups, 2), rises.up);
  std::copy(down, down + std::min(downs, 2), rises.down);
  return rises;
}

// The spans of all loops, with lines across their joints.
class Loops {
 public:
  Loops(const KurvoRegion& region, const Frame& frame) {
    for (int i = 0; i < region.count; ++i) {
      const std::size_t first = spans_.size();
      ForEachSpan(region.loops[i], frame, [&](const Span& span) {
        if (spans_.size() > first) Bridge(spans_.back().End(), span.Start());
        spans_.push_back(Kept(span, arena_));
      });
      if (spans_.size() > first) Bridge(spans_.back().End(), spans_[first].Start());
    }
    CountOf(spans_.size());
  }

  const Array<Span>& spans() const { return spans_; }
  Array<Bounds> Boxes() const {
    Array<Bounds> boxes;
    boxes.reserve(spans_.size());
    for (const Span& span : spans_) boxes.push_back(HullOf(span));
    return boxes;
  }

 private:
  void Bridge(Vec2 from, Vec2 to) {
    if (from == to) return;
    Span bridge;
    auto* ends = arena_.New<Vec2>(2);
    ends[0] = from;
    ends[1] = to;
    bridge.points = ends;
    spans_.push_back(bridge);
  }

  Array<Span> spans_;
  Arena arena_;
};

class ManyPoints {
 public:
  ManyPoints(const KurvoRegion& region, const Field& field)
      : field_(field), loops_(region, field.frame), tree_(loops_.Boxes()) {
    const Array<Span>& spans = loops_.spans();
    for (uint32_t level = 0; level < tree_.levels(); ++level)
      for (uint32_t i = 0; i < tree_.size(level); ++i)
        for (uint32_t child = BoxTree::kFan * i; child < BoxTree::kFan * (i + 1); ++child) {
          Rises rises;
          if (level == 0 && child < spans.size()) {
            rises.down[0] = spans[child].Start().y;
            rises.up[0] = spans[child].End().y;
          } else if (level > 0 && child < tree_.size(level - 1)) {
            rises = Joined(&rises_[BoxTree::kFan * tree_.Number(level - 1, child)]);
          }
          rises_.push_back(rises);
        }
  }

  Turns Around(const double* point) const {
    const Vec2 q = field_.frame.Inwards(point);
    struct Entry {
      uint32_t level, index;
    };
    Entry stack[BoxTree::kMostLevels * BoxTree::kFan];
    uint32_t count = 0;
    if (tree_.levels() > 0) stack[count++] = {tree_.levels() - 1, 0};
    int turns = 0;
    while (count > 0) {
      const auto [level, index] = stack[--count];
      const BoxTree::Node& node = tree_.node(level, index);
      for (uint32_t k = 0; k < BoxTree::kFan; ++k) {
        if (node.high_x[k] + field_.band < q.x || node.high_y[k] + field_.band < q.y ||
            node.low_y[k] - field_.band > q.y)
          continue;
        const uint32_t child = BoxTree::kFan * index + k;
        if (node.low_x[k] - field_.band > q.x) {
          turns += rises_[BoxTree::kFan * tree_.Number(level, index) + k].At(q.y);
        } else if (level > 0) {
          stack[count++] = {level - 1, child};
        } else {
          const Span& span = loops_.spans()[child];
          const Turns own =
              CrossingsOf(span, q, field_.band, span.Start().y > q.y, span.End().y > q.y);
          if (!own) return own;
          turns += *own;
        }
      }
    }
    return turns;
  }

 private:
  const Field& field_;
  const Loops loops_;
  const BoxTree tree_;
  Array<Rises> rises_;  // of the children of every node
};

bool IsInside(int turns, int32_t rule) {
  switch (rule) {
    case KURVO_FILL_NONZERO:
      return turns != 0;
    case KURVO_FILL_EVENODD:
      return turns % 2 != 0;
    case KURVO_FILL_POSITIVE:
      return turns > 0;
    default:
      return turns < 0;
  }
}

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoRegionLocate(const KurvoRegion* region, const double* points, int32_t n,
                                 int32_t* where, int32_t* turns, GlobalVar* g) noexcept {
  return Answer(g, [&] {
    Require(n >= 0 && (n == 0 || points), KURVO_ERR_OPTION);
    CheckRegionRecord(region);
    for (std::ptrdiff_t i = 0; i < n; ++i) {
      RequireFinite(points[3 * i]);
      RequireFinite(points[3 * i + 1]);
    }
    const double epsilon = GetEpsilon(g);
    const Bounds box = CheckLoops(*region, epsilon);
    Field field = {Frame(box), 0};
    field.band = field.frame.LengthInwards(std::max(epsilon, kOnShare * field.frame.size()));
    const auto write = [&](std::ptrdiff_t i, const Turns& around) {
      if (turns) turns[i] = around.value_or(0);
      if (!where) return;
      where[i] = !around                           ? KURVO_REGION_ON
                 : IsInside(*around, region->rule) ? KURVO_REGION_INSIDE
                                                   : KURVO_REGION_OUTSIDE;
    };
    if (n == 1) return write(0, OnePoint(field, points).Around(*region));
    const ManyPoints many(*region, field);
    for (std::ptrdiff_t i = 0; i < n; ++i) write(i, many.Around(points + 3 * i));
  });
}
