// Which loops of a region lie directly in which.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

#include "base/memory.h"
#include "base/refusal.h"
#include "chain/fan.h"
#include "chain/tight_box.h"
#include "region/check_region.h"
#include "region/many_points.h"
#include "strand/box_tree.h"
#include "strand/place_order.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

// Of the size of a loop: points of another so near it are asked only where all are, and so far its
// box may stand out of one that holds it, since results are moved by less.
constexpr double kClear = 0x1p-28;
constexpr double kRounding = 0x1p-48;  // of the frame's unit: nearer points are on a loop

using Loops = std::span<const Cvseq>;

struct Extent {
  Bounds box;
  double area = 0;  // of what a loop surrounds, as it winds, without sign
};

Extent ExtentOf(const Cvseq& loop, const Frame& frame) {
  Extent extent;
  Fans fans;
  Vec2 start = {0, 0}, end = {0, 0};
  ForEachSpan(loop, frame, [&](const Span& span) {
    if (extent.box.IsEmpty())
      start = span.Start();
    else if (end != span.Start())
      fans.Add(FanOfLine(end, span.Start()));
    end = span.End();
    AddTightBox(span, extent.box);
    AddFan(span, fans);
  });
  if (end != start) fans.Add(FanOfLine(end, start));
  extent.area = std::fabs(fans.Value().one);
  return extent;
}

bool IsWithin(const Bounds& inner, const Bounds& outer) {
  return inner.low.x >= outer.low.x && inner.low.y >= outer.low.y && inner.high.x <= outer.high.x &&
         inner.high.y <= outer.high.y;
}

// Loops by place, of which some are waiting: a tree that knows below which nodes there are any.
class Waiting {
 public:
  explicit Waiting(const Array<Extent>& extents) : slots_(extents.size()) {
    Array<Bounds> boxes;
    for (const Extent& extent : extents) boxes.push_back(extent.box);
    loops_ = InPlaceOrder(boxes);
    for (std::size_t i = 0; i < loops_.size(); ++i) {
      const auto loop = static_cast<std::size_t>(loops_[i]);
      slots_[loop] = static_cast<uint32_t>(i);
      boxes[i] = extents[loop].box;
    }
    tree_.emplace(boxes);
    uint32_t children = 0;
    for (uint32_t level = 0; level < tree_->levels(); ++level)
      children += BoxTree::kFan * tree_->size(level);
    counts_.assign(children, 0);
  }

  void Add(int32_t loop) { Change(loop, 1); }
  void Remove(int32_t loop) { Change(loop, -1); }

  // Appends those whose boxes are within a box.
  void Find(const Bounds& within, Array<int32_t>& found) const {
    if (tree_->levels() > 0) Find(tree_->levels() - 1, 0, within, found);
  }

 private:
  void Change(int32_t loop, int32_t by) {
    uint32_t child = slots_[static_cast<std::size_t>(loop)];
    for (uint32_t level = 0; level < tree_->levels(); ++level) {
      const uint32_t node = child / BoxTree::kFan;
      counts_[BoxTree::kFan * tree_->Number(level, node) + child % BoxTree::kFan] += by;
      child = node;
    }
  }

  void Find(uint32_t level, uint32_t index, const Bounds& within, Array<int32_t>& found) const {
    for (uint32_t k = 0; k < BoxTree::kFan; ++k) {
      if (counts_[BoxTree::kFan * tree_->Number(level, index) + k] == 0) continue;
      const Bounds box = tree_->node(level, index).box(k);
      const uint32_t child = BoxTree::kFan * index + k;
      if (level > 0) {
        if (Near(box, within, 0)) Find(level - 1, child, within, found);
      } else if (IsWithin(box, within)) {
        found.push_back(loops_[child]);
      }
    }
  }

  Array<uint32_t> slots_;        // of each loop: which leaf
  Array<int32_t> loops_;         // of each leaf
  Array<int32_t> counts_;        // of the children of every node: how many wait there
  std::optional<BoxTree> tree_;  // made when the boxes are sorted
};

// One loop, as others see it.
class Fence {
 public:
  Fence(const Cvseq& loop, const Frame& frame, double size)
      : frame_(frame), clear_(std::max(kClear * size, kRounding)), points_({&loop, 1}, frame) {}

  // By the middle of the first of the other's spans that is clear of this loop; where all of it
  // runs along this one, it lies in it.
  bool GoesAround(const Cvseq& other) const {
    for (const double band : {clear_, kRounding}) {
      Turns turns;
      for (int i = 0; i < other.count && !turns; ++i)
        ForEachSpan(other.curves[i], i, frame_, [&](const Span& span) {
          if (!turns) turns = points_.Around(PointAt(span, 0.5), band);
        });
      if (turns) return *turns != 0;
    }
    return true;
  }

 private:
  const Frame& frame_;
  const double clear_;
  const ManyPoints points_;
};

// From the smallest loop to the largest, each takes those in it that no smaller one has taken: a
// forest, whatever the loops are.
Array<int32_t> ParentsOf(Loops loops, const Frame& frame) {
  Array<Extent> extents;
  for (const Cvseq& loop : loops) extents.push_back(ExtentOf(loop, frame));
  Array<int32_t> order(loops.size()), parents(loops.size(), -1), found;
  std::iota(order.begin(), order.end(), 0);
  const auto extent = [&](int32_t loop) -> const Extent& {
    return extents[static_cast<std::size_t>(loop)];
  };
  std::sort(order.begin(), order.end(), [&](int32_t a, int32_t b) {
    const double area_a = extent(a).area, area_b = extent(b).area;
    return area_a != area_b ? area_a < area_b : a > b;  // of equal loops the first is the outer one
  });
  Waiting waiting(extents);
  for (const int32_t outer : order) {
    const Bounds& box = extent(outer).box;
    if (box.IsEmpty()) continue;
    const double size = box.LongerSide(), margin = kClear * size + kRounding;
    Bounds around = box;
    around.Add(box.low - Vec2{margin, margin});
    around.Add(box.high + Vec2{margin, margin});
    found.clear();
    waiting.Find(around, found);
    std::optional<Fence> fence;
    for (const int32_t inner : found) {
      const Cvseq& loop = loops[static_cast<std::size_t>(outer)];
      if (!fence) fence.emplace(loop, frame, size);
      if (!fence->GoesAround(loops[static_cast<std::size_t>(inner)])) continue;
      parents[static_cast<std::size_t>(inner)] = outer;
      waiting.Remove(inner);
    }
    waiting.Add(outer);
  }
  return parents;
}

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoRegionNesting(const KurvoRegion* region, int32_t* parents,
                                  GlobalVar* g) noexcept {
  return Answer(g, [&] {
    CheckRegionRecord(region);
    Require(region->count == 0 || parents, KURVO_ERR_OPTION);
    const Frame frame(CheckLoops(*region, GetEpsilon(g)));
    const Array<int32_t> found = ParentsOf(LoopsOf(*region), frame);
    std::copy(found.begin(), found.end(), parents);
  });
}
