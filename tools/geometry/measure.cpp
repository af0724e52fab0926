#include "geometry/measure.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "geometry/curve_ask.h"
#include "geometry/parallel.h"

namespace kurvo::tools {
namespace {

// Curvature is looked at in so many stretches; of a cubic it has far fewer extremes.
constexpr int kStretches = 64;
constexpr int kGoldenSteps = 40;                // each takes 0.618 of what is left: to 1e-9
constexpr double kGolden = 0.6180339887498949;  // (sqrt(5) - 1) / 2

// Stretches on which the tangent turns less than half a turn, unless it does so within a 2^-20th.
constexpr int kTurnStretches = 8;
constexpr int kMaxTurnDepth = 20;
constexpr double kSmallTurn = 0.5;       // radians
constexpr double kTurnTolerance = 1e-9;  // radians

// Orders of derivatives that are looked at for a direction at an end.
constexpr int kHighestOrder = 3;

bool IsShort(Context& context, Point v) { return !(Size(v) > context.Epsilon()); }

std::optional<Point> InnerDirection(Context& context, const Curve& curve, double t) {
  const Point tangent = DerivativeOf(context, curve, t, 1);
  if (IsShort(context, tangent)) return std::nullopt;
  return tangent;
}

struct Direction {
  double t;
  Point direction;
};

// The turn between two places of the curve.
double Turn(Context& context, const Curve& curve, const Direction& from, const Direction& to,
            int depth) {
  const double whole = TurnBetween(from.direction, to.direction);
  const double t = 0.5 * (from.t + to.t);
  const auto inner = depth < kMaxTurnDepth ? InnerDirection(context, curve, t) : std::nullopt;
  if (!inner) return whole;
  const Direction middle = {t, *inner};
  const double sum = TurnBetween(from.direction, *inner) + TurnBetween(*inner, to.direction);
  if (std::fabs(whole) < kSmallTurn && std::fabs(sum - whole) < kTurnTolerance) return sum;
  return Turn(context, curve, from, middle, depth + 1) +
         Turn(context, curve, middle, to, depth + 1);
}

double CurveTurning(Context& context, const Curve& curve, Point start, Point end) {
  double turning = 0;
  Direction from = {0, start};
  for (int i = 1; i <= kTurnStretches; ++i) {
    const double t = static_cast<double>(i) / kTurnStretches;
    const auto direction = i < kTurnStretches ? InnerDirection(context, curve, t) : end;
    if (!direction) continue;
    turning += Turn(context, curve, from, {t, *direction}, 0);
    from = {t, *direction};
  }
  return turning;
}

// The greatest of sign * curvature: of the samples, then by golden sections between its neighbours.
class ExtremeSearch {
 public:
  ExtremeSearch(Context& context, const Curve& curve, double sign)
      : context_(context), curve_(curve), sign_(sign) {}

  std::optional<CurvatureAt> Run() {
    for (int i = 0; i <= kStretches; ++i) ValueAt(static_cast<double>(i) / kStretches);
    if (best_) Refine(best_->parameter);
    return best_;
  }

 private:
  // Minus infinity where there is no curvature.
  double ValueAt(double t) {
    const auto curvature = SignedCurvature(context_, curve_, t);
    if (!curvature) return -HUGE_VAL;
    if (!best_ || sign_ * *curvature > sign_ * best_->curvature) best_ = {*curvature, t};
    return sign_ * *curvature;
  }

  void Refine(double t) {
    double low = std::max(0.0, t - 1.0 / kStretches);
    double high = std::min(1.0, t + 1.0 / kStretches);
    for (int i = 0; i < kGoldenSteps; ++i) {
      const double width = kGolden * (high - low);
      if (ValueAt(high - width) > ValueAt(low + width))
        high = low + width;
      else
        low = high - width;
    }
  }

  Context& context_;
  const Curve& curve_;
  const double sign_;
  std::optional<CurvatureAt> best_;
};

CurveMeasures MeasureCurve(Context& context, const Curve& curve, const std::optional<Point>& near) {
  CurveMeasures measures = {curve.Type(),
                            curve.Degree(context).value(),
                            StartOf(context, curve),
                            EndOf(context, curve),
                            BoundsOf(context, curve),
                            LengthOf(context, curve),
                            BendingOf(context, curve),
                            std::nullopt};
  if (near) measures.nearest = NearestOn(context, curve, *near);
  return measures;
}

// The turning of the curves and in the corners between them, also in the last one of a closed
// outline. Points turn nowhere.
double TurningOf(const OutlineMeasures& outline) {
  double turning = 0;
  std::optional<Point> first;
  std::optional<Point> last;
  for (const CurveMeasures& curve : outline.curves) {
    const Bending& bending = curve.bending;
    if (!bending.start_direction || !bending.end_direction) continue;
    if (last) turning += TurnBetween(*last, *bending.start_direction);
    turning += bending.turning;
    if (!first) first = bending.start_direction;
    last = bending.end_direction;
  }
  if (outline.closed && last) turning += TurnBetween(*last, *first);
  return turning;
}

OutlineMeasures MeasureOutline(Context& context, const std::string& label, const Outline& outline,
                               const std::optional<Point>& near, const CurveDone& done) {
  OutlineMeasures measures = {label, outline.closed, {}, {}};
  for (const Curve& curve : outline.curves) {
    const std::size_t number = measures.curves.size();
    measures.curves.push_back(MeasureCurve(context, curve, near));
    measures.box.Add(measures.curves.back().box);
    measures.length += measures.curves.back().length;
    if (near && measures.curves[number].nearest->distance < NearestIn(measures).distance) {
      measures.nearest_curve = number;
    }
    done();
  }
  measures.turning = TurningOf(measures);
  const Moments moments = MomentsOf(context, outline.curves);
  measures.area = moments.area;
  measures.centroid = moments.centroid;
  return measures;
}

// The first curve whose `extreme` is before that of all others.
template <class Before>
std::optional<std::size_t> Foremost(const OutlineMeasures& outline,
                                    std::optional<CurvatureAt> Bending::*extreme,
                                    const Before& before) {
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < outline.curves.size(); ++i) {
    const auto& value = outline.curves[i].bending.*extreme;
    if (!value) continue;
    if (!found || before(value->curvature, (outline.curves[*found].bending.*extreme)->curvature)) {
      found = i;
    }
  }
  return found;
}

}  // namespace

// Where the first control points are the same, the tangent at the start has the direction of the
// first derivative that is not zero; at the end, of odd ones that and of even ones the opposite.
std::optional<Point> EndDirection(Context& context, const Curve& curve, double t) {
  double sign = 1;
  for (int n = 1; n <= kHighestOrder; ++n) {
    const Point v = DerivativeOf(context, curve, t, n);
    if (!IsShort(context, v)) return sign * v;
    if (t > 0) sign = -sign;
  }
  return std::nullopt;
}

double TurnBetween(Point from, Point to) { return std::atan2(Cross(from, to), Dot(from, to)); }

std::optional<double> SignedCurvature(Context& context, const Curve& curve, double t) {
  const auto vector = CurvatureOf(context, curve, t);
  if (!vector) return std::nullopt;
  const double side = Cross(DerivativeOf(context, curve, t, 1), *vector);
  const double size = Size(*vector);
  return side < 0 ? -size : size;
}

Bending BendingOf(Context& context, const Curve& curve) {
  Bending bending;
  bending.start_direction = EndDirection(context, curve, 0);
  bending.end_direction = EndDirection(context, curve, 1);
  if (!bending.start_direction || !bending.end_direction) return bending;
  if (curve.Type() == CV_LINE) {
    bending.least = bending.greatest = CurvatureAt{0, 0};
    return bending;
  }
  bending.turning = CurveTurning(context, curve, *bending.start_direction, *bending.end_direction);
  if (curve.Type() == CV_ARC) {
    const auto curvature = SignedCurvature(context, curve, 0);
    if (curvature) bending.least = bending.greatest = CurvatureAt{*curvature, 0};
    return bending;
  }
  bending.least = ExtremeSearch(context, curve, -1).Run();
  bending.greatest = ExtremeSearch(context, curve, 1).Run();
  return bending;
}

std::optional<std::size_t> LeastCurved(const OutlineMeasures& outline) {
  return Foremost(outline, &Bending::least, std::less<double>());
}

std::optional<std::size_t> MostCurved(const OutlineMeasures& outline) {
  return Foremost(outline, &Bending::greatest, std::greater<double>());
}

std::vector<OutlineMeasures> Measure(const Drawing& drawing, const std::optional<Point>& near,
                                     const CurveDone& done) {
  std::vector<std::pair<std::string, const Outline*>> named;
  ForEachOutline(drawing, [&](const Outline& outline, std::string label) {
    named.emplace_back(std::move(label), &outline);
  });
  std::vector<OutlineMeasures> outlines(named.size());
  ParallelFor(named.size(), [&](std::size_t i, Context& context) {
    outlines[i] = MeasureOutline(context, named[i].first, *named[i].second, near, done);
  });
  return outlines;
}

double TotalLength(const std::vector<OutlineMeasures>& outlines) {
  double total = 0;
  for (const OutlineMeasures& outline : outlines) total += outline.length;
  return total;
}

const NearestPoint& NearestIn(const OutlineMeasures& outline) {
  return *outline.curves[outline.nearest_curve].nearest;
}

const OutlineMeasures* NearestOutline(const std::vector<OutlineMeasures>& outlines) {
  const auto nearest = std::min_element(outlines.begin(), outlines.end(),
                                        [](const OutlineMeasures& a, const OutlineMeasures& b) {
                                          return NearestIn(a).distance < NearestIn(b).distance;
                                        });
  return nearest == outlines.end() ? nullptr : &*nearest;
}

}  // namespace kurvo::tools
