#include "pair/piece.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "strand/roots.h"

namespace kurvo::outline {
namespace {

constexpr double kEighth = std::numbers::pi / 4;
constexpr double kLeastPart = 0x1p-40;  // of a span, in parameters: closer cuts are one

// Unit vectors of 22.5, 67.5, 112.5 and 157.5 degrees.
constexpr Vec2 kBorders[] = {{kCosBorder, kSinBorder},
                             {kSinBorder, kCosBorder},
                             {-kSinBorder, kCosBorder},
                             {-kCosBorder, kSinBorder}};

bool IsPoint(const Span& span) {
  if (span.kind == Span::Kind::kArc) return !(std::fabs(span.sweep) * span.radius > 0);
  const Bounds box = HullOf(span);
  return box.low == box.high;
}

// Where an arc's tangent, a quarter turn from its radius, has the direction of a border.
void AddCutsOfArc(const Span& span, RootList& cuts) {
  const double low = std::min(span.angle, span.angle + span.sweep);
  const double high = std::max(span.angle, span.angle + span.sweep);
  for (double k = std::floor(low / kEighth - 0.5); (k + 0.5) * kEighth < high; ++k) {
    const double u = ((k + 0.5) * kEighth - span.angle) / span.sweep;
    if (u > 0 && u < 1) cuts.Add(u);
  }
}

// Where P' x d changes its sign; of a rational curve with P = W / w the numerator of P', that is
// W' w - W w', which has degree 2 n - 2.
void AddCutsOfBezier(const Span& span, Vec2 direction, RootList& cuts) {
  const int n = span.degree;
  double c[kMostRootDegree + 1];
  if (span.kind == Span::Kind::kBezier) {
    for (int i = 0; i < n; ++i) c[i] = Cross(span.points[i + 1] - span.points[i], direction);
    return AddSignChanges(c, n - 1, cuts);
  }
  double w[kMostDegree + 1], p[kMostDegree + 1];
  for (int i = 0; i <= n; ++i) {
    w[i] = span.weights[i];
    p[i] = Cross(span.points[i], direction);
  }
  const int degree = QuotientNumerator(p, w, n, c);
  AddSignChanges(c, degree, cuts);
}

void AddPieces(const Span& span, int32_t source, PieceList& list) {
  RootList cuts;
  if (span.kind == Span::Kind::kArc) {
    AddCutsOfArc(span, cuts);
  } else if (span.degree > 1) {
    for (const Vec2 border : kBorders) AddCutsOfBezier(span, border, cuts);
  }
  std::array<double, 4 * kMostRootDegree + 2> ends;
  std::size_t count = 0;
  ends[count++] = 0;
  std::copy(cuts.begin(), cuts.end(), ends.begin() + 1);
  std::sort(ends.begin() + 1, ends.begin() + 1 + cuts.size());
  for (std::size_t i = 1; i <= cuts.size(); ++i) {
    const double cut = ends[i];
    if (cut - ends[count - 1] > kLeastPart && 1 - cut > kLeastPart) ends[count++] = cut;
  }
  ends[count++] = 1;
  for (std::size_t i = 0; i + 1 < count; ++i) {
    Piece piece;
    piece.span = PartOf(span, ends[i], ends[i + 1], list.arena);
    piece.source = source;
    piece.from = ends[i];
    piece.to = ends[i + 1];
    const Vec2 direction = TangentAt(piece.span, 0.5);
    const auto sector = std::lround(std::atan2(direction.y, direction.x) / kEighth);
    piece.sector = static_cast<int>((sector % 4 + 4) % 4);
    piece.box = HullOf(piece.span);
    list.pieces.push_back(piece);
  }
}

}  // namespace

void CutIntoPieces(const Array<Span>& spans, std::size_t first, PieceList& list) {
  const std::size_t had = list.pieces.size();
  for (std::size_t i = first; i < spans.size(); ++i)
    if (!IsPoint(spans[i])) AddPieces(spans[i], static_cast<int32_t>(i), list);
  if (list.pieces.size() == had && spans.size() > first)
    AddPieces(spans[first], static_cast<int32_t>(first), list);
}

Array<Bounds> BoxesOf(const Array<Piece>& pieces) {
  Array<Bounds> boxes;
  boxes.reserve(pieces.size());
  for (const Piece& piece : pieces) boxes.push_back(piece.box);
  return boxes;
}

}  // namespace kurvo::outline
