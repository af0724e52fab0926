#include "sweep/slivers.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "chain/fan.h"
#include "strand/bernstein.h"

namespace kurvo::outline {
namespace {

constexpr double kClearly = 64;  // of tol: loops that are wider at a glance are no slivers
constexpr int kChords = 16;      // of an edge whose length is taken

// An edge of a loop: a stretch of a span, or a line where there is none, to a corner.
struct Side {
  const Span* span;
  double from, to;
  Vec2 end;

  bool IsStraight() const { return !span || span->kind == Span::Kind::kLine; }
};

// Of a stretch, at a glance: at least its length, and what lies between its chord and it,
// counter-clockwise positive, within an error.
struct Glance {
  double length = 0, area = 0, error = 0;
};

// Of degree 2 or 3.
Glance GlanceAtPolynomial(const Side& side) {
  const Span& span = *side.span;
  const int n = span.degree;
  Vec2 p[4];
  const double from = std::min(side.from, side.to), to = std::max(side.from, side.to);
  if (from > 0 || to < 1)
    CutBernstein(span.points, n, from, to, p);
  else
    std::copy(span.points, span.points + n + 1, p);
  const Vec2 a = p[1] - p[0], b = p[2] - p[0], c = p[n] - p[0];
  Glance glance;
  for (int i = 1; i <= n; ++i)
    glance.length += std::fabs(p[i].x - p[i - 1].x) + std::fabs(p[i].y - p[i - 1].y);
  const double area =
      n == 2 ? Cross(a, c) / 3 : 0.15 * (Cross(a, b) + Cross(a, c)) + 0.3 * Cross(b, c);
  glance.area = side.from < side.to ? area : -area;
  return glance;
}

// r^2 / 2 (t - sin t).
Glance GlanceAtArc(const Side& side) {
  constexpr double kSmall = 0.5;
  const double r = side.span->radius, t = (side.to - side.from) * side.span->sweep;
  const double cube = t * t * t;
  Glance glance = {r * std::fabs(t), r * r * cube / 12, r * r * std::fabs(cube) * t * t / 240};
  if (std::fabs(t) > kSmall) {
    glance.area = 0.5 * r * r * (t - std::sin(t));
    glance.error = 0;
  }
  return glance;
}

// Between a chord and a curve of some length there is most where that is half a circle: length^2 /
// (2 pi) (Dido's problem).
Glance GlanceAt(const Side& side) {
  const Span& span = *side.span;
  if (span.kind == Span::Kind::kArc) return GlanceAtArc(side);
  if (span.kind == Span::Kind::kBezier && span.degree <= 3) return GlanceAtPolynomial(side);
  Glance glance;
  Vec2 before = span.Start();
  for (int i = 1; i <= span.degree; ++i) {
    const Vec2 next = (span.weights ? 1 / span.weights[i] : 1) * span.points[i];
    glance.length += Length(next - before);
    before = next;
  }
  glance.error = glance.length * glance.length / (2 * std::numbers::pi);
  return glance;
}

// The span moved to the origin, where the rounding of its area is little beside its length.
Span FromStart(const Span& span, Arena& arena) {
  const Vec2 start = span.Start();
  Span moved = span;
  const int last = span.kind == Span::Kind::kArc ? 1 : span.degree;
  auto* points = arena.New<Vec2>(static_cast<std::size_t>(last) + 1);
  for (int i = 0; i <= last; ++i)
    points[i] = span.points[i] - (span.weights ? span.weights[i] : 1) * start;
  moved.points = points;
  moved.centre = span.centre - start;
  return moved;
}

// Of a closed loop, from its corners.
class Extent {
 public:
  Extent(Vec2 origin, double tol) : origin_(origin), tol_(tol) {}

  void LookAt(const Side& side) {
    const double chord = GoTo(side.end);
    if (side.IsStraight()) {
      length_ += chord;
      return;
    }
    const Glance glance = GlanceAt(side);
    length_ += glance.length;
    area_ += glance.area;
    error_ += glance.error;
  }
  bool IsClear() const { return area() - error_ > kClearly * tol_ * length_; }

  void Add(const Side& side, Arena& arena) {
    const Vec2 start = before_;
    const double chord = GoTo(side.end);
    if (side.IsStraight()) {
      length_ += chord;
      return;
    }
    Vec2 before = start;
    for (int i = 1; i <= kChords; ++i) {
      const double u = side.from + (side.to - side.from) * i / kChords;
      const Vec2 p = i < kChords ? PointAt(*side.span, u) - origin_ : before_;
      length_ += Length(p - before);
      before = p;
    }
    arena.Clear();
    const auto [low, high] = std::minmax(side.from, side.to);
    Fans fans;
    AddFan(FromStart(PartOf(*side.span, low, high, arena), arena), fans);
    area_ += side.from < side.to ? fans.Value().one : -fans.Value().one;
  }
  bool IsNarrow() const { return !(area() > tol_ * length_); }

  double area() const { return std::fabs(area_); }

 private:
  double GoTo(Vec2 point) {
    const Vec2 p = point - origin_;
    area_ += 0.5 * Cross(before_, p);
    const double chord = Length(p - before_);
    before_ = p;
    return chord;
  }

  const Vec2 origin_;
  const double tol_;
  Vec2 before_ = {0, 0};
  double area_ = 0, length_ = 0, error_ = 0;
};

// `for_each(f)` calls f with the sides of a loop, in order.
template <class ForEach>
bool IsNarrow(Vec2 start, double tol, const ForEach& for_each, double& area) {
  Extent glance(start, tol);
  for_each([&](const Side& side) { glance.LookAt(side); });
  if (glance.IsClear()) return false;
  Extent extent(start, tol);
  Arena arena;
  for_each([&](const Side& side) { extent.Add(side, arena); });
  area = extent.area();
  return extent.IsNarrow();
}

}  // namespace

bool MayBeSliver(const Scene& scene, std::span<const Source> sources) {
  double unused;
  return IsNarrow(
      scene.vertex(sources.front().start).point, kClearly * scene.tol,
      [&](const auto& visit) {
        for (const Source& source : sources)
          visit(Side{&source.span, 0, 1, scene.vertex(source.end).point});
      },
      unused);
}

bool IsSliver(const Scene& scene, const Arrangement& arrangement, std::span<const int32_t> edges,
              double& area) {
  return IsNarrow(
      arrangement.corner(arrangement.edge(edges[0]).from).point, scene.tol,
      [&](const auto& visit) {
        for (const int32_t number : edges) {
          const Edge& edge = arrangement.edge(number);
          const Span* span = edge.source < 0 ? nullptr : &scene.source(edge.source).span;
          visit(Side{span, edge.u_from, edge.u_to, arrangement.corner(edge.to).point});
        }
      },
      area);
}

}  // namespace kurvo::outline
