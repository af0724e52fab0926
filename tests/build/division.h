// What the tests of division, extension and knot removal share: points of curves of every type in
// long double, arcs included.
#pragma once

#include "build/curves.h"
#include "query/reference.h"
#include "support/generator.h"

namespace kurvo_test {

constexpr double kExact = 2e-11;  // coordinates are up to 10 and weights from .2: 1e-12 of a point

using LongPoint = Reference::LongPoint;

inline LongPoint PointOnLine(const KurvoLine& line, long double t) {
  return {(1 - t) * line.start[0] + t * line.end[0], (1 - t) * line.start[1] + t * line.end[1]};
}

inline LongPoint PointOnArc(const KurvoArc& arc, long double t) {
  const auto [start, sweep] = Turn(arc);
  const long double at = start + t * sweep;
  return {arc.centre[0] + arc.radius * std::cos(at), arc.centre[1] + arc.radius * std::sin(at)};
}

// The point at a parameter of the curve's own domain; beyond it, on the continuation.
inline LongPoint ExactPoint(const Curve& cv, long double t) {
  if (cv.type == CV_LINE) return PointOnLine(*static_cast<KurvoLine*>(cv.data), t);
  if (cv.type == CV_ARC) return PointOnArc(*static_cast<KurvoArc*>(cv.data), t);
  if (cv.type != CV_SEGCV) return Reference(cv).PointAt(t);
  const auto& c = *static_cast<KurvoSegcv*>(cv.data);
  int i = 0;
  for (; i + 1 < c.count && t > c.widths[i]; ++i) t -= c.widths[i];
  return ExactPoint(c.curves[i], t / c.widths[i]);
}

inline double Distance(const LongPoint& a, const LongPoint& b) {
  return static_cast<double>(std::hypot(a.x - b.x, a.y - b.y));
}

// Checks that `piece` runs over [0, 1] along the stretch [from, to] of `whole`, in own parameters.
inline void ExpectStretch(const Curve& piece, const Curve& whole, long double from, long double to,
                          double bound = kExact) {
  ASSERT_NE(piece.data, nullptr);
  ASSERT_EQ(piece.type, whole.type);
  const auto [start, length] = Domain(piece);
  EXPECT_EQ(start, 0);
  EXPECT_EQ(length, 1);
  for (int i = 0; i <= 40; ++i) {
    const long double s = (i + .5L) / 41;  // off the knots and joints, which belong to one side
    ASSERT_LE(Distance(ExactPoint(piece, s), ExactPoint(whole, from + s * (to - from))), bound)
        << "at " << static_cast<double>(s) << " of " << static_cast<double>(from) << " to "
        << static_cast<double>(to);
  }
}

}  // namespace kurvo_test
