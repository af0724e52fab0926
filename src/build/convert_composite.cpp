// Conversion of composites: of their only piece, or of all pieces joined into one B-spline.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "build/arc_recognition.h"
#include "build/convert_from.h"
#include "records/domain.h"
#include "records/new_records.h"
#include "records/pieces.h"

namespace kurvo {
namespace {

// Fixed behaviour: a rational piece whose weights are equal comes out as a Bezier curve, a Bezier
// piece does not: callers count on a composite of Bezier pieces staying one. Do not unify.
OwnedCurve OnlyPieceToBezier(const Curve& piece, GlobalVar& g) {
  return piece.type == CV_RBEZIER ? Converted(piece, CV_BEZIER, g) : OwnedCurve();
}

OwnedCurve OnlyPieceToRationalBezier(const Curve& piece, GlobalVar& g) {
  if (piece.type != CV_BEZIER && piece.type != CV_RBEZIER) return {};
  return Converted(piece, CV_RBEZIER, g);
}

constexpr int32_t kNotJoinable = -1;

// The degree of a piece that may be part of a plain (3) or rational (4) B-spline.
template <std::size_t kTo>
int32_t JoinableDegree(const Curve& piece) {
  return VisitCurve(piece, Overloaded{[](const BezierView<3>& bezier) { return bezier.degree; },
                                      [](const BezierView<4>& bezier) {
                                        return kTo == 4 ? bezier.degree : kNotJoinable;
                                      },
                                      [](const auto&) { return kNotJoinable; }});
}

// The degree that all pieces have in common.
template <std::size_t kTo>
int32_t CommonDegree(const CompositeView& composite) {
  if (composite.count == 0) return kNotJoinable;
  const int32_t degree = JoinableDegree<kTo>(composite.curves[0]);
  for (int32_t i = 1; i < composite.count; ++i)
    if (JoinableDegree<kTo>(composite.curves[i]) != degree) return kNotJoinable;
  return degree;
}

// The factor for the weights of a piece, which keeps its geometry and makes its first weight meet
// the last one before it. Nothing when there is none.
std::optional<double> WeightFactor(double before, double start) {
  if (before == start) return 1.0;
  const double factor = before / start;
  if (!std::isfinite(factor) || factor == 0.0) return std::nullopt;
  return factor;
}

// Writes the control points of a piece, the first of which lies at `out` already unless the piece
// is the first: neighbours are taken to share their joint. False when its weights cannot be joined.
template <std::size_t kTo, std::size_t kFrom>
bool WritePiece(const BezierView<kFrom>& bezier, bool first, double (*out)[kTo]) {
  for (int32_t i = first ? 0 : 1; i <= bezier.degree; ++i) {
    if constexpr (kFrom == kTo)
      std::copy_n(bezier.points[i], kTo, out[i]);
    else
      FlattenPoint(bezier.points[i], out[i]);
  }
  if constexpr (kTo == 4) {
    if (first) return true;
    const double start_weight = kFrom == 4 ? bezier.points[0][kFrom - 1] : 1.0;
    const auto factor = WeightFactor(out[0][3], start_weight);
    if (!factor) return false;
    for (int32_t i = 1; i <= bezier.degree; ++i) out[i][3] *= *factor;
  }
  return true;
}

template <std::size_t kTo>
bool WritePoints(const CompositeView& composite, int32_t degree, double (*out)[kTo]) {
  for (int32_t i = 0; i < composite.count; ++i) {
    const bool written = VisitCurve(
        composite.curves[i],
        Overloaded{[&](const BezierView<3>& bezier) { return WritePiece(bezier, i == 0, out); },
                   [&](const BezierView<4>& bezier) {
                     if constexpr (kTo == 4)
                       return WritePiece(bezier, i == 0, out);
                     else
                       return false;
                   },
                   [](const auto&) { return false; }});
    if (!written) return false;
    out += degree;
  }
  return true;
}

// Clamped knots over [0, 1], each joint at its share of the widths and `degree` times.
void WriteKnots(const CompositeView& composite, int32_t degree, double total, double* knots) {
  knots = std::fill_n(knots, degree + 1, 0.0);
  for (const Piece piece : PiecesOf(composite))
    if (piece.index > 0) knots = std::fill_n(knots, degree, piece.start / total);
  std::fill_n(knots, degree + 1, 1.0);
}

// One B-spline of all pieces, which must be Bezier curves of the same degree.
template <std::size_t kTo>
OwnedCurve Joined(const CompositeView& composite) {
  const int32_t degree = CommonDegree<kTo>(composite);
  if (degree == kNotJoinable) return {};
  const double total = DomainOf(composite).end;
  if (!(total > 0.0 && std::isfinite(total))) return {};
  const int64_t count = int64_t{degree} * composite.count + 1;
  if (count + degree + 1 > kMaxIndex) return {};

  OwnedCurve spline(kSplineType<kTo>, {.order = degree + 1, .count = static_cast<int32_t>(count)});
  auto& block = spline.block<SplineBlock<kTo>>();
  if (!WritePoints(composite, degree, block.points)) return {};
  WriteKnots(composite, degree, total, block.knots);
  return spline;
}

}  // namespace

OwnedCurve ConvertFrom(const CompositeView& composite, int32_t type, const Curve& source,
                       GlobalVar& g) {
  switch (type) {
    case CV_ARC:
      return NewArc(RecogniseArcs(source, composite, g));
    case CV_BEZIER:
      return composite.count == 1 ? OnlyPieceToBezier(composite.curves[0], g) : OwnedCurve();
    case CV_RBEZIER:
      return composite.count == 1 ? OnlyPieceToRationalBezier(composite.curves[0], g)
                                  : OwnedCurve();
    case CV_BSPLINE:
      return Joined<3>(composite);
    case CV_RBSPLINE:
      return Joined<4>(composite);
    default:
      return {};
  }
}

}  // namespace kurvo
