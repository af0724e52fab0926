#include "strand/glance.h"

#include <limits>

#include "strand/arc_box.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

void AddPoints(const Coord* points, int count, Bounds& box) {
  for (int i = 0; i < count; ++i) box.Add({points[i][0], points[i][1]});
}

void AddPoints(const HCoord* points, int count, Bounds& box) {
  bool one_sign = true;
  for (int i = 0; i < count; ++i) {
    box.Add({points[i][0], points[i][1]});
    one_sign = one_sign && points[i][3] * points[0][3] > 0;
  }
  if (one_sign) return;
  box.Add({-kInfinity, -kInfinity});
  box.Add({kInfinity, kInfinity});
}

void AddCurve(const Curve& curve, Bounds& box) {
  switch (curve.type) {
    case CV_LINE: {
      const auto& line = BlockOf<KurvoLine>(curve);
      AddPoints(&line.start, 1, box);
      return AddPoints(&line.end, 1, box);
    }
    case CV_ARC:
      return AddArc(BlockOf<KurvoArc>(curve), box);
    case CV_BEZIER: {
      const auto& bezier = BlockOf<KurvoBezier>(curve);
      return AddPoints(bezier.points, bezier.degree + 1, box);
    }
    case CV_RBEZIER: {
      const auto& bezier = BlockOf<KurvoRBezier>(curve);
      return AddPoints(bezier.points, bezier.degree + 1, box);
    }
    case CV_BSPLINE: {
      const auto& spline = BlockOf<KurvoBSpline>(curve);
      return AddPoints(spline.points, spline.count, box);
    }
    case CV_RBSPLINE: {
      const auto& spline = BlockOf<KurvoRBSpline>(curve);
      return AddPoints(spline.points, spline.count, box);
    }
    default: {
      const auto& composite = BlockOf<KurvoSegcv>(curve);
      for (int i = 0; i < composite.count; ++i) AddCurve(composite.curves[i], box);
    }
  }
}

}  // namespace

Bounds BoxOf(const Curve& curve) {
  Bounds box;
  AddCurve(curve, box);
  return box;
}

Bounds Stretch::Box() const {
  Bounds box;
  if (piece.type == CV_BSPLINE)
    AddPoints(BlockOf<KurvoBSpline>(piece).points + first, count, box);
  else if (piece.type == CV_RBSPLINE)
    AddPoints(BlockOf<KurvoRBSpline>(piece).points + first, count, box);
  else
    AddCurve(piece, box);
  return box;
}

Glances::Other Glances::GlanceAtOther(const Curve& curve) {
  Bounds points;
  CheckCurve(curve, points);
  const Bounds box = BoxOf(curve);
  // What may leave its polygon may not be finite: that is told whether the curve matters or not.
  if (box.high.x == kInfinity) ForEachSpan(curve, 0, Frame(), [](const Span&) {});
  Ends ends = {};
  const bool has_ends = EndsOf(curve, ends);
  return {{Pair(box.low), Pair(box.high), Pair(ends.start), Pair(ends.end), has_ends},
          Pair(points.low),
          Pair(points.high)};
}

Bounds Glances::box() const {
  Bounds box;
  box.low = low_.both();
  box.high = high_.both();
  return box;
}

// A sum that overflows, and a chain without points, only seem to be unsound.
bool Glances::IsSound(double sum) const {
  const Vec2 low = low_.both(), high = high_.both();
  return sum == sum && kGreatestCoordinate >= -low.x && kGreatestCoordinate >= -low.y &&
         kGreatestCoordinate >= high.x && kGreatestCoordinate >= high.y;
}

void Glances::CheckAgain(const Cvseq& chain) {
  Bounds unused;
  CheckChain(&chain, unused);
}

}  // namespace kurvo::outline
