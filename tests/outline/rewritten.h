// Loops written in another way: other cuts, degrees, weights, types and starts, the same points.
#pragma once

#include <algorithm>
#include <vector>

#include "outline/combined.h"

namespace kurvo_test {

class Rewriter {
 public:
  explicit Rewriter(Random& random) : random_(random) {}

  // Backwards as often as not where it may.
  Chain operator()(const Cvseq& loop, bool may_turn) {
    curves_.clear();
    for (int i = 0; i < loop.count; ++i) {
      at_ = EndsOf(loop.curves[i]).first;
      const XY next = EndsOf(loop.curves[(i + 1) % loop.count]).first;
      const auto parts = Oracle(loop.curves[i]).Parts();
      for (const Oracle::Part& part : parts) {
        last_ = &part == &parts.back() ? &next : nullptr;
        if (part.points.empty())
          CutArc(part, part.angle, part.sweep, 2);
        else if (part.points.size() > 1)
          Cut(part.points, 2);
      }
    }
    if (!curves_.empty())
      std::rotate(curves_.begin(), curves_.begin() + RandomInt(random_, 0, int(curves_.size()) - 1),
                  curves_.end());
    Chain chain(Grouped());
    if (may_turn && Chance(random_, .5)) {
      Globals g;
      for (Curve& cv : chain) KurvocvChgOrder(&cv, &g);
      std::reverse(chain.begin(), chain.end());
    }
    return chain;
  }

 private:
  using Polygon = std::vector<WidePoint>;

  // Where a piece ends: at the end of its loop's curve where it is the last.
  XY EndAt(const LongPoint& p, bool is_last) const {
    return is_last && last_ ? *last_ : XY{static_cast<double>(p.x), static_cast<double>(p.y)};
  }

  void Cut(const Polygon& points, int cuts_left, bool is_last = true) {
    if (cuts_left == 0 || Chance(random_, .5)) return Write(points, is_last);
    const Wide t = random_.Uniform(.05, .95);
    Polygon row = points, low, high = points;
    for (std::size_t left = row.size(); left > 0; --left) {
      low.push_back(row[0]);
      high[left - 1] = row[left - 1];
      for (std::size_t i = 0; i + 1 < left; ++i) row[i] = Between(row[i], row[i + 1], t);
    }
    Cut(low, cuts_left - 1, false);
    Cut(high, cuts_left - 1, is_last);
  }

  void CutArc(const Oracle::Part& circle, Wide from, Wide sweep, int cuts_left,
              bool is_last = true) {
    const Wide to = from + sweep, w = std::cos(sweep / 2);
    const auto on = [&](Wide angle, Wide out) -> LongPoint {
      return {circle.cx + circle.r * out * std::cos(angle),
              circle.cy + circle.r * out * std::sin(angle)};
    };
    if (std::fabs(sweep) > 2.5L || (cuts_left > 0 && Chance(random_, .5))) {
      const Wide share = random_.Uniform(.2, .8);
      CutArc(circle, from, share * sweep, cuts_left - 1, false);
      return CutArc(circle, from + share * sweep, (1 - share) * sweep, cuts_left - 1, is_last);
    }
    const LongPoint start = on(from, 1), middle = on(from + sweep / 2, 1 / w), end = on(to, 1);
    if (Chance(random_, .6))
      return Write({{start.x, start.y, 1}, {middle.x * w, middle.y * w, w}, {end.x, end.y, 1}},
                   is_last);
    const auto d = [](Wide x) { return static_cast<double>(x); };
    Owned arc = Arc(d(circle.cx), d(circle.cy), d(circle.r), d(from), d(sweep));
    const XY to_end = EndAt(end, is_last);
    KurvoclSetCoord(arc.block<KurvoArc>().start, at_.x, at_.y, 0);
    KurvoclSetCoord(arc.block<KurvoArc>().end, to_end.x, to_end.y, 0);
    Push(std::move(arc), to_end);
  }

  static Polygon Raised(const Polygon& p) {
    Polygon q = {p[0]};
    for (std::size_t i = 1; i < p.size(); ++i)
      q.push_back(Between(p[i], p[i - 1], static_cast<Wide>(i) / static_cast<Wide>(p.size())));
    q.push_back(p.back());
    return q;
  }

  void Write(Polygon p, bool is_last) {
    bool rational = std::any_of(p.begin(), p.end(), [&](const WidePoint& q) {
      return std::fabs(q.w - p[0].w) > 1e-18L * p[0].w;
    });
    const XY end = EndAt({p.back().x / p.back().w, p.back().y / p.back().w}, is_last);
    if (!rational && p.size() == 2 && Chance(random_, .5)) return Push(LineBetween(at_, end), end);
    for (int raises = RandomInt(random_, 0, 2); raises > 0; --raises) p = Raised(p);
    if (Chance(random_, .3)) {  // another parameter
      rational = true;
      const Wide by = random_.Uniform(.5, 2);
      Wide factor = random_.Uniform(.5, 2);
      for (WidePoint& q : p) {
        q = {factor * q.x, factor * q.y, factor * q.w};
        factor *= by;
      }
    }
    Numbers numbers;
    for (const WidePoint& q : p) {
      const bool is_end = &q == &p.back();
      const XY at = &q == &p[0] ? at_ : is_end ? end : EndAt({q.x / q.w, q.y / q.w}, false);
      numbers.insert(numbers.end(), {at.x, at.y});
      if (rational) numbers.push_back(static_cast<double>(q.w));
    }
    Numbers knots(p.size(), 0.);
    knots.resize(2 * p.size(), 1.);
    if (Chance(random_, .4))
      Push(MakeFreeForm(rational ? CV_RBSPLINE : CV_BSPLINE, numbers, knots), end);
    else
      Push(MakeFreeForm(rational ? CV_RBEZIER : CV_BEZIER, numbers), end);
  }

  void Push(Owned&& curve, XY end) {
    curves_.push_back(std::move(curve));
    at_ = end;
  }

  // Some of them in composites.
  std::vector<Owned> Grouped() {
    std::vector<Owned> grouped;
    for (auto i = curves_.begin(); i != curves_.end();) {
      const auto n = Chance(random_, .15) ? std::min<std::ptrdiff_t>(3, curves_.end() - i) : 1;
      if (n == 1) {
        grouped.push_back(std::move(*i++));
        continue;
      }
      std::vector<Owned> pieces(std::make_move_iterator(i), std::make_move_iterator(i + n));
      grouped.push_back(MakeComposite(
          Numbers(static_cast<std::size_t>(n), 1. / static_cast<double>(n)), std::move(pieces)));
      i += n;
    }
    return grouped;
  }

  Random& random_;
  std::vector<Owned> curves_;
  XY at_ = {};                // where the last one ends
  const XY* last_ = nullptr;  // the end of the part that is being written, where it is known
};

inline Region Rewritten(Random& random, const KurvoRegion& region, double size) {
  Region written;
  Rewriter rewrite(random);
  for (int i = 0; i < region.count; ++i)
    written.Add(rewrite(region.loops[i], region.rule == KURVO_FILL_EVENODD), 1e-6 * size);
  written->rule = region.rule;
  return written;
}

}  // namespace kurvo_test
