#include "geometry/elliptical_arc.h"

#include <cmath>
#include <numbers>

namespace kurvo::tools {
namespace {

// Relative: |u| and |v|, and the cosine between them, differ by no more in a circle that has been
// through a few transforms. An ellipse anyone draws on purpose is further off.
constexpr double kCircleTolerance = 1e-9;

// Relative to the squared radius: a chord that falls short of the diameter by no more is taken for
// one. The centre depends on the square root of the difference, which would blow up its rounding.
constexpr double kDiameterTolerance = 1e-14;

}  // namespace

Point EllipticalArc::At(double angle) const {
  return centre + std::cos(angle) * u + std::sin(angle) * v;
}

// In the frame in which the ellipse is the unit circle and the middle of the chord the origin, the
// arc goes from p to -p. There
//   lambda = |p|^2                        > 1: the radii are too small, scale them by |p|
//   n      = p turned by -90 degrees, of unit length
//   centre = +-sqrt(1 - lambda) n         + when large_arc != positive_sweep
// and an arc of positive sweep crosses the bisector of the chord on the side of -n.
EllipticalArc CentreForm(Point from, const EndpointArc& arc) {
  const Affine turn = Rotation(arc.rotation);
  const Point half = 0.5 * (from - arc.to);
  double rx = std::fabs(arc.rx);
  double ry = std::fabs(arc.ry);
  Point p = {Dot({turn.a, turn.b}, half) / rx, Dot({turn.c, turn.d}, half) / ry};

  double half_chord = std::hypot(p.x, p.y);
  const Point n = {p.y / half_chord, -p.x / half_chord};
  if (half_chord * half_chord > 1 - kDiameterTolerance) {
    rx *= half_chord;
    ry *= half_chord;
    half_chord = 1;
  }
  const double from_centre = std::sqrt((1 - half_chord) * (1 + half_chord));

  EllipticalArc centred;
  centred.u = rx * Point{turn.a, turn.b};
  centred.v = ry * Point{turn.c, turn.d};
  const Point q = (arc.large_arc != arc.positive_sweep ? from_centre : -from_centre) * n;
  centred.centre = 0.5 * (from + arc.to) + q.x * centred.u + q.y * centred.v;

  const double minor_half = std::atan2(half_chord, from_centre);
  const double half_sweep = arc.large_arc ? std::numbers::pi - minor_half : minor_half;
  const Point middle = arc.positive_sweep ? -1 * n : n;
  const double signed_half = arc.positive_sweep ? half_sweep : -half_sweep;
  centred.start_angle = std::atan2(middle.y, middle.x) - signed_half;
  centred.sweep = 2 * signed_half;
  return centred;
}

EllipticalArc Transformed(const EllipticalArc& arc, const Affine& map) {
  return {map.Apply(arc.centre), map.ApplyToVector(arc.u), map.ApplyToVector(arc.v),
          arc.start_angle, arc.sweep};
}

bool IsCircular(const EllipticalArc& arc) {
  const double u2 = Dot(arc.u, arc.u);
  const double v2 = Dot(arc.v, arc.v);
  const double bound = kCircleTolerance * u2;
  return bound >= std::fabs(u2 - v2) && bound >= std::fabs(Dot(arc.u, arc.v));
}

bool IsCounterClockwise(const EllipticalArc& arc) {
  return (Cross(arc.u, arc.v) > 0) == (arc.sweep > 0);
}

MiddleControl RationalMiddle(const EllipticalArc& arc, double from, double to) {
  const double middle = 0.5 * (from + to);
  const double weight = std::cos(0.5 * (to - from));
  const Point offset = std::cos(middle) * arc.u + std::sin(middle) * arc.v;
  return {arc.centre + (1 / weight) * offset, weight};
}

}  // namespace kurvo::tools
