#include "sweep/emit.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "base/refusal.h"
#include "chain/cut.h"
#include "strand/check.h"
#include "strand/joints.h"
#include "sweep/loops.h"
#include "sweep/parts.h"

namespace kurvo::outline {
namespace {

// A loop of the result: where its edges lie among those of all loops, and its parts among all.
struct Loop {
  std::size_t first_edge, edges, first_part, parts;
  int32_t lowest;  // the edge on the left that goes up from its lowest corner
  bool is_outer;
  int32_t parent;  // of a hole: the loop around it, -1 where that was dropped
  bool is_dropped;
};

class Emitter {
 public:
  Emitter(const Scene& scene, const Array<Operand>& operands, const Arrangement& arrangement,
          double closed, KurvoReport& report)
      : scene_(scene),
        operands_(operands),
        arrangement_(arrangement),
        closed_(closed),
        report_(report) {}

  Emitted Run() {
    ForEachLoop(arrangement_, [this](std::span<const int32_t> edges) { AddLoop(edges); });
    FindParents();
    for (Loop& loop : loops_) CollectPartsOf(loop);
    for (const int32_t i : InOrder()) EmitLoop(loops_[static_cast<std::size_t>(i)]);
    return std::move(emitted_);
  }

 private:
  std::span<const int32_t> EdgesOf(const Loop& loop) const {
    return {edges_.data() + loop.first_edge, loop.edges};
  }
  int32_t LowerCorner(const Edge& edge) const { return std::min(edge.from, edge.to); }

  // Corners ascend with their beams and to the right, and edges at one from the right: of those
  // that go up from the lowest the last one has all of the loop to its right.
  void AddLoop(std::span<const int32_t> edges) {
    Loop loop = {edges_.size(), edges.size(), 0, 0, -1, false, -1, false};
    for (const int32_t number : edges) {
      const Edge& edge = arrangement_.edge(number);
      if (edge.is_horizontal) continue;
      const auto key = [&](int32_t e) { return std::pair(LowerCorner(arrangement_.edge(e)), -e); };
      if (loop.lowest < 0 || key(number) < key(loop.lowest)) loop.lowest = number;
    }
    if (loop.lowest >= 0) {
      const Edge& lowest = arrangement_.edge(loop.lowest);
      loop.is_outer = lowest.to < lowest.from;
    }
    edges_.insert(edges_.end(), edges.begin(), edges.end());
    loops_.push_back(loop);
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
      Loop& hole = loops_[static_cast<std::size_t>(i)];
      if (hole.is_outer || hole.lowest < 0) continue;
      const int32_t left = arrangement_.edge(hole.lowest).left;
      if (left < 0) continue;
      const int32_t beside = loop_of[static_cast<std::size_t>(left)];
      const Loop& neighbour = loops_[static_cast<std::size_t>(beside)];
      hole.parent = neighbour.is_outer ? beside : neighbour.parent;
    }
  }

  void CollectPartsOf(Loop& loop) {
    double area = 0;
    loop.first_part = parts_.size();
    if (loop.lowest < 0 || IsSliver(scene_, arrangement_, EdgesOf(loop), area)) {
      loop.is_dropped = true;
      ++report_.dropped;
      report_.dropped_area += scene_.frame.AreaOutwards(area);
      return;
    }
    CollectParts(scene_, arrangement_, EdgesOf(loop), closed_, collected_);
    parts_.insert(parts_.end(), collected_.parts.begin(), collected_.parts.end());
    loop.parts = collected_.parts.size();
    report_.moved = std::max(report_.moved, scene_.frame.LengthOutwards(collected_.moved));
  }

  // By the earliest curve of the input.
  auto KeyOf(const Loop& loop) const {
    constexpr int32_t kLast = std::numeric_limits<int32_t>::max();
    auto key = std::tuple(kLast, kLast, kLast, 0.0);
    for (const Part& part : PartsOf(loop)) {
      if (part.IsLine()) continue;
      key = std::min(key,
                     std::tuple(part.operand, part.loop, part.curve, std::min(part.from, part.to)));
    }
    return key;
  }
  std::span<const Part> PartsOf(const Loop& loop) const {
    return {parts_.data() + loop.first_part, loop.parts};
  }

  // Outer loops, each followed by its holes; a hole whose outer loop was dropped goes with it.
  Array<int32_t> InOrder() {
    using Key = std::tuple<int32_t, int32_t, int32_t, double>;
    struct Entry {
      Key outer, own;
      bool is_hole;
      int32_t loop;
    };
    Array<Key> keys;
    for (const Loop& loop : loops_) keys.push_back(KeyOf(loop));
    Array<Entry> entries;
    for (std::size_t i = 0; i < loops_.size(); ++i) {
      const Loop& loop = loops_[i];
      const auto number = static_cast<int32_t>(i);
      const int32_t outer = loop.is_outer ? number : loop.parent;
      if (loop.is_dropped || outer < 0 || loops_[static_cast<std::size_t>(outer)].is_dropped)
        continue;
      entries.push_back({keys[static_cast<std::size_t>(outer)], keys[i], !loop.is_outer, number});
    }
    std::sort(entries.begin(), entries.end(), [this](const Entry& a, const Entry& b) {
      const auto outer = [this](const Entry& e) {
        const Loop& loop = loops_[static_cast<std::size_t>(e.loop)];
        return loop.is_outer ? e.loop : loop.parent;
      };
      return std::tuple(a.outer, outer(a), a.is_hole, a.own, a.loop) <
             std::tuple(b.outer, outer(b), b.is_hole, b.own, b.loop);
    });
    Array<int32_t> order;
    for (const Entry& entry : entries) order.push_back(entry.loop);
    return order;
  }

  void EmitLoop(const Loop& loop) {
    OwnedChain chain;
    for (const Part& part : PartsOf(loop)) EmitPart(part, chain);
    emitted_.loops.Add(std::move(chain));
  }

  void EmitPart(const Part& part, OwnedChain& chain) {
    records_.clear();
    if (!part.IsLine()) AppendRecords(part);
    if (records_.empty()) {
      if (part.start == part.end) return;
      records_.push_back(LineBetween(part.start, part.end));
    }
    MoveEnds(part);
    const auto count = static_cast<double>(records_.size());
    for (std::size_t i = 0; i < records_.size(); ++i) {
      const auto at = [&](std::size_t k) {
        return k == records_.size()
                   ? part.to
                   : part.from + (part.to - part.from) * static_cast<double>(k) / count;
      };
      const int32_t kind = part.IsLine() ? KURVO_ORIGIN_BRIDGE : KURVO_ORIGIN_PART;
      emitted_.origins.push_back({part.operand, part.loop, part.curve, kind, at(i), at(i + 1)});
      chain.Add(std::move(records_[i]));
    }
  }

  const Curve& CurveOf(const Part& part) const {
    return operands_[static_cast<std::size_t>(part.operand)].loops[part.loop].curves[part.curve];
  }

  void AppendRecords(const Part& part) {
    const Curve& curve = CurveOf(part);
    AppendPart(curve, std::min(part.from, part.to), std::max(part.from, part.to), scene_.frame,
               records_);
    if (!part.IsReversed()) return;
    std::reverse(records_.begin(), records_.end());
    GlobalVar g;
    KurvoInitGlobalVar(&g);
    for (OwnedCurve& record : records_) KurvocvChgOrder(record.Get(), &g);
    Require(KurvoOk(&g), KurvoErrGet(&g));
  }

  // Control points are moved only where the end is not there already: those of a spline whose outer
  // knots are not p + 1 fold are no ends of it.
  void MoveEnds(const Part& part) {
    Ends first, last;
    Curve& front = *records_.front().Get();
    Curve& back = *records_.back().Get();
    Curve &front_piece = Outermost(front, false), &back_piece = Outermost(back, true);
    const double front_sweep = SweepOf(front_piece), back_sweep = SweepOf(back_piece);
    if (EndsOf(front, first) && first.start != part.start) SetStart(front, part.start);
    if (EndsOf(back, last) && last.end != part.end) SetEnd(back, part.end);
    Recentre(front_piece, front_sweep);
    if (&front_piece != &back_piece) Recentre(back_piece, back_sweep);
  }

  // The curve that holds an end: of a composite the first or the last piece.
  static Curve& Outermost(Curve& curve, bool last) {
    Curve* at = &curve;
    while (at->type == CV_SEGCV && BlockOf<KurvoSegcv>(*at).count > 0) {
      const auto& composite = BlockOf<KurvoSegcv>(*at);
      at = &composite.curves[last ? composite.count - 1 : 0];
    }
    return *at;
  }

  static double SweepOf(const Curve& curve) {
    return curve.type == CV_ARC ? outline::SweepOf(BlockOf<KurvoArc>(curve)) : 0;
  }
  // Its ends would be bridged to its circle if it came back.
  void Recentre(Curve& curve, double sweep) const {
    constexpr double kSlack = 0x1p-8;  // of tol
    if (curve.type != CV_ARC) return;
    outline::Recentre(*static_cast<KurvoArc*>(curve.data), sweep,
                      scene_.frame.LengthOutwards(kSlack * scene_.tol));
  }

  const Scene& scene_;
  const Array<Operand>& operands_;
  const Arrangement& arrangement_;
  const double closed_;
  KurvoReport& report_;
  Emitted emitted_;
  Array<int32_t> edges_;
  Array<Loop> loops_;
  Array<Part> parts_;
  LoopOfParts collected_;
  Array<OwnedCurve> records_;
};

}  // namespace

Emitted Emit(const Scene& scene, const Array<Operand>& operands, const Arrangement& arrangement,
             double closed, KurvoReport& report) {
  return Emitter(scene, operands, arrangement, closed, report).Run();
}

}  // namespace kurvo::outline
