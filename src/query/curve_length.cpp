// The length of a curve between two parameters.
#include <algorithm>
#include <cmath>

#include "build/convert.h"
#include "build/extend_rules.h"
#include "calc/arc_span.h"
#include "control/bezier_pieces.h"
#include "control/reparametrise.h"
#include "control/weights.h"
#include "foundation/guard.h"
#include "foundation/rounded_compare.h"
#include "foundation/work_area.h"
#include "query/bezier_length.h"
#include "records/domain.h"
#include "records/pieces.h"
#include "records/well_formed.h"

namespace kurvo {
namespace {

// A stretch of a curve's parameters. One that reaches both ends of the domain, to six decimals of
// its length, is the domain.
struct Stretch {
  double from;
  double to;

  Stretch OrWhole(double start, double end) const {
    const double length = end - start;
    const bool whole = CompareRounded((from - start) / length, 0.0) == 0 &&
                       CompareRounded((to - start) / length, 1.0) == 0;
    return whole ? Stretch{start, end} : *this;
  }

  // The part on a piece that covers [start, start + width], in the piece's own parameter; beyond
  // its ends where these are the ends of the curve.
  Stretch OnPiece(double start, double width, bool first, bool last) const {
    const double s0 = (from - start) / width;
    const double s1 = (to - start) / width;
    return {first ? s0 : std::max(s0, 0.0), last ? s1 : std::min(s1, 1.0)};
  }
};

double LengthOf(const Curve& curve, Stretch stretch, Measure measure, int level, GlobalVar& g);

double LengthOf(const KurvoLine& line, Stretch stretch) {
  return Length(Planar(line.end) - Planar(line.start)) * (stretch.to - stretch.from);
}

double LengthOf(const KurvoArc& arc, Stretch stretch, double tol) {
  return (stretch.to - stretch.from) * arc.radius * SpanOf(arc, tol).sweep;
}

template <std::size_t kDim>
double LengthOf(const BezierView<kDim>& bezier, Stretch stretch, Measure measure, GlobalVar& g) {
  if (bezier.degree > kMaxHalvedDegree) return Refuse<double>(g, KURVO_ERR_CURVE);
  const auto [from, to] = stretch.OrWhole(0.0, 1.0);
  if (!(from < to)) return 0.0;
  if (from == 0.0 && to == 1.0) return BezierLength(bezier, measure);
  const auto count = static_cast<std::size_t>(bezier.degree) + 1;
  WorkArea<double[kDim], kStackOrder> points(count);
  std::copy_n(bezier.points[0], count * kDim, points[0]);
  Reparametrise(points.data(), bezier.degree, from, to);
  return BezierLength(BezierView<kDim>{bezier.degree, points.data()}, measure);
}

// Span by span, without a copy of the curve.
template <std::size_t kDim>
double LengthOf(const SplineView<kDim>& spline, Stretch stretch, GlobalVar& g) {
  if (spline.order - 1 > kMaxHalvedDegree) return Refuse<double>(g, KURVO_ERR_CURVE);
  const KnotVector knots = KnotsOf(spline);
  const Stretch whole = stretch.OrWhole(knots.Start(), knots.End());
  const int32_t last = LastSpan(knots);
  WorkArea<double[kDim], kStackOrder> points(static_cast<std::size_t>(spline.order));
  const BezierView<kDim> bezier{spline.order - 1, points.data()};
  bool first = true;
  double sum = 0.0;
  AnySpan(knots, [&](int32_t i) {
    const double* u = knots.u + i;
    const Stretch on_span = whole.OnPiece(u[0], u[1] - u[0], first, i == last);
    first = false;
    if (!(on_span.from < on_span.to)) return false;
    ExtractBezier(spline, i, points.data());
    sum += LengthOf(bezier, on_span, Measure::kSixteenths, g);
    return false;
  });
  return sum;
}

// Pieces of every type count. One without a width is measured whole where its place is.
double LengthOf(const CompositeView& composite, Stretch stretch, int level, GlobalVar& g) {
  if (level >= kMaxNesting) return Refuse<double>(g, KURVO_ERR_CURVE);
  const Stretch whole = stretch.OrWhole(0.0, DomainOf(composite).end);
  double sum = 0.0;
  for (const Piece piece : PiecesOf(composite)) {
    if (ErrorPending(g)) break;
    Stretch on_piece = {0.0, 1.0};
    if (piece.width > 0.0)
      on_piece = whole.OnPiece(piece.start, piece.width, piece.index == 0,
                               piece.index == composite.count - 1);
    else if (!(whole.from <= piece.start && piece.start <= whole.to))
      on_piece.to = 0.0;
    if (on_piece.from < on_piece.to)
      sum += LengthOf(piece.curve, on_piece, Measure::kSixteenths, level + 1, g);
  }
  return sum;
}

bool HasNaN(const double* knots, int32_t count) {
  return std::any_of(knots, knots + count, [](double knot) { return std::isnan(knot); });
}

// `level` counts the composites around the curve.
double LengthOf(const Curve& curve, Stretch stretch, Measure measure, int level, GlobalVar& g) {
  return VisitCurve(
      curve, Overloaded{[&](const KurvoLine& line) { return LengthOf(line, stretch); },
                        [&](const KurvoArc& arc) { return LengthOf(arc, stretch, g.epsilon); },
                        [&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                          return LengthOf(bezier, stretch, measure, g);
                        },
                        [&](const SplineView<3>& spline) { return LengthOf(spline, stretch, g); },
                        [&](const SplineView<4>& spline) {
                          if (!WeightsRoundToOne(spline.points, spline.count))
                            return LengthOf(spline, stretch, g);
                          const OwnedCurve plain = Converted(curve, CV_BSPLINE, g);
                          return LengthOf(plain.curve(), stretch, measure, level, g);
                        },
                        [&](const CompositeView& composite) {
                          return LengthOf(composite, stretch, level, g);
                        },
                        [&](Refused) { return Refuse<double>(g, KURVO_ERR_CURVE); }});
}

// The code for a record or a knot that cannot be.
int32_t RefusalOf(const Curve& curve) {
  return VisitCurve(curve,
                    Overloaded{[](const auto&) -> int32_t { return KURVO_ERR_NONE; },
                               []<std::size_t kDim>(const SplineView<kDim>& spline) -> int32_t {
                                 // Fixed behaviour: callers know a knot that is not a number by
                                 // this code.
                                 return HasNaN(spline.knots, spline.order + spline.count)
                                            ? KURVO_ERR_MEMORY
                                            : KURVO_ERR_NONE;
                               },
                               [](Refused) -> int32_t { return KURVO_ERR_CURVE; }});
}

bool WeightsArePositive(const Curve& curve) {
  return VisitCurve(curve, Overloaded{[](const auto&) { return true; },
                                      [](const BezierView<4>& bezier) {
                                        return HasPositiveWeights(bezier.points, bezier.degree + 1);
                                      },
                                      [](const SplineView<4>& spline) {
                                        return HasPositiveWeights(spline.points, spline.count);
                                      }});
}

// A free-form curve has a length only where it can be cut out or continued as an extension does it:
// what that refuses is refused here, by the same code. Between the ends weights that are positive
// stay so, and a plain Bezier curve can go on anywhere.
bool CanBeCut(const Curve& curve, Stretch stretch, GlobalVar& g) {
  if (curve.type == CV_LINE || curve.type == CV_ARC) return true;
  const Domain domain = DomainOf(curve);
  if (!(domain.width() > 0.0)) return true;  // nothing to cut
  const Stretch whole = stretch.OrWhole(domain.start, domain.end);
  if (whole.from == domain.start && whole.to == domain.end) return true;
  const double unit = curve.type == CV_SEGCV ? 1.0 : domain.width();
  const Extension by{(domain.start - stretch.from) / unit, (stretch.to - domain.end) / unit};
  const bool inside = (by.start <= 0.0 && by.end <= 0.0) || curve.type == CV_BEZIER;
  const bool narrow = CompareRounded(-by.start, domain.width() / unit + by.end) >= 0;
  if (inside && !narrow && WeightsArePositive(curve)) return true;
  if (WellFormed(curve))
    Extended(curve, by, g);
  else
    Fail(g, KURVO_ERR_CURVE);
  return !ErrorPending(g);
}

double SignedLength(const Curve& curve, double t0, double t1, GlobalVar& g) {
  int32_t refusal = RefusalOf(curve);
  if (refusal == KURVO_ERR_NONE && !(std::isfinite(t0) && std::isfinite(t1)))
    refusal = KURVO_ERR_CURVE;
  if (refusal != KURVO_ERR_NONE) return Refuse<double>(g, refusal);
  if (t0 <= t1 + g.epsilon && t1 - g.epsilon <= t0) return 0.0;
  const Stretch stretch{std::min(t0, t1), std::max(t0, t1)};
  if (!CanBeCut(curve, stretch, g)) return 0.0;
  const double length = LengthOf(curve, stretch, Measure::kWhole, 0, g);
  return t0 > t1 ? -length : length;
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvCurveLen(const Curve* curve, double t0, double t1, double* length,
                                GlobalVar* g) noexcept {
  *length = 0.0;
  if (kurvo::ErrorPending(*g)) return;
  if (!curve) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  const auto measure = [&] { return kurvo::SignedLength(*curve, t0, t1, *g); };
  const double measured = kurvo::Guard(*g, 0.0, measure);
  if (!kurvo::ErrorPending(*g)) *length = measured;
}
