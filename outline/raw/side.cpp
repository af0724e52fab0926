#include "raw/side.h"

#include <algorithm>
#include <cmath>

namespace kurvo::outline {
namespace {

constexpr double kSnap = 0x1p-4;       // of the tolerance: ends so near are one
constexpr double kReversal = 0x1p-28;  // radians: a turn so near half a turn has two outer sides

void NameOffset(const Strip& strip, RawLoop& loop) {
  loop.Name(IsBridge(strip.curve) ? KURVO_ORIGIN_BRIDGE : KURVO_ORIGIN_OFFSET, CurveOf(strip.curve),
            strip.from, strip.to);
}

// A joint is named after the curve that begins there.
void NameJoint(const Strip& after, RawLoop& loop) {
  loop.Name(KURVO_ORIGIN_JOIN, CurveOf(after.curve), after.from, after.from);
}

}  // namespace

void Side::AppendTo(RawLoop& loop) const {
  Corner before = {Kind::kSmooth, {}};
  if (is_closed_) before = CornerAfter(count() - 1);
  const Strip& first = At(0);
  const Vec2 start = before.kind == Kind::kShort ? before.cut.meet : first.First();
  if (is_closed_)
    loop.StartAt(start);
  else
    loop.LineTo(start);
  for (std::size_t i = 0; i < count(); ++i) {
    const bool has_corner = HasCorner(i);
    const Corner after = has_corner ? CornerAfter(i) : Corner{Kind::kSmooth, {}};
    AppendStrip(i, before, after, loop);
    if (has_corner) AppendCorner(i, after, loop);
    before = after;
  }
}

Side::Corner Side::CornerAfter(std::size_t i) const {
  Corner corner = PlainCornerAfter(i);
  if (corners_.is_region && corner.kind != Kind::kShort)
    corner.is_tip = IsTipAfter(i) && !(IsShort(At(i)) && IsTipAfter(i + count() - 1));
  return corner;
}

// The tip of a spike that is narrower than the tolerance may be turned inside out, and then has no
// outer side: there a bend is as tight as that, or the loop turns back within so short a way. With
// other joins than round ones only a curve that turns back within itself has a tip that is round.
bool Side::IsTipAfter(std::size_t i) const {
  const Strip &before = At(i), &after = At(i + 1);
  const bool is_tight = IsTight(before.last_reach, distance_, corners_.tol) ||
                        IsTight(after.reach, distance_, corners_.tol);
  if (corners_.is_disc) {
    const bool is_inner = 0 >= distance_ * Cross(before.arrives, after.leaves);
    return is_tight || (is_inner && TurnsBackAfter(i));
  }
  if (!after.is_within) return false;
  if (Dot(before.arrives, after.leaves) < 0) return true;
  return is_tight &&
         (Dot(before.end - before.start, after.end - after.start) < 0 || TurnsBackAfter(i));
}

// Whether the next strip leaves against the direction of one that is a short way back.
bool Side::TurnsBackAfter(std::size_t i) const {
  constexpr std::size_t kMostCorners = 16;
  for (std::size_t k = 0; k < std::min(kMostCorners, count()); ++k) {
    const Strip& strip = At(i + count() - k);
    if (!IsShort(strip)) return false;
    if (Dot(strip.leaves, At(i + 1).leaves) < 0) return true;
  }
  return false;
}

Side::Corner Side::PlainCornerAfter(std::size_t i) const {
  const Strip& before = At(i);
  const Strip& after = At(i + 1);
  const Vec2 t1 = before.arrives, t2 = after.leaves;
  const double sine = Cross(t1, t2), cosine = Dot(t1, t2), d = std::fabs(distance_);
  if (cosine > 0 && kSnap * corners_.tol >= d * Length(t1 - t2)) return {Kind::kSmooth, {}};
  if (d == 0) return {Kind::kSmooth, {}};
  if (0 >= distance_ * sine) {
    const auto cut = FindShortCut(list_, before, after, distance_, kSnap * corners_.tol);
    if (cut) return {Kind::kShort, *cut};
  }
  if (cosine < 0 && (corners_.is_disc || kReversal >= std::fabs(sine))) return {Kind::kOuter, {}};
  return {distance_ * sine > 0 ? Kind::kOuter : Kind::kInner, {}};
}

// A strip that is cut short has one piece.
void Side::AppendStrip(std::size_t i, const Corner& before, const Corner& after,
                       RawLoop& loop) const {
  const Strip& strip = At(i);
  NameOffset(strip, loop);
  for (std::size_t k = 0; k < strip.piece_count; ++k) {
    OffsetPiece piece = list_.pieces[strip.first_piece + k];
    const double from = piece.from, width = piece.to - piece.from;
    if (before.kind == Kind::kShort) piece.from = from + before.cut.after * width;
    if (after.kind == Kind::kShort) {
      piece.to = from + after.cut.before * width;
      piece.points[3] = after.cut.meet;
    }
    loop.Piece(piece);
  }
}

void Side::AppendCorner(std::size_t i, const Corner& corner, RawLoop& loop) const {
  const Strip& before = At(i);
  const Strip& after = At(i + 1);
  if (corner.kind == Kind::kShort) return;
  NameJoint(after, loop);
  if (corner.is_tip) AppendDisc(before, loop);
  if (corner.kind == Kind::kSmooth) {
    if (Length(before.Last() - after.First()) > 2 * kSnap * corners_.tol)
      loop.LineTo(after.First());
    return;
  }
  if (corner.kind == Kind::kInner) {
    loop.LineTo(after.start);
  } else {
    loop.LineTo(before.end + distance_ * Right(before.arrives));
    AppendJoin(before, after, after.start + distance_ * Right(after.leaves), loop);
  }
  loop.LineTo(after.First());
}

// All that is within the distance of the vertex, there and back.
void Side::AppendDisc(const Strip& before, RawLoop& loop) const {
  const Vec2 v = before.end, spoke = distance_ * Right(before.arrives);
  loop.LineTo(v + spoke);
  loop.ArcTo(v, std::fabs(distance_), distance_ < 0, v - spoke);
  loop.ArcTo(v, std::fabs(distance_), distance_ < 0, v + spoke);
  loop.LineTo(before.Last());
}

// The tip of a miter is 1 / cos(turn / 2) distances from the vertex.
void Side::AppendJoin(const Strip& before, const Strip& after, Vec2 end, RawLoop& loop) const {
  const Vec2 v = after.start, t1 = before.arrives, t2 = after.leaves;
  if (corners_.join == KURVO_JOIN_ROUND)
    return loop.ArcTo(v, std::fabs(distance_), distance_ < 0, end);
  const double open = 1 + Dot(t1, t2);  // 2 cos^2(turn / 2)
  const bool is_reversal = Dot(t1, t2) < 0 && kReversal >= std::fabs(Cross(t1, t2));
  const double limit = corners_.miter_limit;
  if (corners_.join == KURVO_JOIN_MITER && !is_reversal && limit * limit * open >= 2)
    loop.LineTo(v + (distance_ / open) * Right(t1 + t2));
  loop.LineTo(end);
}

}  // namespace kurvo::outline
