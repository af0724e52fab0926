// Least squares of the distances at right angles to the cubic, by Gauss and Newton, the parameters
// of the feet moved along with the handles (Hoschek, "Intrinsic parametrization for approximation",
// 1988).
#include "geometry/cubic_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace kurvo::tools {
namespace {

constexpr int kRounds = 3;     // of the handles
constexpr int kFootSteps = 2;  // once the handles are found

// Parts of the stretch: the points that are fitted, and those that are looked at as well.
constexpr std::array kFitted = {1.0 / 6, 1.0 / 3, 1.0 / 2, 2.0 / 3, 5.0 / 6};
constexpr std::array kLookedAt = {1.0 / 12, 5.0 / 12, 7.0 / 12, 11.0 / 12};

// Squared radians: on what turns less than its root the handles stay as they are.
constexpr double kStraight = 1e-14;

// Of the angle that a stretch turns: in a wider one a hairpin could hide between points all of
// which are near.
constexpr double kLeastCosine = 0.9;

constexpr double kUnknown = std::numeric_limits<double>::infinity();  // distance

double Length(Point v) { return std::sqrt(Dot(v, v)); }

struct Foot {
  Point point;  // of the curve
  double s;     // of the cubic, next to it
};

void MoveAlong(const Cubic& cubic, Foot& foot) {
  const Point along = cubic.Derivative(foot.s);
  const double step = Dot(foot.point - cubic.At(foot.s), along) / Dot(along, along);
  if (std::isfinite(step)) foot.s = std::clamp(foot.s + step, 0.0, 1.0);
}

// What a handle that is `v` has for a direction; that of `otherwise` where it has none.
Point Direction(Point v, Point otherwise) {
  const double size = Length(v);
  if (size > 0) return (1 / size) * v;
  return Length(otherwise) > 0 ? (1 / Length(otherwise)) * otherwise : Point{1, 0};
}

struct Handles {
  Point start_direction;
  Point end_direction;
  double start;
  double end;

  Cubic Between(Point p0, Point p3) const {
    return {p0, p0 + start * start_direction, p3 - end * end_direction, p3};
  }
};

// One step towards the lengths of the least squares.
void Adjust(const Cubic& cubic, const std::array<Foot, kFitted.size()>& feet, Handles& handles) {
  double aa = kStraight, ab = 0, bb = kStraight, ar = 0, br = 0;
  for (const Foot& foot : feet) {
    const double s = foot.s, r = 1 - s;
    const Point along = Direction(cubic.Derivative(s), {});
    const double a = 3 * r * r * s * Cross(along, handles.start_direction);
    const double b = -3 * r * s * s * Cross(along, handles.end_direction);
    const double rest = Cross(along, foot.point - cubic.At(s));
    aa += a * a;
    ab += a * b;
    bb += b * b;
    ar += a * rest;
    br += b * rest;
  }
  const double determinant = aa * bb - ab * ab;
  const double start = handles.start + (ar * bb - br * ab) / determinant;
  const double end = handles.end + (br * aa - ar * ab) / determinant;
  if (!(start > 0 && end > 0 && std::isfinite(start + end))) return;
  handles.start = start;
  handles.end = end;
}

}  // namespace

Point Cubic::At(double s) const {
  const double r = 1 - s;
  return r * r * r * p0 + 3 * r * r * s * p1 + 3 * r * s * s * p2 + s * s * s * p3;
}

Point Cubic::Derivative(double s) const {
  const double r = 1 - s;
  return 3 * r * r * (p1 - p0) + 6 * r * s * (p2 - p1) + 3 * s * s * (p3 - p2);
}

FittedCubic FitCubic(Library& library, const OwnedCurve& curve, double from, double to) {
  const auto position = [&](double s) {
    return PositionOf(library, curve, from + (to - from) * s);
  };
  const Point start = position(0), end = position(1);
  const Point d0 = ((to - from) / 3) * DerivativeOf(library, curve, from, 1);
  const Point d1 = ((to - from) / 3) * DerivativeOf(library, curve, to, 1);
  Handles handles = {Direction(d0, end - start), Direction(d1, end - start), Length(d0),
                     Length(d1)};
  std::array<Foot, kFitted.size()> feet;
  for (std::size_t i = 0; i < feet.size(); ++i) feet[i] = {position(kFitted[i]), kFitted[i]};
  for (int round = 0; round < kRounds; ++round) {
    const Cubic cubic = handles.Between(start, end);
    for (Foot& foot : feet) MoveAlong(cubic, foot);
    Adjust(cubic, feet, handles);
  }
  const bool is_seen = Dot(handles.start_direction, handles.end_direction) >= kLeastCosine;
  FittedCubic fitted = {handles.Between(start, end), is_seen ? 0 : kUnknown};
  const auto look_at = [&](Foot foot) {
    for (int i = 0; i < kFootSteps; ++i) MoveAlong(fitted.cubic, foot);
    const double distance = Length(fitted.cubic.At(foot.s) - foot.point);
    if (!(fitted.deviation >= distance)) fitted.deviation = distance >= 0 ? distance : kUnknown;
  };
  for (const Foot& foot : feet) look_at(foot);
  for (const double s : kLookedAt) look_at({position(s), s});
  return fitted;
}

}  // namespace kurvo::tools
