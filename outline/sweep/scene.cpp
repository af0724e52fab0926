#include "sweep/scene.h"

#include <cmath>

#include "base/refusal.h"
#include "strand/joints.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

// Of tol: ends that are no farther apart are one vertex, and the curves bend that much.
constexpr double kSharedVertex = 0x1p-4;

bool IsPoint(const Span& span) {
  if (span.kind == Span::Kind::kArc) return !(span.radius > 0) || span.sweep == 0;
  const Bounds box = HullOf(span);
  return box.low == box.high;
}

// Adds the spans of one loop, in order.
class LoopLoader {
 public:
  LoopLoader(const Cvseq& loop, int32_t operand, int32_t number, double gap, Scene& scene)
      : loop_(loop), operand_(operand), number_(number), gap_(gap), scene_(scene) {}

  void Run() {
    ForEachSpan(loop_, scene_.frame, [this](const Span& span) { Add(span); });
    if (last_ < 0) return;
    EndCurve();
    Close();
  }

 private:
  void Add(const Span& span) {
    const bool begins = span.curve != curve_;
    if (begins) {
      if (curve_ >= 0) EndCurve();
      curve_ = span.curve;
      EndsOf(loop_.curves[curve_], ends_);
    }
    if (IsPoint(span)) return;
    if (made_any_) {
      last_ = Joined(Found(span.Start()), false);
    } else {
      const Vertex start = Given(ends_.start);
      last_ = last_ < 0 ? (first_ = scene_.AddVertex(start)) : Joined(start, true);
      if (!IsShared(start, Found(span.Start()))) last_ = Joined(Found(span.Start()), false);
    }
    made_any_ = true;
    const bool is_arc = span.kind == Span::Kind::kArc;
    if (is_arc && !IsOnCircle(span, span.Start()))
      last_ = Joined(OnCircle(span, span.angle), false);
    const Vertex end = Found(span.End());
    scene_.sources.push_back(
        {Kept(span, scene_.arena), operand_, number_, last_, scene_.AddVertex(end)});
    last_ = scene_.sources.back().end;
    if (is_arc && !IsOnCircle(span, span.End())) LeaveCircle(span, end);
  }

  bool IsOnCircle(const Span& arc, Vec2 end) const {
    return kSharedVertex * scene_.tol >= std::fabs(Length(end - arc.centre) - arc.radius);
  }

  // Where an arc's record says that it is, beside its ends.
  Vertex OnCircle(const Span& arc, double angle) const {
    return Found(arc.centre + arc.radius * Vec2{std::cos(angle), std::sin(angle)});
  }

  void LeaveCircle(const Span& arc, const Vertex& end) {
    scene_.vertices[static_cast<std::size_t>(last_)] = OnCircle(arc, arc.angle + arc.sweep);
    last_ = Joined(end, false);
  }

  Vertex Given(Vec2 p) const { return {scene_.frame.Inwards(p), p, true}; }
  Vertex Found(Vec2 p) const { return {p, scene_.frame.Outwards(p), false}; }

  // The ends of a curve are those of its record. (Splines with knots of more than full multiplicity
  // jump there.)
  void EndCurve() {
    const Vertex end = Given(ends_.end);
    if (made_any_ && !IsShared(scene_.vertex(last_), end)) last_ = Joined(end, false);
    if (made_any_) scene_.vertices[static_cast<std::size_t>(last_)] = end;
    made_any_ = false;
  }

  // The vertex where the next source starts: the last one, or another beyond a bridge.
  int32_t Joined(const Vertex& start, bool is_joint) {
    Vertex& last = scene_.vertices[static_cast<std::size_t>(last_)];
    if (is_joint) CountGap(last, start);
    if (IsShared(last, start)) {
      if (start.is_given) last = start;
      return last_;
    }
    const int32_t next = scene_.AddVertex(start);
    AddBridge(last_, next);
    return next;
  }

  void Close() {
    const Vertex& first = scene_.vertex(first_);
    const Vertex& last = scene_.vertex(last_);
    CountGap(last, first);
    if (IsShared(last, first)) {
      scene_.sources.back().end = first_;
    } else {
      AddBridge(last_, first_);
    }
  }

  bool IsShared(const Vertex& a, const Vertex& b) const {
    return kSharedVertex * scene_.tol >= Length(a.point - b.point);
  }

  void CountGap(const Vertex& end, const Vertex& start) {
    if (end.given == start.given) return;
    Require(Meet(end.given, start.given, gap_), KURVO_ERR_CHAIN_ENDS);
    ++scene_.gaps;
  }

  void AddBridge(int32_t from, int32_t to) {
    auto* points = scene_.arena.New<Vec2>(2);
    points[0] = scene_.vertex(from).point;
    points[1] = scene_.vertex(to).point;
    Span line;
    line.points = points;
    line.curve = Source::kNone;
    scene_.sources.push_back({line, operand_, number_, from, to});
  }

  const Cvseq& loop_;
  const int32_t operand_, number_;
  const double gap_;
  Scene& scene_;
  int32_t curve_ = -1;              // that is being added
  Ends ends_ = {};                  // its ends
  bool made_any_ = false;           // a source of it
  int32_t first_ = -1, last_ = -1;  // vertices
};

}  // namespace

void AddLoops(const Operand& operand, int32_t number, double gap, Scene& scene) {
  for (int32_t i = 0; i < operand.count; ++i)
    LoopLoader(operand.loops[i], number, i, gap, scene).Run();
}

}  // namespace kurvo::outline
