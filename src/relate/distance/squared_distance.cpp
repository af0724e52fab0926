// The squared distance of a point on one piece from a point on another, near a pair of parameters.
// With gap = B - A and f = gap . gap / 2:
//   f_s = -gap . A'              f_t  = gap . B'
//   f_ss = A' . A' - gap . A''   f_st = -A' . B'   f_tt = B' . B' + gap . B''
#include "relate/distance/squared_distance.h"

#include <algorithm>
#include <cmath>

namespace kurvo {
namespace {

constexpr double kFlat = 1e-14;      // of the squared speeds: a determinant that may be rounding
constexpr double kLeastBend = 0.25;  // of a squared speed: second derivatives to divide by
constexpr double kLeastCurvature = 1e-4;  // of f in units of length

// One parameter by itself: where f bends too little, as if the piece were straight.
double StepAlone(double slope, double bend, double speed) {
  const double by = bend > kLeastBend * speed ? bend : speed;
  return by > 0.0 ? -slope / by : 0.0;
}

}  // namespace

SquaredDistance::SquaredDistance(const Jet& a, const Jet& b) {
  const Vec2 gap = b.p - a.p;
  square = Dot(gap, gap);
  slope_s = -Dot(gap, a.d1);
  slope_t = Dot(gap, b.d1);
  speed_s = Dot(a.d1, a.d1);
  speed_t = Dot(b.d1, b.d1);
  ss = speed_s - Dot(gap, a.d2);
  tt = speed_t + Dot(gap, b.d2);
  st = -Dot(a.d1, b.d1);
}

ParameterPair SquaredDistance::StepDown(bool fixed_s, bool fixed_t) const {
  fixed_s = fixed_s || !(speed_s > 0.0);
  fixed_t = fixed_t || !(speed_t > 0.0);
  if (fixed_s || fixed_t)
    return {fixed_s ? 0.0 : StepAlone(slope_s, ss, speed_s),
            fixed_t ? 0.0 : StepAlone(slope_t, tt, speed_t)};
  const double det = ss * tt - st * st;
  if (ss > 0.0 && det > kFlat * speed_s * speed_t)
    return {(st * slope_t - tt * slope_s) / det, (st * slope_s - ss * slope_t) / det};
  return StepAlongAxes();
}

// In units of length, in which the Hessian of straight pieces has 1 on its diagonal.
ParameterPair SquaredDistance::StepAlongAxes() const {
  const double size_s = std::sqrt(speed_s), size_t = std::sqrt(speed_t);
  const Vec2 slope = {slope_s / size_s, slope_t / size_t};
  const double mean = 0.5 * (ss / speed_s + tt / speed_t);
  const double half = 0.5 * (ss / speed_s - tt / speed_t), mixed = st / (size_s * size_t);
  const double radius = std::sqrt(half * half + mixed * mixed);  // curvatures: mean +- radius
  const Vec2 axis = {std::sqrt(0.5 + 0.5 * half / radius),
                     std::copysign(std::sqrt(0.5 - 0.5 * half / radius), mixed)};
  const auto step = [](double downhill, double curvature) {
    return downhill / std::max(std::fabs(curvature), kLeastCurvature);
  };
  const double along = step(-Dot(axis, slope), mean + radius);
  const double across = step(-Cross(axis, slope), mean - radius);
  return {(along * axis.x - across * axis.y) / size_s, (along * axis.y + across * axis.x) / size_t};
}

double SquaredDistance::Change(ParameterPair step) const {
  return step.s * (slope_s + 0.5 * ss * step.s + st * step.t) +
         step.t * (slope_t + 0.5 * tt * step.t);
}

ParameterPair SquaredDistance::Within(const ParameterCell& room, ParameterPair step) const {
  const double s = ClampedS(room, step.s), t = ClampedT(room, step.t);
  const bool leaves_s = s != step.s, leaves_t = t != step.t;
  const ParameterPair at_s = {s, ClampedT(room, StepAlone(slope_t + st * s, tt, speed_t))};
  const ParameterPair at_t = {ClampedS(room, StepAlone(slope_s + st * t, ss, speed_s)), t};
  if (leaves_s && leaves_t) return Change(at_t) < Change(at_s) ? at_t : at_s;
  return leaves_s ? at_s : (leaves_t ? at_t : step);
}

// The Hessian of straight pieces, scaled to 1 on its diagonal, has eigenvalues up to 2.
ParameterPair SquaredDistance::SteepStep(bool fixed_s, bool fixed_t) const {
  const double share = fixed_s || fixed_t ? 1.0 : 0.5;
  return {fixed_s || !(speed_s > 0.0) ? 0.0 : -share * slope_s / speed_s,
          fixed_t || !(speed_t > 0.0) ? 0.0 : -share * slope_t / speed_t};
}

}  // namespace kurvo
