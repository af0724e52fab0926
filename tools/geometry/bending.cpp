#include "geometry/bending.h"

#include <algorithm>
#include <cmath>

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

bool IsShort(Library& library, Point v) { return !(std::hypot(v.x, v.y) > library.Tolerance()); }

std::optional<Point> InnerDirection(Library& library, const OwnedCurve& curve, double t) {
  const Point tangent = DerivativeOf(library, curve, t, 1);
  if (IsShort(library, tangent)) return std::nullopt;
  return tangent;
}

// Where the first control points are the same, the tangent at the start has the direction of the
// first derivative that is not zero; at the end, of odd ones that and of even ones the opposite.
std::optional<Point> EndDirection(Library& library, const OwnedCurve& curve, double t) {
  double sign = 1;
  for (int n = 1; n <= kHighestOrder; ++n) {
    const Point v = DerivativeOf(library, curve, t, n);
    if (!IsShort(library, v)) return sign * v;
    if (t > 0) sign = -sign;
  }
  return std::nullopt;
}

struct Direction {
  double t;
  Point direction;
};

// The turn between two places of the curve.
double Turn(Library& library, const OwnedCurve& curve, const Direction& from, const Direction& to,
            int depth) {
  const double whole = TurnBetween(from.direction, to.direction);
  const double t = 0.5 * (from.t + to.t);
  const auto inner = depth < kMaxTurnDepth ? InnerDirection(library, curve, t) : std::nullopt;
  if (!inner) return whole;
  const Direction middle = {t, *inner};
  const double sum = TurnBetween(from.direction, *inner) + TurnBetween(*inner, to.direction);
  if (std::fabs(whole) < kSmallTurn && std::fabs(sum - whole) < kTurnTolerance) return sum;
  return Turn(library, curve, from, middle, depth + 1) +
         Turn(library, curve, middle, to, depth + 1);
}

double TurningOf(Library& library, const OwnedCurve& curve, Point start, Point end) {
  double turning = 0;
  Direction from = {0, start};
  for (int i = 1; i <= kTurnStretches; ++i) {
    const double t = static_cast<double>(i) / kTurnStretches;
    const auto direction = i < kTurnStretches ? InnerDirection(library, curve, t) : end;
    if (!direction) continue;
    turning += Turn(library, curve, from, {t, *direction}, 0);
    from = {t, *direction};
  }
  return turning;
}

// The greatest of sign * curvature: of the samples, then by golden sections between its neighbours.
class ExtremeSearch {
 public:
  ExtremeSearch(Library& library, const OwnedCurve& curve, double sign)
      : library_(library), curve_(curve), sign_(sign) {}

  std::optional<CurvatureAt> Run() {
    for (int i = 0; i <= kStretches; ++i) ValueAt(static_cast<double>(i) / kStretches);
    if (best_) Refine(best_->parameter);
    return best_;
  }

 private:
  // Minus infinity where there is no curvature.
  double ValueAt(double t) {
    const auto curvature = SignedCurvature(library_, curve_, t);
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

  Library& library_;
  const OwnedCurve& curve_;
  const double sign_;
  std::optional<CurvatureAt> best_;
};

}  // namespace

double TurnBetween(Point from, Point to) { return std::atan2(Cross(from, to), Dot(from, to)); }

std::optional<double> SignedCurvature(Library& library, const OwnedCurve& curve, double t) {
  const auto vector = CurvatureOf(library, curve, t);
  if (!vector) return std::nullopt;
  const double side = Cross(DerivativeOf(library, curve, t, 1), *vector);
  const double size = std::hypot(vector->x, vector->y);
  return side < 0 ? -size : size;
}

Bending BendingOf(Library& library, const OwnedCurve& curve) {
  Bending bending;
  bending.start_direction = EndDirection(library, curve, 0);
  bending.end_direction = EndDirection(library, curve, 1);
  if (!bending.start_direction || !bending.end_direction) return bending;
  if (curve.Type() == CV_LINE) {
    bending.least = bending.greatest = CurvatureAt{0, 0};
    return bending;
  }
  bending.turning = TurningOf(library, curve, *bending.start_direction, *bending.end_direction);
  if (curve.Type() == CV_ARC) {
    const auto curvature = SignedCurvature(library, curve, 0);
    if (curvature) bending.least = bending.greatest = CurvatureAt{*curvature, 0};
    return bending;
  }
  bending.least = ExtremeSearch(library, curve, -1).Run();
  bending.greatest = ExtremeSearch(library, curve, 1).Run();
  return bending;
}

}  // namespace kurvo::tools
