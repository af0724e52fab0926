#include "sweep/parts.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace kurvo::outline {
namespace {

constexpr double kSameParameter = 1e-9;

bool IsBefore(const Part& a, const Part& b) {
  if (a.IsLine() != b.IsLine()) return b.IsLine();
  return std::tuple(a.operand, a.loop, a.curve, std::min(a.from, a.to)) <
         std::tuple(b.operand, b.loop, b.curve, std::min(b.from, b.to));
}

class Collector {
 public:
  Collector(const Scene& scene, const Arrangement& arrangement, LoopOfParts& loop)
      : scene_(scene), arrangement_(arrangement), loop_(loop) {}

  void Run(std::span<const int32_t> edges, double closed) {
    loop_.parts.clear();
    loop_.parts.reserve(edges.size());
    loop_.moved = 0;
    for (const int32_t number : edges) Add(arrangement_.edge(number));
    JoinAround();
    DropBridges(closed);
    Rotate();
  }

 private:
  Vec2 Given(int32_t number) const {
    const Corner& corner = arrangement_.corner(number);
    return corner.vertex >= 0 ? scene_.vertex(corner.vertex).given
                              : scene_.frame.Outwards(corner.point);
  }

  void Add(const Edge& edge) {
    Part part = {-1, -1, Source::kNone, 0, 1, Given(edge.from), Given(edge.to)};
    if (edge.source >= 0) {
      const Source& source = scene_.source(edge.source);
      part.operand = source.operand;
      part.loop = source.loop;
      NoteMove(source, edge.u_from, edge.from);
      NoteMove(source, edge.u_to, edge.to);
      if (!source.IsBridge()) {
        part.curve = source.span.curve;
        part.from = source.span.ParameterAt(edge.u_from);
        part.to = source.span.ParameterAt(edge.u_to);
      }
    }
    if (IsNothing(part)) return;
    if (!loop_.parts.empty() && GoesOn(loop_.parts.back(), part)) {
      Extend(loop_.parts.back(), part);
      if (IsNothing(loop_.parts.back())) loop_.parts.pop_back();
    } else {
      loop_.parts.push_back(part);
    }
  }

  void NoteMove(const Source& source, double u, int32_t corner) {
    const Vec2 on_source = u == 0   ? scene_.vertex(source.start).point
                           : u == 1 ? scene_.vertex(source.end).point
                                    : PointAt(source.span, u);
    loop_.moved = std::max(loop_.moved, Length(arrangement_.corner(corner).point - on_source));
  }

  // Also back along it, as edges may by less than tol within a beam.
  static bool GoesOn(const Part& a, const Part& b) {
    if (a.IsLine() || std::tie(a.operand, a.loop, a.curve) != std::tie(b.operand, b.loop, b.curve))
      return false;
    return kSameParameter >= std::fabs(a.to - b.from);
  }

  static bool IsNothing(const Part& part) {
    return part.start == part.end && (part.from == part.to || part.IsLine());
  }

  static void Extend(Part& part, const Part& next) {
    part.to = next.to;
    part.end = next.end;
  }

  // The first part may be the end of the last.
  void JoinAround() {
    Array<Part>& parts = loop_.parts;
    if (parts.size() < 2 || !GoesOn(parts.back(), parts.front())) return;
    Extend(parts.back(), parts.front());
    parts.erase(parts.begin());
  }

  void DropBridges(double closed) {
    Array<Part>& parts = loop_.parts;
    for (std::size_t i = parts.size(); i-- > 0 && parts.size() > 2;) {
      const Part bridge = parts[i];
      const bool is_given = bridge.IsLine() && bridge.operand >= 0;
      if (!is_given) continue;
      const double length =
          std::hypot(bridge.end.x - bridge.start.x, bridge.end.y - bridge.start.y);
      if (length > closed) continue;
      parts[i > 0 ? i - 1 : parts.size() - 1].end = bridge.end;
      parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(i));
      loop_.moved = std::max(loop_.moved, scene_.frame.LengthInwards(length));
    }
  }

  // A loop that runs backwards begins where it did, with its last curve.
  void Rotate() {
    Array<Part>& parts = loop_.parts;
    auto first = std::min_element(parts.begin(), parts.end(), IsBefore);
    if (first == parts.end()) return;
    if (first->IsReversed()) ++first;
    std::rotate(parts.begin(), first == parts.end() ? parts.begin() : first, parts.end());
  }

  const Scene& scene_;
  const Arrangement& arrangement_;
  LoopOfParts& loop_;
};

}  // namespace

void CollectParts(const Scene& scene, const Arrangement& arrangement,
                  std::span<const int32_t> edges, double closed, LoopOfParts& loop) {
  Collector(scene, arrangement, loop).Run(edges, closed);
}

void AppendWhole(const Scene& scene, std::span<const Source> sources, bool is_turned,
                 Array<Part>& parts) {
  const auto first = static_cast<std::ptrdiff_t>(parts.size());
  int32_t curve = Source::kNone;
  for (const Source& source : sources) {
    const Vec2 end = scene.vertex(source.end).given;
    if (source.span.curve != curve) {
      curve = source.span.curve;
      const Vec2 start = scene.vertex(source.start).given;
      parts.push_back({source.operand, source.loop, curve, source.span.from, 0, start, {}});
    }
    parts.back().to = source.span.to;
    parts.back().end = end;
  }
  if (!is_turned) return;
  std::reverse(parts.begin() + first, parts.end());
  std::for_each(parts.begin() + first, parts.end(), [](Part& part) {
    std::swap(part.from, part.to);
    std::swap(part.start, part.end);
  });
}

}  // namespace kurvo::outline
