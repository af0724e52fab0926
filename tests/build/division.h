// What the tests of division, extension and knot removal share: random curves of every type, and
// their points in long double, arcs included.
#pragma once

#include "build/curves.h"
#include "query/reference.h"

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

// Knots lie on a grid of 64ths of the domain, widths on one of eighths, and cuts between the points
// of both: so near a knot that they would be moved onto it they never are.
inline double RandomCut(Random& random, double low, double high) {
  return (2 * std::floor(random.Uniform(low, high) * 2048) + 1) / 4096;
}

// Ends clamped or not, inner knots repeated up to `max_multiplicity` times.
inline Owned RandomSplineOver(Random& random, bool rational, int order, double start, double end,
                              int max_multiplicity) {
  const auto repeated = [&](Numbers& knots, double u, int count) {
    knots.insert(knots.end(), static_cast<std::size_t>(count), u);
  };
  Numbers knots;
  const bool clamped = random.Uniform(0, 1) < .6;
  for (int i = 1; i < order; ++i) knots.push_back(clamped ? start : start - (order - i) * .3);
  knots.push_back(start);
  const int spans = static_cast<int>(random.Uniform(1, 6));
  for (int i = 1; i < spans; ++i)
    repeated(knots,
             start + (end - start) * std::round(64 * (i + random.Uniform(-.3, .3)) / spans) / 64,
             static_cast<int>(random.Uniform(1, max_multiplicity + 1)));
  repeated(knots, end, clamped ? order : 1);
  for (int i = 1; i < order && !clamped; ++i) knots.push_back(end + i * .4);
  return MakeFreeForm(rational ? CV_RBSPLINE : CV_BSPLINE,
                      RandomPoints(random, static_cast<int>(knots.size()) - order, rational),
                      knots);
}

inline Owned RandomBezier(Random& random, bool rational, int degree) {
  return MakeFreeForm(rational ? CV_RBEZIER : CV_BEZIER,
                      RandomPoints(random, degree + 1, rational));
}

// A curve of the given type, of degree up to `max_degree`, over [0, 1]. B-splines have degree 1 at
// least: at degree 0 they stand still everywhere, and are not cut at t. Composites hold two curves
// of any types, down to `levels` of them.
inline Owned RandomCurve(Random& random, int32_t type, int max_degree, int levels = 2) {
  const bool rational = type == CV_RBEZIER || type == CV_RBSPLINE;
  const int degree = static_cast<int>(random.Uniform(0, max_degree + 1));
  switch (type) {
    case CV_LINE: {
      Owned cv = Make("l 0 0 1 1");
      auto& line = cv.block<KurvoLine>();
      for (double* p : {line.start, line.end})
        KurvoclSetCoord(p, random.Uniform(-9, 9), random.Uniform(-9, 9), 0);
      return cv;
    }
    case CV_ARC: {
      Owned cv = Arc(random.Uniform(-5, 5), random.Uniform(-5, 5), random.Uniform(.5, 4),
                     random.Uniform(-3, 3), random.Uniform(.2, 1.4) * (degree % 2 ? 1 : -1));
      if (degree % 4 == 1) cv.block<KurvoArc>().normal[2] = 0;  // counter-clockwise all the same
      return cv;
    }
    case CV_BEZIER:
    case CV_RBEZIER:
      return RandomBezier(random, rational, degree);
    case CV_BSPLINE:
    case CV_RBSPLINE:
      return RandomSplineOver(random, rational, std::max(degree, 1) + 1, 0, 1, std::max(degree, 1));
    default: {
      constexpr int32_t kPieces[] = {CV_LINE,    CV_ARC,      CV_BEZIER, CV_RBEZIER,
                                     CV_BSPLINE, CV_RBSPLINE, CV_SEGCV};
      const double width = std::floor(random.Uniform(3, 6)) / 8;
      std::vector<Owned> pieces;
      for (int i = 0; i < 2; ++i) {
        const auto kind = static_cast<std::size_t>(random.Uniform(0, levels > 1 ? 7 : 6));
        pieces.push_back(RandomCurve(random, kPieces[kind], max_degree, levels - 1));
      }
      return MakeComposite({width, 1 - width}, std::move(pieces));
    }
  }
}

}  // namespace kurvo_test
