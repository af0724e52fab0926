#include "region/many_points.h"

#include <algorithm>

#include "region/crossings.h"
#include "strand/spans.h"

namespace kurvo::outline {

LoopSpans::LoopSpans(std::span<const Cvseq> loops, const Frame& frame) {
  for (const Cvseq& loop : loops) {
    const std::size_t first = spans_.size();
    ForEachSpan(loop, frame, [&](const Span& span) {
      if (spans_.size() > first) Bridge(spans_.back().End(), span.Start());
      spans_.push_back(Kept(span, arena_));
    });
    if (spans_.size() > first) Bridge(spans_.back().End(), spans_[first].Start());
  }
  CountOf(spans_.size());
}

void LoopSpans::Bridge(Vec2 from, Vec2 to) {
  if (from == to) return;
  Span bridge;
  auto* ends = arena_.New<Vec2>(2);
  ends[0] = from;
  ends[1] = to;
  bridge.points = ends;
  spans_.push_back(bridge);
}

// Four runs, one behind the other.
ManyPoints::Rises ManyPoints::Joined(const Rises* runs) {
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

ManyPoints::ManyPoints(std::span<const Cvseq> loops, const Frame& frame)
    : loops_(loops, frame), tree_(HullsOf(loops_.spans())) {
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

Turns ManyPoints::Around(Vec2 q, double band) const {
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
      if (node.high_x[k] + band < q.x || node.high_y[k] + band < q.y || node.low_y[k] - band > q.y)
        continue;
      const uint32_t child = BoxTree::kFan * index + k;
      if (node.low_x[k] - band > q.x) {
        turns += rises_[BoxTree::kFan * tree_.Number(level, index) + k].At(q.y);
      } else if (level > 0) {
        stack[count++] = {level - 1, child};
      } else {
        const Span& span = loops_.spans()[child];
        const Turns own = CrossingsOf(span, q, band, span.Start().y > q.y, span.End().y > q.y);
        if (!own) return own;
        turns += *own;
      }
    }
  }
  return turns;
}

}  // namespace kurvo::outline
