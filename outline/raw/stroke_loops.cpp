#include "raw/stroke_loops.h"

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "raw/side.h"
#include "strand/joints.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

constexpr double kJoined = 0.125;      // of the tolerance: ends so near are one
constexpr double kLeastDash = 0x1p-4;  // of the tolerance

// The span run through the other way.
Span Reversed(const Span& span, Arena& arena) {
  Span reversed = span;
  const int last = span.kind == Span::Kind::kArc ? 1 : span.degree;
  auto* points = arena.New<Vec2>(static_cast<std::size_t>(last) + 1);
  std::reverse_copy(span.points, span.points + last + 1, points);
  reversed.points = points;
  if (span.kind == Span::Kind::kRational) {
    auto* weights = arena.New<double>(static_cast<std::size_t>(last) + 1);
    std::reverse_copy(span.weights, span.weights + last + 1, weights);
    reversed.weights = weights;
  }
  reversed.angle = span.angle + span.sweep;
  reversed.sweep = -span.sweep;
  std::swap(reversed.from, reversed.to);
  return reversed;
}

// The end of a stroke and the direction in which it points.
struct Tip {
  Vec2 point, direction;
  double to_right, to_left;  // how far the stroke reaches there
  int32_t curve;
  double parameter;
};

class Stroker {
 public:
  Stroker(const Cvseq& chain, int32_t index, const Frame& frame, const Pen& pen, RawRegion& raw)
      : chain_(chain), index_(index), frame_(frame), pen_(pen), raw_(raw) {
    right_.extra = left_.extra = pen.extra;
  }

  void Collect(const StrokeJoints& joints, int32_t& gaps) {
    Ends before;
    bool has_before = false;
    for (int i = 0; i < chain_.count; ++i) {
      Ends ends;
      if (!EndsOf(chain_.curves[i], ends)) continue;
      if (has_before) CheckJoint(before.end, ends.start, joints, gaps);
      before = ends;
      has_before = true;
      ForEachSpan(chain_.curves[i], i, frame_, [&](const Span& span) {
        if (!spans_.empty()) Bridge(spans_.back().End(), span.Start(), span);
        spans_.push_back(Kept(span, arena_));
      });
    }
    if (joints.is_closed && !spans_.empty())
      Bridge(spans_.back().End(), spans_.front().Start(), spans_.front());
    if (!spans_.empty())
      start_ = {spans_.front().Start(), {1, 0}, pen_.right, pen_.left, spans_.front().curve,
                spans_.front().from};
  }

  void Append(bool is_closed) {
    if (spans_.empty()) return;
    if (pen_.dashes.lengths.empty()) return Stroke(spans_, is_closed);
    if (IsPoint()) return Dot(start_);
    const double reach = pen_.left + pen_.right;
    ForEachDash(spans_, pen_.dashes, kLeastDash * pen_.tol, reach, [this](const Dash& dash) {
      start_ = {dash.point, dash.direction,      pen_.right,
                pen_.left,  CurveOf(dash.curve), dash.parameter};
      Stroke(dash.spans, false);
    });
  }

  Made made() const { return made_; }

 private:
  static void CheckJoint(Vec2 from, Vec2 to, const StrokeJoints& joints, int32_t& gaps) {
    if (outline::Meet(from, to, joints.epsilon)) return;
    Require(outline::Meet(from, to, joints.gap), KURVO_ERR_CHAIN_ENDS);
    ++gaps;
  }

  bool IsPoint() const {
    return std::all_of(spans_.begin(), spans_.end(), [this](const Span& span) {
      const Bounds hull = HullOf(span);
      return hull.LongerSide() == 0 && hull.low == start_.point;
    });
  }

  // What is apart by more than rounding is joined by a line.
  void Bridge(Vec2 from, Vec2 to, const Span& after) {
    if (kJoined * pen_.tol >= Length(to - from)) return;
    Vec2 ends[] = {from, to};
    Span line;
    line.points = ends;
    line.curve = -1 - after.curve;
    line.from = line.to = after.from;
    spans_.push_back(Kept(line, arena_));
  }

  void Stroke(const Array<Span>& spans, bool is_closed) {
    right_.strips.clear();
    right_.pieces.clear();
    left_.strips.clear();
    left_.pieces.clear();
    // With equal sides all is covered that is as near as they reach, but for corners and ends.
    const bool has_butts = !is_closed && pen_.shape.cap == KURVO_CAP_BUTT;
    const bool is_round = pen_.shape.join == KURVO_JOIN_ROUND && !has_butts;
    right_.follows_centres = left_.follows_centres = pen_.left != pen_.right || !is_round;
    for (const Span& span : spans) AppendStrips(span, pen_.right, pen_.tol, right_);
    if (right_.strips.empty()) return Dot(start_);
    Arena arena;
    for (std::size_t i = spans.size(); i-- > 0;)
      AppendStrips(Reversed(spans[i], arena), pen_.left, pen_.tol, left_);
    const Corners corners = {pen_.shape.join, pen_.shape.miter_limit, pen_.tol, false, false};
    RawLoop loop(frame_, chain_, index_);
    const Side right(right_, pen_.right, is_closed, corners);
    const Side left(left_, pen_.left, is_closed, corners);
    if (is_closed) {
      right.AppendTo(loop);
      loop.Close(raw_);
      left.AppendTo(loop);
    } else {
      const Tip end = TipOf(right_.strips.back(), pen_.right, pen_.left);
      const Tip start = TipOf(left_.strips.back(), pen_.left, pen_.right);
      loop.StartAt(start.point - start.to_left * Right(start.direction));
      right.AppendTo(loop);
      Cap(end, pen_.end_cap, loop);
      left.AppendTo(loop);
      Cap(start, pen_.start_cap, loop);
    }
    loop.Close(raw_);
    made_.capped = right_.capped + left_.capped;
    made_.off = std::max(right_.off, left_.off);
    made_.extra = std::max(right_.extra, left_.extra);
  }

  static Tip TipOf(const Strip& strip, double to_right, double to_left) {
    return {strip.end, strip.arrives, to_right, to_left, CurveOf(strip.curve), strip.to};
  }

  // From the right of the tip to its left.
  void Cap(const Tip& tip, int32_t cap, RawLoop& loop) const {
    const Vec2 normal = Right(tip.direction);
    const Vec2 right = tip.point + tip.to_right * normal, left = tip.point - tip.to_left * normal;
    const double half = 0.5 * (tip.to_left + tip.to_right);
    loop.Name(KURVO_ORIGIN_CAP, tip.curve, tip.parameter, tip.parameter);
    loop.LineTo(right);
    if (cap == KURVO_CAP_ROUND)
      return loop.ArcTo(tip.point + (tip.to_right - half) * normal, half, false, left);
    if (cap == KURVO_CAP_SQUARE) {
      loop.LineTo(right + half * tip.direction);
      loop.LineTo(left + half * tip.direction);
    }
    loop.LineTo(left);
  }

  void Dot(const Tip& tip) const {
    const int32_t cap = pen_.start_cap;
    if (cap == KURVO_CAP_BUTT) return;
    RawLoop loop(frame_, chain_, index_);
    loop.StartAt(tip.point + tip.to_right * Right(tip.direction));
    Cap(tip, cap, loop);
    Tip back = tip;
    back.direction = -tip.direction;
    std::swap(back.to_left, back.to_right);
    Cap(back, cap, loop);
    loop.Close(raw_);
  }

  const Cvseq& chain_;
  const int32_t index_;
  const Frame& frame_;
  const Pen& pen_;
  RawRegion& raw_;
  Array<Span> spans_;
  Arena arena_;
  Tip start_ = {};
  StripList right_, left_;
  Made made_;
};

}  // namespace

Made AppendStrokeLoops(const Cvseq& chain, int32_t index, const Frame& frame,
                       const StrokeJoints& joints, const Pen& pen, int32_t& gaps, RawRegion& raw) {
  Stroker stroker(chain, index, frame, pen, raw);
  stroker.Collect(joints, gaps);
  stroker.Append(joints.is_closed);
  return stroker.made();
}

}  // namespace kurvo::outline
