#include "sweep/gather.h"

#include <algorithm>
#include <utility>

#include "sweep/loops.h"
#include "sweep/slivers.h"

namespace kurvo::outline {
namespace {

// A loop of edges: where these lie among those of all loops.
struct EdgeLoop {
  std::size_t first_edge, edges;
  int32_t lowest;  // the edge on the left that goes up from its lowest corner
};

class Gatherer {
 public:
  Gatherer(const Scene& scene, const Arrangement& arrangement, double closed, KurvoReport& report,
           ResultLoops& result)
      : arrangement_(arrangement),
        result_(result),
        taker_(scene, arrangement, closed, report, result) {}

  void Run() {
    edges_.reserve(arrangement_.edges.size());
    result_.parts.reserve(arrangement_.edges.size());
    ForEachLoop(arrangement_, [this](std::span<const int32_t> edges) { AddLoop(edges); });
    FindParents();
    for (std::size_t i = 0; i < loops_.size(); ++i) {
      if (loops_[i].lowest < 0)
        taker_.Drop(result_.loops[i], 0);
      else
        taker_.Take(EdgesOf(loops_[i]), result_.loops[i]);
    }
  }

 private:
  std::span<const int32_t> EdgesOf(const EdgeLoop& loop) const {
    return {edges_.data() + loop.first_edge, loop.edges};
  }
  int32_t LowerCorner(const Edge& edge) const { return std::min(edge.from, edge.to); }

  // Corners ascend with their beams and to the right, and edges at one from the right: of those
  // that go up from the lowest the last one has all of the loop to its right.
  void AddLoop(std::span<const int32_t> edges) {
    EdgeLoop loop = {edges_.size(), edges.size(), -1};
    ResultLoop made;
    for (const int32_t number : edges) {
      const Edge& edge = arrangement_.edge(number);
      if (edge.is_horizontal) continue;
      const auto key = [&](int32_t e) { return std::pair(LowerCorner(arrangement_.edge(e)), -e); };
      if (loop.lowest < 0 || key(number) < key(loop.lowest)) loop.lowest = number;
    }
    if (loop.lowest >= 0) {
      const Edge& lowest = arrangement_.edge(loop.lowest);
      made.is_outer = lowest.to < lowest.from;
    }
    edges_.insert(edges_.end(), edges.begin(), edges.end());
    loops_.push_back(loop);
    result_.loops.push_back(made);
  }

  // What stands to the left of a hole is the loop around it, or another hole in that.
  void FindParents() {
    Array<int32_t> loop_of, order;
    loop_of.resize(arrangement_.edges.size(), -1);
    order.resize(loops_.size());
    for (std::size_t i = 0; i < loops_.size(); ++i) {
      order[i] = static_cast<int32_t>(i);
      for (const int32_t e : EdgesOf(loops_[i]))
        loop_of[static_cast<std::size_t>(e)] = static_cast<int32_t>(i);
    }
    const auto lowest = [this](int32_t i) {
      const int32_t edge = loops_[static_cast<std::size_t>(i)].lowest;
      return edge < 0 ? std::pair(-1, 0) : std::pair(LowerCorner(arrangement_.edge(edge)), -edge);
    };
    std::sort(order.begin(), order.end(),
              [&](int32_t a, int32_t b) { return lowest(a) < lowest(b); });
    for (const int32_t i : order) {
      const int32_t edge = loops_[static_cast<std::size_t>(i)].lowest;
      ResultLoop& hole = result_.loops[static_cast<std::size_t>(i)];
      if (hole.is_outer || edge < 0) continue;
      const int32_t left = arrangement_.edge(edge).left;
      if (left < 0) continue;
      const int32_t beside = loop_of[static_cast<std::size_t>(left)];
      const ResultLoop& neighbour = result_.loops[static_cast<std::size_t>(beside)];
      hole.parent = neighbour.is_outer ? beside : neighbour.parent;
    }
  }

  const Arrangement& arrangement_;
  ResultLoops& result_;
  PartTaker taker_;
  Array<int32_t> edges_;
  Array<EdgeLoop> loops_;
};

}  // namespace

void PartTaker::Drop(ResultLoop& made, double area) {
  made.first_part = result_.parts.size();
  made.is_dropped = true;
  ++report_.dropped;
  report_.dropped_area += scene_.frame.AreaOutwards(area);
}

void PartTaker::Take(std::span<const int32_t> edges, ResultLoop& made) {
  double area = 0;
  if (IsSliver(scene_, arrangement_, edges, area)) return Drop(made, area);
  CollectParts(scene_, arrangement_, edges, closed_, collected_);
  made.first_part = result_.parts.size();
  result_.parts.insert(result_.parts.end(), collected_.parts.begin(), collected_.parts.end());
  made.parts = collected_.parts.size();
  report_.moved = std::max(report_.moved, scene_.frame.LengthOutwards(collected_.moved));
}

void GatherLoops(const Scene& scene, const Arrangement& arrangement, double closed,
                 KurvoReport& report, ResultLoops& result) {
  Gatherer(scene, arrangement, closed, report, result).Run();
}

}  // namespace kurvo::outline
