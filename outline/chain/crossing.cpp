#include "chain/crossing.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "strand/bracket.h"

namespace kurvo::outline {
namespace {

constexpr double kClear = 1.5;  // of the distance to the ends of what is near
constexpr double kLeast = 8;    // of the tolerance, besides
constexpr double kWider = 1.5;  // of the radius: no need to cut the circle more closely
constexpr double kWide = 0.25;  // radians: between narrower directions the ring has to be just met
constexpr int kMostSteps = 90;
constexpr int kMostPieces = 1000;

// A parameter between `near` and `far` at which the distance is the radius or a little more: along
// a piece it grows nearly evenly. False position, bisection every third step.
template <class Distance>
double AtDistance(const Distance& distance, double near, double far, double radius) {
  const double aim = 0.5 * (1 + kWider) * radius;
  double at_near = distance(near), at_far = distance(far);
  for (int i = 0; i < kMostSteps && at_far > kWider * radius; ++i) {
    const double share = i % 3 == 2 ? 0.5 : (aim - at_near) / (at_far - at_near);
    const double u = near + share * (far - near);
    const double value = distance(u);
    (value >= radius ? far : near) = u;
    (value >= radius ? at_far : at_near) = value;
  }
  return far;
}

// The same, at the radius but for rounding.
template <class Distance>
double JustAtDistance(const Distance& distance, double near, double far, double radius) {
  const double low = std::min(near, far), high = std::max(near, far);
  const auto beyond = [&](double u) { return distance(u) - radius; };
  const double at_low = beyond(low), at_high = beyond(high);
  if ((at_low < 0) == (at_high < 0)) return far;
  return SignChangeBetween(beyond, low, high, at_low, at_high);
}

struct Ring {
  Vec2 centre;
  double radius;
  bool just;  // reached but for rounding; else by a little more
};

// Follows a track from a position, forwards (step 1) or backwards (-1), until it reaches the ring.
// Result: whether it gets there.
bool Leave(const Track& track, Position at, int step, const Ring& ring, Vec2& out) {
  const double end = step > 0 ? 1 : 0;
  const auto distance = [&](double u) {
    return Length(track.PointAt({at.piece, u}) - ring.centre);
  };
  for (int passed = 0; passed < kMostPieces; ++passed) {
    if (distance(end) >= ring.radius) {
      const double u = ring.just ? JustAtDistance(distance, at.u, end, ring.radius)
                                 : AtDistance(distance, at.u, end, ring.radius);
      out = track.PointAt({at.piece, u}) - ring.centre;
      return true;
    }
    at = {step > 0 ? track.After(at.piece) : track.Before(at.piece), 1 - end};
    if (at.piece < 0) return false;
  }
  return false;
}

double AngleFrom(Vec2 from, Vec2 to) {
  const double angle = std::atan2(Cross(from, to), Dot(from, to));
  return angle < 0 ? angle + 2 * std::numbers::pi : angle;
}

// Whether a direction is away from both directions of the first chain, 0 and `back`.
bool IsWideApart(double angle, double back) {
  return std::min({angle, 2 * std::numbers::pi - angle, std::fabs(angle - back)}) >= kWide;
}

}  // namespace

bool CrossAt(const Track& a, const Passage& on_a, const Track& b, const Passage& on_b, Vec2 place,
             double tol) {
  double widest = 0;
  for (const Position at : {on_a.from, on_a.to})
    widest = std::max(widest, Length(a.PointAt(at) - place));
  for (const Position at : {on_b.from, on_b.to})
    widest = std::max(widest, Length(b.PointAt(at) - place));
  Ring ring = {place, kClear * widest + kLeast * tol, false};
  for (;; ring.just = true) {
    Vec2 a_in, a_out, b_in, b_out;
    if (!Leave(a, on_a.from, -1, ring, a_in) || !Leave(a, on_a.to, 1, ring, a_out) ||
        !Leave(b, on_b.from, -1, ring, b_in) || !Leave(b, on_b.to, 1, ring, b_out))
      return false;
    const double back = AngleFrom(a_out, a_in);
    const double from = AngleFrom(a_out, b_in), to = AngleFrom(a_out, b_out);
    if (ring.just || (IsWideApart(from, back) && IsWideApart(to, back)))
      return (from < back) != (to < back);
  }
}

}  // namespace kurvo::outline
