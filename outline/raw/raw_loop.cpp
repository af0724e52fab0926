#include "raw/raw_loop.h"

#include <cmath>
#include <iterator>

namespace kurvo::outline {
namespace {

void Put(Vec2 p, double* to) {
  to[0] = p.x;
  to[1] = p.y;
  to[2] = 0;
}

template <class Block>
Block* NewBlock(int32_t type, Arena& arena, Curve& curve) {
  auto* block = arena.New<Block>(1);
  *block = {};
  curve.type = type;
  curve.data = block;
  return block;
}

// A piece between two points of the caller's coordinates.
void Write(const OffsetPiece& piece, const Frame& frame, Vec2 start, Vec2 end, Arena& arena,
           Curve& curve) {
  if (piece.kind == OffsetPiece::Kind::kArc) {
    auto* arc = NewBlock<KurvoArc>(CV_ARC, arena, curve);
    arc->radius = frame.LengthOutwards(piece.radius);
    Put(frame.Outwards(piece.centre), arc->centre);
    arc->normal[2] = piece.clockwise ? -1 : 1;
    Put(start, arc->start);
    Put(end, arc->end);
  } else if (piece.kind == OffsetPiece::Kind::kCubic) {
    auto* bezier = NewBlock<KurvoBezier>(CV_BEZIER, arena, curve);
    const Vec2 points[] = {start, frame.Outwards(piece.points[1]), frame.Outwards(piece.points[2]),
                           end};
    constexpr std::size_t kCount = std::size(points), kNumbers = kCount * std::size(Coord{});
    bezier->degree = static_cast<int32_t>(kCount) - 1;
    bezier->points = reinterpret_cast<Coord*>(arena.New<double>(kNumbers));
    for (std::size_t i = 0; i < kCount; ++i) Put(points[i], bezier->points[i]);
  } else {
    auto* line = NewBlock<KurvoLine>(CV_LINE, arena, curve);
    Put(start, line->start);
    Put(end, line->end);
  }
}

}  // namespace

void RawLoop::LineTo(Vec2 end) {
  constexpr double kRounding = 0x1p-49;
  if (kRounding * (std::fabs(end.x) + std::fabs(end.y)) >= Length(end - at_)) return;
  curves_.push_back({{OffsetPiece::Kind::kLine, false, {at_, {}, {}, end}, {}, 0, 0, 0}, origin_});
  at_ = end;
}

void RawLoop::ArcTo(Vec2 centre, double radius, bool clockwise, Vec2 end) {
  curves_.push_back(
      {{OffsetPiece::Kind::kArc, clockwise, {at_, {}, {}, end}, centre, radius, 0, 0}, origin_});
  at_ = end;
}

void RawLoop::Piece(const OffsetPiece& piece) {
  curves_.push_back({piece, origin_});
  curves_.back().origin.from = piece.from;
  curves_.back().origin.to = piece.to;
  at_ = piece.points[3];
}

void RawLoop::Close(RawRegion& region) {
  if (!(at_ == start_)) LineTo(start_);
  if (curves_.empty()) return;
  const int32_t count = CountOf(curves_.size());
  auto* records = region.records.New<Curve>(curves_.size());
  ReserveMore(region.origins, curves_.size());
  const Vec2 first = frame_.Outwards(start_);
  Vec2 start = first;
  for (int i = 0; i < count; ++i) {
    const auto& [piece, origin] = curves_[static_cast<std::size_t>(i)];
    const Vec2 end = i == count - 1 ? first : frame_.Outwards(piece.points[3]);
    records[i] = origin.kind == KURVO_ORIGIN_OFFSET ? source_.curves[origin.curve] : Curve();
    Write(piece, frame_, start, end, region.records, records[i]);
    region.origins.push_back(origin);
    start = end;
  }
  region.loops.push_back({count, records});
  curves_.clear();
}

}  // namespace kurvo::outline
