#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>

#include "base/memory.h"
#include "base/refusal.h"
#include "chain/place.h"
#include "fit/chords.h"
#include "strand/joints.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

constexpr double kLeastDeviation = 0x1p-44;  // of the size: a smaller one is raised to it
constexpr double kCellShare = 1.0 / 128;     // of the deviation, for cubics in the place of others
constexpr double kSameShare = 0x1p-30;       // of the deviation: a joint no wider is one vertex,
constexpr double kSameSize = 0x1p-48;        // nor one that is rounding, of the size
constexpr double kCorner = 1e-3;             // sine of an angle that no chord goes across

// Laid out as the interface's Coord, which is an array and no value.
struct Triple {
  double x, y, z;
};

struct Vertex {
  std::size_t span;
  double u;
  Vec2 point;  // the caller's coordinates
};

class Flattening {
 public:
  Flattening(const Cvseq* chain, double deviation) : chain_(chain) {
    CollectSpans(chain, list_);
    deviation_ = std::max(list_.frame.LengthInwards(deviation),
                          kLeastDeviation * list_.frame.LengthInwards(list_.frame.size()));
    same_ = std::max(kSameShare * deviation, kSameSize * list_.frame.size());
  }

  void Run(double epsilon) {
    RequireJoined(*chain_, epsilon);
    const Array<Span>& spans = list_.spans;
    for (std::size_t i = 0; i < spans.size();) {
      const int32_t curve = spans[i].curve;
      std::size_t end = i;
      while (end < spans.size() && spans[end].curve == curve) ++end;
      AddCurve(i, end);
      i = end;
    }
    if (!vertices_.empty() && IsClosed(*chain_, list_.frame.size(), epsilon)) Close();
  }

  void HandOut(Coord** points, KurvoPlace** places, int32_t* count) const {
    const std::size_t n = vertices_.size();
    const int32_t all = CountOf(n);
    if (n == 0) return;
    std::unique_ptr<Triple, FreeBlock> triples;
    std::unique_ptr<KurvoPlace, FreeBlock> marks;
    if (points) triples.reset(static_cast<Triple*>(Allocate(n * sizeof(Coord))));
    if (places) marks.reset(static_cast<KurvoPlace*>(Allocate(n * sizeof(KurvoPlace))));
    for (std::size_t i = 0; i < n; ++i) {
      const Vertex& vertex = vertices_[i];
      if (points) triples.get()[i] = {vertex.point.x, vertex.point.y, 0};
      if (!places) continue;
      KurvoPlace& place = marks.get()[i];
      place = PlaceAt(list_.frame, list_.spans[vertex.span], vertex.u);
      place.point[0] = vertex.point.x;
      place.point[1] = vertex.point.y;
    }
    if (points) *points = reinterpret_cast<Coord*>(triples.release());
    if (places) *places = marks.release();
    *count = all;
  }

 private:
  // The spans of one curve. Its ends are those of its record, to the bit.
  void AddCurve(std::size_t begin, std::size_t end) {
    const Curve& curve = chain_->curves[list_.spans[begin].curve];
    Ends ends;
    EndsOf(curve, ends);
    AddStart({begin, 0, ends.start});
    for (std::size_t i = begin; i < end;) {
      std::size_t next = i + 1;
      while (curve.type != CV_SEGCV && next < end &&
             GoesOn(list_.spans[next - 1], list_.spans[next]))
        ++next;
      AddRun(i, next);
      if (next < end) {
        Add(next - 1, 1);
        AddStart({next, 0, list_.frame.Outwards(list_.spans[next].Start())});
      }
      i = next;
    }
    vertices_.push_back({end - 1, 1, ends.end});
  }

  // Whether two spans of a spline join smoothly, so that a chord may go across.
  static bool GoesOn(const Span& span, const Span& next) {
    const Vec2 before = VelocityAt(span, 1), after = VelocityAt(next, 0);
    return Dot(before, after) > 0 &&
           kCorner * Dot(before, after) >= std::fabs(Cross(before, after));
  }

  // The start of a curve takes the place of the end of the one before.
  void AddStart(const Vertex& start) {
    if (!vertices_.empty() && Meet(vertices_.back().point, start.point, same_))
      vertices_.back() = start;
    else
      vertices_.push_back(start);
  }

  void Add(std::size_t span, double u) {
    vertices_.push_back({span, u, list_.frame.Outwards(PointAt(list_.spans[span], u))});
  }

  // The inner vertices of the spans from `begin` to `end`.
  void AddRun(std::size_t begin, std::size_t end) {
    const Span& first = list_.spans[begin];
    if (end == begin + 1 && first.kind == Span::Kind::kLine) return;
    if (end == begin + 1 && first.kind == Span::Kind::kArc) return AddArc(begin);
    cells_.clear();
    cuts_.clear();
    bool exact = true;
    const double error = std::max(kCellShare * deviation_, kLeastDeviation);
    for (std::size_t i = begin; i < end; ++i)
      exact &= AppendCells(list_.spans[i], static_cast<int32_t>(i), error, cells_);
    // Both the curve and the ends of the chord may be beside the cubic.
    const double rest = exact ? deviation_ : (1 - 2 * kCellShare) * deviation_;
    chords_.Cut(cells_, rest, cuts_);
    const std::size_t before = vertices_.size();
    if (vertices_.capacity() < before + cuts_.size() + 2)
      vertices_.reserve(2 * before + cuts_.size() + 2);
    vertices_.resize(before + cuts_.size());
    for (std::size_t i = 0; i < cuts_.size(); ++i) {
      const OnCells& cut = cuts_[i];
      const CubicCell& cell = cells_[cut.cell];
      const auto span = static_cast<std::size_t>(cell.span);
      const double u = cell.from + cut.t * (cell.to - cell.from);
      const Vec2 point = exact ? cut.point : PointAt(list_.spans[span], u);
      vertices_[before + i] = {span, u, list_.frame.Outwards(point)};
    }
  }

  // Equal steps of which each is off by r (1 - cos(step / 2)) = 2 r sin^2(step / 4).
  void AddArc(std::size_t index) {
    const Span& arc = list_.spans[index];
    const double sine = std::min(std::sqrt(0.5 * deviation_ / arc.radius), 1.0);
    const double steps = std::max(std::ceil(std::fabs(arc.sweep) / (4 * std::asin(sine))), 1.0);
    Require(std::numeric_limits<int32_t>::max() >= steps, KURVO_ERR_TOO_LARGE);
    const int n = static_cast<int>(steps);
    for (int i = 1; i < n; ++i) Add(index, static_cast<double>(i) / n);
  }

  void Close() {
    const Vec2 first = vertices_.front().point;
    if (Meet(vertices_.back().point, first, same_))
      vertices_.back().point = first;
    else
      vertices_.push_back({vertices_.back().span, 1, first});
  }

  const Cvseq* chain_;
  SpanList list_;
  double deviation_ = 0;
  double same_ = 0;  // the caller's coordinates
  Array<Vertex> vertices_;
  Array<CubicCell> cells_;
  Array<OnCells> cuts_;
  Chords chords_;
};

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoChainFlatten(const Cvseq* chain, double deviation, Coord** points,
                                 KurvoPlace** places, int32_t* count, GlobalVar* g) noexcept {
  if (points) *points = nullptr;
  if (places) *places = nullptr;
  if (count) *count = 0;
  return Answer(g, [&] {
    Require(count, KURVO_ERR_OPTION);
    Require(deviation > 0, KURVO_ERR_TOLERANCE);
    RequireFinite(deviation);
    Flattening flattening(chain, deviation);
    flattening.Run(GetEpsilon(g));
    flattening.HandOut(points, places, count);
  });
}
