#include "raw/raw_loop.h"

#include <cmath>

#include "fit/pieces.h"

namespace kurvo::outline {

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
  const Curve no_source = {};
  Pieces pieces(frame_);
  pieces.Reserve(curves_.size());
  ReserveMore(region.origins, curves_.size());
  const Vec2 start = frame_.Outwards(start_);
  pieces.StartAt(start);
  for (const RawCurve& curve : curves_) {
    const OffsetPiece& piece = curve.piece;
    const bool is_last = &curve == &curves_.back();
    const Vec2 end = is_last ? start : frame_.Outwards(piece.points[3]);
    pieces.Begin(curve.origin.kind == KURVO_ORIGIN_OFFSET ? &source_.curves[curve.origin.curve]
                                                          : &no_source);
    if (piece.kind == OffsetPiece::Kind::kArc)
      pieces.Arc(piece.centre, piece.radius, piece.clockwise, end);
    else if (piece.kind == OffsetPiece::Kind::kCubic)
      pieces.Cubic(piece.points[1], piece.points[2], end);
    else
      pieces.Line(end);
    region.origins.push_back(curve.origin);
  }
  region.loops.Add(pieces.Take());
  curves_.clear();
}

}  // namespace kurvo::outline
