#include "sweep/emit.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "base/refusal.h"
#include "chain/cut.h"
#include "strand/check.h"
#include "strand/joints.h"

namespace kurvo::outline {
namespace {

class Emitter {
 public:
  Emitter(const Scene& scene, const Array<Operand>& operands, const ResultLoops& result)
      : scene_(scene), operands_(operands), result_(result) {}

  Emitted Run(bool keeps_given) {
    const Array<int32_t> order = InOrder();
    emitted_.is_given = keeps_given && IsGiven(order);
    if (emitted_.is_given) return std::move(emitted_);
    emitted_.origins.reserve(result_.parts.size());
    for (const int32_t i : order) EmitLoop(result_.loops[static_cast<std::size_t>(i)]);
    return std::move(emitted_);
  }

 private:
  // By the earliest curve of the input.
  auto KeyOf(const ResultLoop& loop) const {
    constexpr int32_t kLast = std::numeric_limits<int32_t>::max();
    auto key = std::tuple(kLast, kLast, kLast, 0.0);
    for (const Part& part : result_.PartsOf(loop)) {
      if (part.IsLine()) continue;
      key = std::min(key,
                     std::tuple(part.operand, part.loop, part.curve, std::min(part.from, part.to)));
    }
    return key;
  }

  // Outer loops, each followed by its holes; a hole whose outer loop was dropped goes with it.
  Array<int32_t> InOrder() {
    using Key = std::tuple<int32_t, int32_t, int32_t, double>;
    struct Entry {
      Key outer, own;
      bool is_hole;
      int32_t loop;
    };
    const Array<ResultLoop>& loops = result_.loops;
    Array<Key> keys;
    keys.reserve(loops.size());
    for (const ResultLoop& loop : loops) keys.push_back(KeyOf(loop));
    Array<Entry> entries;
    entries.reserve(loops.size());
    for (std::size_t i = 0; i < loops.size(); ++i) {
      const ResultLoop& loop = loops[i];
      const auto number = static_cast<int32_t>(i);
      const int32_t outer = loop.is_outer ? number : loop.parent;
      if (loop.is_dropped || outer < 0 || loops[static_cast<std::size_t>(outer)].is_dropped)
        continue;
      entries.push_back({keys[static_cast<std::size_t>(outer)], keys[i], !loop.is_outer, number});
    }
    std::sort(entries.begin(), entries.end(), [&loops](const Entry& a, const Entry& b) {
      const auto outer = [&loops](const Entry& e) {
        const ResultLoop& loop = loops[static_cast<std::size_t>(e.loop)];
        return loop.is_outer ? e.loop : loop.parent;
      };
      return std::tuple(a.outer, outer(a), a.is_hole, a.own, a.loop) <
             std::tuple(b.outer, outer(b), b.is_hole, b.own, b.loop);
    });
    Array<int32_t> order;
    order.reserve(entries.size());
    for (const Entry& entry : entries) order.push_back(entry.loop);
    return order;
  }

  // Whether the loops are those of the first operand, as they stand there.
  bool IsGiven(const Array<int32_t>& order) const {
    if (CountOf(order.size()) != operands_[0].count) return false;
    for (int32_t i = 0; i < operands_[0].count; ++i) {
      const Cvseq& given = operands_[0].loops[i];
      const auto parts = result_.PartsOf(
          result_.loops[static_cast<std::size_t>(order[static_cast<std::size_t>(i)])]);
      if (CountOf(parts.size()) != given.count) return false;
      for (int32_t k = 0; k < given.count; ++k) {
        const Part& part = parts[static_cast<std::size_t>(k)];
        if (part.IsLine() || part.operand != 0 || part.loop != i || part.curve != k ||
            !IsGiven(part, given.curves[k]))
          return false;
      }
    }
    return true;
  }

  // A curve that ends where it starts may be a circle, which is emitted in quarters.
  bool IsGiven(const Part& part, const Curve& curve) const {
    const Domain domain = DomainOf(curve);
    Ends ends;
    if (part.from != domain.from || part.to != domain.to || !EndsOf(curve, ends) ||
        ends.start != part.start || ends.end != part.end || part.start == part.end)
      return false;
    if (curve.type == CV_SEGCV) return false;
    const KurvoArc arc = ArcOf(curve);
    KurvoArc moved = arc;
    if (curve.type == CV_ARC) outline::Recentre(moved, arc, Slack());
    return moved.radius == arc.radius;
  }

  void EmitLoop(const ResultLoop& loop) {
    OwnedChain chain;
    chain.Reserve(loop.parts);
    for (const Part& part : result_.PartsOf(loop)) EmitPart(part, chain);
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

  // Of a part without length, whose ends were moved, only these are left.
  void AppendRecords(const Part& part) {
    const Curve& curve = CurveOf(part);
    const Domain domain = DomainOf(curve);
    const double from = std::min(part.from, part.to), to = std::max(part.from, part.to);
    if (!(to - from > kLeastPart * (domain.to - domain.from))) {
      if (part.start == part.end) return;
      records_.push_back(LineBetween(part.start, part.end));
      return TakeWords(curve, *records_.back().Get());
    }
    AppendPart(curve, from, to, scene_.frame, records_);
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
    const KurvoArc front_before = ArcOf(front_piece), back_before = ArcOf(back_piece);
    if (EndsOf(front, first) && first.start != part.start) SetStart(front, part.start);
    if (EndsOf(back, last) && last.end != part.end) SetEnd(back, part.end);
    Recentre(front_piece, front_before);
    if (&front_piece != &back_piece) Recentre(back_piece, back_before);
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

  static KurvoArc ArcOf(const Curve& curve) {
    return curve.type == CV_ARC ? BlockOf<KurvoArc>(curve) : KurvoArc();
  }
  // Its ends would be bridged to its circle if it came back.
  void Recentre(Curve& curve, const KurvoArc& before) const {
    if (curve.type != CV_ARC) return;
    outline::Recentre(*static_cast<KurvoArc*>(curve.data), before, Slack());
  }
  double Slack() const {
    constexpr double kSlack = 0x1p-8;  // of tol
    return scene_.frame.LengthOutwards(kSlack * scene_.tol);
  }

  const Scene& scene_;
  const Array<Operand>& operands_;
  const ResultLoops& result_;
  Emitted emitted_;
  Array<OwnedCurve> records_;
};

}  // namespace

Emitted Emit(const Scene& scene, const Array<Operand>& operands, const ResultLoops& result,
             bool keeps_given) {
  return Emitter(scene, operands, result).Run(keeps_given);
}

}  // namespace kurvo::outline
