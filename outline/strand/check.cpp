#include "strand/check.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/pair.h"
#include "base/refusal.h"
#include "strand/arc_box.h"

namespace kurvo::outline {
namespace {

constexpr double kDomainSlack = 1e-6;  // of a piece's domain against [0, 1], in parameters

void AddPoint(const double* p, Bounds& box) {
  // A NaN fails the comparison too. z is ignored.
  Require(kGreatestCoordinate >= std::fabs(p[0]) && kGreatestCoordinate >= std::fabs(p[1]),
          KURVO_ERR_NOT_FINITE);
  box.Add({p[0], p[1]});
}

// All together: a sum is not a number where one of them is not. One that overflows only seems so,
// and the slow way tells.
void CheckPoints(const Coord* points, int n, Bounds& box) {
  Require(points, KURVO_ERR_CURVE);
  Pair low(box.low), high(box.high), sum(0.0);
  for (int i = 0; i < n; ++i) {
    const Pair point(points[i]);
    low = Least(point, low);
    high = Most(point, high);
    sum = sum + point;
  }
  Bounds all;
  all.low = low.both();
  all.high = high.both();
  const double total = sum.x() + sum.y();
  if (total == total && kGreatestCoordinate >= -std::min(all.low.x, all.low.y) &&
      kGreatestCoordinate >= std::max(all.high.x, all.high.y))
    box = all;
  else
    for (int i = 0; i < n; ++i) AddPoint(points[i], box);
}

// A control point of weight 0 inside is a direction without a place of its own: it is taken for a
// point all the same, as the records keep it.
void CheckPoints(const HCoord* points, int n, Bounds& box) {
  Require(points, KURVO_ERR_CURVE);
  for (int i = 0; i < n; ++i) {
    AddPoint(points[i], box);
    RequireFinite(points[i][3]);
  }
  Require(points[0][3] != 0 && points[n - 1][3] != 0, KURVO_ERR_WEIGHT);
}

template <class Bezier>
void CheckBezier(const Bezier& bezier, Bounds& box) {
  Require(bezier.degree >= 0 && bezier.degree <= kMostDegree, KURVO_ERR_CURVE);
  CheckPoints(bezier.points, bezier.degree + 1, box);
}

template <class Spline>
void CheckSpline(const Spline& spline, Bounds& box) {
  Require(spline.order >= 1 && spline.order - 1 <= kMostDegree && spline.count >= spline.order &&
              spline.count <= std::numeric_limits<int32_t>::max() - spline.order && spline.knots,
          KURVO_ERR_CURVE);
  CheckPoints(spline.points, spline.count, box);
  const double* knots = spline.knots;
  RequireFinite(knots[0]);
  for (int i = 1; i < spline.order + spline.count; ++i) {
    RequireFinite(knots[i]);
    Require(knots[i] >= knots[i - 1], KURVO_ERR_CURVE);
  }
  Require(knots[spline.count] > knots[spline.order - 1], KURVO_ERR_CURVE);
}

void CheckArc(const KurvoArc& arc, Bounds& box) {
  RequireFinite(arc.radius);
  RequireFinite(arc.normal[2]);
  Require(arc.radius >= 0, KURVO_ERR_CURVE);
  AddPoint(arc.start, box);
  AddPoint(arc.end, box);
  Bounds circle;  // looked at for numbers that are too large
  const double low[] = {arc.centre[0] - arc.radius, arc.centre[1] - arc.radius};
  const double high[] = {arc.centre[0] + arc.radius, arc.centre[1] + arc.radius};
  AddPoint(low, circle);
  AddPoint(high, circle);
  AddArc(arc, box);
}

void CheckNested(const Curve& curve, int nesting, Bounds& box);

void CheckComposite(const KurvoSegcv& composite, int nesting, Bounds& box) {
  Require(composite.count >= 0 && nesting < kMostNesting, KURVO_ERR_CURVE);
  Require(composite.count == 0 || (composite.curves && composite.widths), KURVO_ERR_CURVE);
  for (int i = 0; i < composite.count; ++i) {
    RequireFinite(composite.widths[i]);
    Require(composite.widths[i] > 0, KURVO_ERR_CURVE);
    CheckNested(composite.curves[i], nesting + 1, box);
    const Domain domain = DomainOf(composite.curves[i]);
    Require(kDomainSlack >= std::fabs(domain.from) && kDomainSlack >= std::fabs(domain.to - 1),
            KURVO_ERR_CURVE);
  }
}

void CheckNested(const Curve& curve, int nesting, Bounds& box) {
  Require(curve.data, KURVO_ERR_CURVE);
  switch (curve.type) {
    case CV_LINE: {
      const auto& line = BlockOf<KurvoLine>(curve);
      AddPoint(line.start, box);
      AddPoint(line.end, box);
      return;
    }
    case CV_ARC:
      return CheckArc(BlockOf<KurvoArc>(curve), box);
    case CV_BEZIER:
      return CheckBezier(BlockOf<KurvoBezier>(curve), box);
    case CV_RBEZIER:
      return CheckBezier(BlockOf<KurvoRBezier>(curve), box);
    case CV_BSPLINE:
      return CheckSpline(BlockOf<KurvoBSpline>(curve), box);
    case CV_RBSPLINE:
      return CheckSpline(BlockOf<KurvoRBSpline>(curve), box);
    case CV_SEGCV:
      return CheckComposite(BlockOf<KurvoSegcv>(curve), nesting, box);
    default:
      throw Refusal{KURVO_ERR_CURVE};
  }
}

template <class Spline>
Domain DomainOfSpline(const Spline& spline) {
  return {spline.knots[spline.order - 1], spline.knots[spline.count]};
}

}  // namespace

void CheckCurve(const Curve& curve, Bounds& box) { CheckNested(curve, 0, box); }

void RequireChain(const Cvseq* chain) {
  Require(chain && chain->count >= 0 && (chain->count == 0 || chain->curves), KURVO_ERR_CURVE);
}

void CheckChain(const Cvseq* chain, Bounds& box) {
  RequireChain(chain);
  for (int i = 0; i < chain->count; ++i) CheckNested(chain->curves[i], 0, box);
}

Domain DomainOf(const Curve& curve) {
  switch (curve.type) {
    case CV_BSPLINE:
      return DomainOfSpline(BlockOf<KurvoBSpline>(curve));
    case CV_RBSPLINE:
      return DomainOfSpline(BlockOf<KurvoRBSpline>(curve));
    case CV_SEGCV: {
      const auto& composite = BlockOf<KurvoSegcv>(curve);
      double end = 0;
      for (int i = 0; i < composite.count; ++i) end += composite.widths[i];
      return {0, end};
    }
    default:
      return {0, 1};
  }
}

}  // namespace kurvo::outline
