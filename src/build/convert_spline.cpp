// Conversion of B-splines and rational B-splines.
#include <algorithm>

#include "build/arc_recognition.h"
#include "build/convert_from.h"
#include "control/bezier_pieces.h"
#include "control/spline_point.h"
#include "control/weights.h"
#include "records/new_records.h"
#include "records/widths.h"

namespace kurvo {
namespace {

// True for a Bezier curve in all but its record: two different knots, each exactly `order` times.
template <std::size_t kDim>
bool IsSingleSpan(const SplineView<kDim>& spline) {
  const int32_t k = spline.order;
  const double* u = spline.knots;
  if (spline.count != k || !(u[0] < u[k])) return false;
  return std::all_of(u, u + k, [u](double knot) { return knot == u[0]; }) &&
         std::all_of(u + k, u + 2 * k, [u, k](double knot) { return knot == u[k]; });
}

// Knots and points as they are, the points as those of the other kind.
template <std::size_t kTo, std::size_t kFrom>
OwnedCurve FlatSpline(const SplineView<kFrom>& spline) {
  OwnedCurve curve(kSplineType<kTo>, {.order = spline.order, .count = spline.count});
  auto& block = curve.block<SplineBlock<kTo>>();
  FlattenPoints(spline.points, spline.count, block.points);
  CopyArray(spline.knots, spline.order + spline.count, block.knots);
  return curve;
}

template <std::size_t kDim>
OwnedCurve CompositeOfSpans(const SplineView<kDim>& spline) {
  const KnotVector knots = KnotsOf(spline);
  const int32_t count = CountSpans(knots);
  if (count == 0 || spline.order > kMaxSplineOrder) return {};
  OwnedCurve composite(CV_SEGCV, {.count = count});
  auto& block = composite.block<KurvoSegcv>();
  const double range = knots.End() - knots.Start();
  Widths widths;
  int32_t n = 0;
  ExtractAllBeziers(
      spline,
      [&](int32_t i) {
        double(*points)[kDim] = nullptr;
        OwnedCurve piece =
            NewBezier<kDim>(spline.order - 1, [&](double(*to)[kDim]) { points = to; });
        block.curves[n] = piece.Release();
        block.widths[n] = widths.UpTo((spline.knots[i + 1] - knots.Start()) / range);
        ++n;
        return points;
      },
      [](int32_t) {});
  return composite;
}

}  // namespace

OwnedCurve ConvertFrom(const SplineView<3>& spline, int32_t type) {
  const int32_t degree = spline.order - 1;
  switch (type) {
    case CV_BEZIER:
      return IsSingleSpan(spline) ? CopiedBezier(spline.points, degree) : OwnedCurve();
    case CV_RBEZIER:
      return IsSingleSpan(spline) ? FlatBezier<4>(spline.points, degree) : OwnedCurve();
    case CV_RBSPLINE:
      return FlatSpline<4>(spline);
    case CV_SEGCV:
      return CompositeOfSpans(spline);
    default:
      return {};
  }
}

OwnedCurve ConvertFrom(const SplineView<4>& spline, int32_t type, const Curve& source,
                       GlobalVar& g) {
  const int32_t degree = spline.order - 1;
  const KnotVector knots = KnotsOf(spline);
  switch (type) {
    case CV_ARC:
      return NewArc(RecogniseArc(source, knots.Start(), knots.End(), g));
    case CV_BEZIER:
      if (!IsSingleSpan(spline) || !WeightsAreEqual(spline.points, spline.count)) return {};
      return FlatBezier<3>(spline.points, degree);
    case CV_RBEZIER:
      return IsSingleSpan(spline) ? CopiedBezier(spline.points, degree) : OwnedCurve();
    case CV_BSPLINE:
      // Fixed behaviour: the weights of the first span alone decide; later ones are dropped unread.
      if (!WeightsRoundToOne(spline.points, spline.order)) return {};
      return FlatSpline<3>(spline);
    case CV_SEGCV:
      return CompositeOfSpans(spline);
    default:
      return {};
  }
}

}  // namespace kurvo
