// The Bezier pieces of a free-form curve in the form that intersection works on.
#include "relate/intersect/free_form_pieces.h"

#include <cmath>

#include "foundation/error_codes.h"
#include "records/pieces.h"

namespace kurvo {
namespace {

bool Finite(const BezierSpan& span) {
  for (int32_t i = 0; i <= span.degree; ++i) {
    const double* p = span.points + static_cast<std::ptrdiff_t>(i) * span.stride();
    if (!std::isfinite(p[0]) || !std::isfinite(p[1])) return false;
    if (span.rational && !(std::isfinite(p[3]) && p[3] != 0.0)) return false;
  }
  return true;
}

// A rational span with equal weights is the plain one of the same points.
bool HasWeights(const BezierSpan& span) {
  for (int32_t i = 1; span.rational && i <= span.degree; ++i)
    if (span.points[static_cast<std::ptrdiff_t>(i) * 4 + 3] != span.points[3]) return true;
  return false;
}

}  // namespace

FreeFormPieces::FreeFormPieces(const Curve& curve, CompositePieces which, int32_t max_degree,
                               GlobalVar& g) {
  const bool whole = which == CompositePieces::kAll || curve.type != CV_SEGCV;
  if (!(whole ? Add(curve, 0.0, 1.0, max_degree) : AddBezierRecords(curve, max_degree))) {
    pieces_.clear();
    Fail(g, KURVO_ERR_CURVE);
  }
  const WeightedPoint* next = points_.data();  // all points are in place now
  for (BezierPiece& piece : pieces_) next = SetPoints(next, piece);
}

// False for a record that cannot be right, or a degree that is too high.
bool FreeFormPieces::Add(const Curve& curve, double offset, double scale, int32_t max_degree) {
  const auto counts = CountBezierSpans(curve, max_degree);
  if (!counts) return false;
  points_.reserve((counts->points + points_.size()).value());
  pieces_.reserve((counts->spans + pieces_.size()).value());
  ForEachBezierSpan(curve, [&](const BezierSpan& span) {
    if (Finite(span)) AddSpan(span, offset, scale);
  });
  return true;
}

bool FreeFormPieces::AddBezierRecords(const Curve& curve, int32_t max_degree) {
  const auto add = [&](const Piece& piece) {
    const bool bezier = piece.curve.type == CV_BEZIER || piece.curve.type == CV_RBEZIER;
    return !bezier || Add(piece.curve, piece.start, piece.width, max_degree);
  };
  return VisitCurve(curve, Overloaded{[](const auto&) { return false; },
                                      [&](const CompositeView& composite) {
                                        for (const Piece piece : PiecesOf(composite))
                                          if (!add(piece)) return false;
                                        return true;
                                      }});
}

void FreeFormPieces::AddSpan(const BezierSpan& span, double offset, double scale) {
  BezierPiece piece = AppendPiece(span, HasWeights(span), points_);
  piece.start = offset + span.start * scale;
  piece.width = span.width * scale;
  pieces_.push_back(piece);
}

}  // namespace kurvo
