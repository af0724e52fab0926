// The pieces of a curve of any type in the form that the distance between curves works on.
#include "relate/distance/distance_pieces.h"

#include <algorithm>
#include <cmath>

#include "calc/arc_span.h"
#include "control/bezier_pieces.h"
#include "foundation/error_codes.h"
#include "relate/piece_bounds.h"

namespace kurvo {
namespace {

// Makes room for `more` elements behind those of `v`. Unlike reserve(), which may take just what is
// asked for, it at least doubles what has to grow: many small parts cost no more than one large.
template <class T>
void ReserveMore(std::vector<T>& v, std::size_t more) {
  const std::size_t needed = v.size() + more;
  if (needed > v.capacity()) v.reserve(std::max(needed, 2 * v.capacity()));
}

constexpr double kQuarter = 0.5 * kPi;

bool Finite(const WeightedPoint& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.w) && p.w != 0.0;
}

}  // namespace

double CirclePart::ParameterOf(Vec2 direction) const {
  if (turn == 0.0 || (direction.x == 0.0 && direction.y == 0.0)) return 0.0;
  const Vec2 middle = {std::cos(angle + 0.5 * turn), std::sin(angle + 0.5 * turn)};
  const double aside = std::atan2(Cross(middle, direction), Dot(middle, direction));
  return 0.5 + aside / turn;
}

double DistancePiece::FromBezier(double s) const {
  if (kind != PieceKind::kArc || s == 0.0 || s == 1.0) return s;
  return std::clamp(circle.ParameterOf(PointAt(bezier, s) - circle.centre), 0.0, 1.0);
}

DistancePieces::DistancePieces(const Curve& curve, double length_tol) : tol_(length_tol) {
  const auto add = [this](const Curve& leaf, const auto& view, LeafStretch on) {
    return Add(leaf, view, on);
  };
  refused_ = !AllLeafStretches(curve, add);
  if (refused_) pieces_.clear();
  const WeightedPoint* next = points_.data();  // all points are in place now
  for (DistancePiece& piece : pieces_) next = SetPoints(next, piece.bezier);
}

// False for a record that cannot be right, or a degree that is too high.
bool DistancePieces::Add(const Curve& leaf, const auto&, LeafStretch on) {
  return AddSpans(leaf, on.start, on.width);
}

bool DistancePieces::Add(const Curve&, const KurvoLine& line, LeafStretch on) {
  AddLine(line, on.start, on.width);
  return true;
}

bool DistancePieces::Add(const Curve&, const KurvoArc& arc, LeafStretch on) {
  AddArc(arc, on.start, on.width);
  return true;
}

bool DistancePieces::Add(const Curve&, Refused, LeafStretch) { return false; }

void DistancePieces::AddLine(const KurvoLine& line, double offset, double scale) {
  const std::size_t first = points_.size();
  points_.push_back({line.start[0], line.start[1], 1.0});
  points_.push_back({line.end[0], line.end[1], 1.0});
  AddPiece(PieceKind::kLine, false, {}, offset, scale, first);
}

// In parts of at most a quarter of a turn, as rational quadratics: the inner control point is where
// the tangents of the ends meet, its weight the cosine of half the turn.
void DistancePieces::AddArc(const KurvoArc& arc, double offset, double scale) {
  const ArcSpan span = SpanOf(arc, tol_);
  const double way = span.reversed ? -span.sweep : span.sweep;
  const double half_turn = arc.radius < 0.0 ? kPi : 0.0;
  const double from = span.start_angle + (span.reversed ? span.sweep : 0.0) + half_turn;
  const double radius = std::fabs(arc.radius);
  if (!std::isfinite(way) || !std::isfinite(radius)) return;
  const int parts = std::max(1, static_cast<int>(std::ceil(std::fabs(way) / kQuarter - 1e-9)));
  for (int i = 0; i < parts; ++i) {
    const double turn = way / parts;
    const CirclePart circle{Planar(arc.centre), radius, from + i * turn, turn};
    const std::size_t first = points_.size();
    const Vec2 start = circle.At(0.0), end = circle.At(1.0);
    const double cosine = std::cos(0.5 * turn), middle = circle.angle + 0.5 * turn;
    const Vec2 corner =
        circle.centre + (radius / cosine) * Vec2{std::cos(middle), std::sin(middle)};
    points_.push_back({start.x, start.y, 1.0});
    points_.push_back({corner.x, corner.y, cosine});
    points_.push_back({end.x, end.y, 1.0});
    AddPiece(PieceKind::kArc, true, circle, offset + scale * i / parts, scale / parts, first);
  }
}

bool DistancePieces::AddSpans(const Curve& curve, double offset, double scale) {
  const auto counts = CountBezierSpans(curve, kMaxPieceDegree);
  if (!counts) return false;
  ReserveMore(points_, counts->points.value());
  ReserveMore(pieces_, counts->spans.value());
  ForEachBezierSpan(curve, [&](const BezierSpan& span) {
    const std::size_t first = points_.size();
    AppendPiece(span, span.rational, points_);
    double weight = 0.0;
    for (std::size_t i = first; i < points_.size(); ++i)
      weight = std::max(weight, std::fabs(points_[i].w));
    if (std::isfinite(weight) && weight > 0.0) {  // near 1, so that products stay in range
      const int exponent = std::ilogb(weight);
      for (std::size_t i = first; i < points_.size(); ++i)
        points_[i].w = std::ldexp(points_[i].w, -exponent);
    }
    AddPiece(PieceKind::kFreeForm, span.rational, {}, offset + span.start * scale,
             span.width * scale, first);
  });
  return true;
}

// Takes the points from the first one on; gives them back when the piece is not finite.
void DistancePieces::AddPiece(PieceKind kind, bool rational, const CirclePart& circle, double start,
                              double width, std::size_t first_point) {
  const auto first = points_.begin() + static_cast<std::ptrdiff_t>(first_point);
  if (!std::all_of(first, points_.end(), Finite)) {
    points_.resize(first_point);
    return;
  }
  const auto degree = static_cast<int32_t>(points_.size() - first_point) - 1;
  pieces_.push_back({kind, {nullptr, degree, rational, start, width}, circle});
}

double DistancePieces::LargestCoordinate() const {
  double largest = 0.0;
  for (const WeightedPoint& p : points_)
    largest = std::max(largest, std::max(std::fabs(p.x), std::fabs(p.y)));
  return largest;
}

void DistancePieces::Scale(double scale) {
  for (WeightedPoint& p : points_) p = {scale * p.x, scale * p.y, p.w};
  for (DistancePiece& piece : pieces_) {
    piece.circle.centre = scale * piece.circle.centre;
    piece.circle.radius *= scale;
  }
}

void DistancePieces::BuildTree() {
  for (DistancePiece& piece : pieces_) piece.bezier.box = EnclosureOf(piece.bezier);
  if (pieces_.size() < 2) return;
  std::size_t leaves = 1;
  while (leaves < pieces_.size()) leaves *= 2;
  boxes_.resize(leaves);  // of the inner nodes
  Build(Whole());
}

PlanarBox DistancePieces::Build(const Range& range) {
  if (range.single()) return pieces_[range.begin].bezier.box;
  PlanarBox box = Build(range.First());
  box.Widen(Build(range.Second()));
  boxes_[range.node] = box;
  return box;
}

}  // namespace kurvo
