// Random curves of every type: the one generator of the tests. Bits hang on the seed alone.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/curve_text.h"

namespace kurvo_test {

struct XY {
  double x, y;
};

inline bool Chance(Random& random, double share) { return random.Uniform(0, 1) < share; }
// From `low` to `high`, both included.
inline int RandomInt(Random& random, int low, int high) {
  return static_cast<int>(random.Uniform(low, high + 1));
}
inline XY RandomPlace(Random& random, double size = kSize) {
  const double x = random.Uniform(-size, size);
  return {x, random.Uniform(-size, size)};
}

inline Owned LineBetween(XY a, XY b) { return Line(a.x, a.y, b.x, b.y); }

// Knots lie on a grid of 64ths of the domain, widths on one of eighths, and cuts between the points
// of both: so near a knot that they would be moved onto it they never are.
inline double RandomCut(Random& random, double low, double high) {
  return (2 * std::floor(random.Uniform(low, high) * 2048) + 1) / 4096;
}

// Ends clamped or not, inner knots repeated up to `max_multiplicity` times.
inline Owned RandomSplineOver(Random& random, bool rational, int order, double start, double end,
                              int max_multiplicity, bool clamp = false, int spans = 0) {
  Numbers knots;
  const bool clamped = Chance(random, .6) || clamp;
  for (int i = 1; i < order; ++i) knots.push_back(clamped ? start : start - (order - i) * .3);
  knots.push_back(start);
  if (spans == 0) spans = RandomInt(random, 1, 5);
  for (int i = 1; i < spans; ++i) {
    const double share = std::round(64 * (i + random.Uniform(-.3, .3)) / spans) / 64;
    knots.insert(knots.end(), static_cast<std::size_t>(RandomInt(random, 1, max_multiplicity)),
                 start + (end - start) * share);
  }
  knots.insert(knots.end(), static_cast<std::size_t>(clamped ? order : 1), end);
  for (int i = 1; i < order && !clamped; ++i) knots.push_back(end + i * .4);
  return MakeFreeForm(rational ? CV_RBSPLINE : CV_BSPLINE,
                      RandomPoints(random, static_cast<int>(knots.size()) - order, rational),
                      knots);
}

inline Owned RandomBezier(Random& random, bool rational, int degree) {
  return MakeFreeForm(rational ? CV_RBEZIER : CV_BEZIER,
                      RandomPoints(random, degree + 1, rational));
}

// A curve of the given type, of degree `min_degree` to `max_degree`, over [0, 1]. B-splines have
// degree 1 at least: at degree 0 they stand still everywhere, and are not cut at t. Composites hold
// two curves of any types, which do not join, down to `levels` of them.
inline Owned RandomCurve(Random& random, int32_t type, int max_degree, int levels = 2,
                         int min_degree = 0) {
  const bool rational = IsRational(type);
  const int degree = RandomInt(random, min_degree, max_degree);
  switch (type) {
    case CV_LINE: {
      const XY start = RandomPlace(random, 9);
      return LineBetween(start, RandomPlace(random, 9));
    }
    case CV_ARC: {
      const XY centre = RandomPlace(random, 5);
      const double radius = random.Uniform(.5, 4), angle = random.Uniform(-3, 3);
      Owned cv =
          Arc(centre.x, centre.y, radius, angle, random.Uniform(.2, 1.4) * (degree % 2 ? 1 : -1));
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
      const double width = RandomInt(random, 3, 5) / 8.;
      std::vector<Owned> pieces;
      for (int i = 0; i < 2; ++i) {
        const int32_t kind = kAllTypes[RandomInt(random, 0, levels > 1 ? 6 : 5)];
        pieces.push_back(RandomCurve(random, kind, max_degree, levels - 1, min_degree));
      }
      return MakeComposite({width, 1 - width}, std::move(pieces));
    }
  }
}

// A curve of any type but the composite whose radius of curvature is well above `kGentle`: control
// points along a shallow wave.
constexpr double kGentle = .4;
inline Owned GentleCurve(Random& random, int32_t type) {
  if (type == CV_LINE || type == CV_ARC) return RandomCurve(random, type, 1);
  const bool rational = IsRational(type);
  const bool spline = IsSpline(type);
  const int order = RandomInt(random, 3, 5), count = spline ? order + 2 : order;
  Numbers points, knots;
  for (int i = 0; i < count; ++i) {
    points.insert(points.end(), {i * 4. + random.Uniform(-.3, .3), random.Uniform(-.8, .8)});
    if (rational) points.push_back(random.Uniform(.8, 1.25));
  }
  for (int i = 0; spline && i < order + count; ++i)
    knots.push_back(std::clamp((i - order + 1) / 3.0, 0., 1.));
  return MakeFreeForm(type, points, knots);
}

// ---- From one point to another ----

// Sweeps `sweep` radians, counter-clockwise positive.
inline Owned ArcBetween(XY a, XY b, double sweep) {
  const double half = std::tan(sweep / 2);  // of the chord, against the distance to the centre
  const XY centre = {(a.x + b.x) / 2 - (b.y - a.y) / 2 / half,
                     (a.y + b.y) / 2 + (b.x - a.x) / 2 / half};
  Owned cv = Arc(centre.x, centre.y, std::hypot(a.x - centre.x, a.y - centre.y), 0, sweep);
  auto& arc = cv.block<KurvoArc>();
  KurvoclSetCoord(arc.start, a.x, a.y, 0);
  KurvoclSetCoord(arc.end, b.x, b.y, 0);
  return cv;
}

// Of a random type; B-splines, but those within composites, have a domain of their own.
inline Owned RandomBetween(Random& random, XY a, XY b, bool composites = true) {
  const int kind = RandomInt(random, 0, composites ? 6 : 5);
  const int32_t type = kAllTypes[kind];
  const bool rational = IsRational(type);
  const auto within = [&](int count) {
    Numbers points = RandomPoints(random, count, rational);
    points[0] = a.x;
    points[1] = a.y;
    points[points.size() - (rational ? 3 : 2)] = b.x;
    points[points.size() - (rational ? 2 : 1)] = b.y;
    return points;
  };
  switch (type) {
    case CV_LINE:
      return LineBetween(a, b);
    case CV_ARC:
      return ArcBetween(a, b, random.Uniform(.1, 6) * (Chance(random, .5) ? 1 : -1));
    case CV_BEZIER:
    case CV_RBEZIER:
      return MakeFreeForm(type, within(RandomInt(random, 2, 8)));
    case CV_BSPLINE:
    case CV_RBSPLINE: {
      const int order = RandomInt(random, 2, 5), spans = RandomInt(random, 1, 7);
      const double start = composites ? 2 : 0, end = composites ? 5 : 1;
      Numbers knots(static_cast<std::size_t>(order), start);
      for (int i = 1; i < spans; ++i) knots.push_back(start + i * (end - start) / spans);
      knots.insert(knots.end(), static_cast<std::size_t>(order), end);
      return MakeFreeForm(type, within(order + spans - 1), knots);
    }
    default: {
      const XY middle = RandomPlace(random);
      std::vector<Owned> pieces;
      pieces.push_back(RandomBetween(random, a, middle, false));
      pieces.push_back(RandomBetween(random, middle, b, false));
      return MakeComposite({.5, .5}, std::move(pieces));
    }
  }
}

// ---- Closed chains, and how often they wind around a point ----

// Many points along a chain, its vertices among them.
inline std::vector<XY> Polyline(const Chain& chain, int samples) {
  std::vector<XY> points;
  for (const Curve& cv : chain)
    for (int j = 0; j <= samples; ++j) {
      const Point p = PointAt(cv, static_cast<double>(j) / samples);
      points.push_back({p[0], p[1]});
    }
  return points;
}

// What a polygon is to a point: turns about it, counted on the half-line upwards, and the distance
// from it.
struct View {
  long turns;
  double dist;
};
inline View ViewFrom(XY p, const std::vector<XY>& polygon) {
  View view{0, kInfinity};
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const XY a = polygon[i], b = polygon[i + 1 < polygon.size() ? i + 1 : 0];
    const double dx = b.x - a.x, dy = b.y - a.y, ux = p.x - a.x, uy = p.y - a.y;
    const double cross = dx * uy - dy * ux, length2 = dx * dx + dy * dy;
    if (a.x <= p.x && p.x < b.x && cross < 0) --view.turns;  // runs to the right above p
    if (b.x <= p.x && p.x < a.x && cross > 0) ++view.turns;
    const double t = length2 > 0 ? std::clamp((ux * dx + uy * dy) / length2, 0., 1.) : 0;
    const double fx = ux - t * dx, fy = uy - t * dy;
    view.dist = std::min(view.dist, fx * fx + fy * fy);
  }
  view.dist = std::sqrt(view.dist);
  return view;
}

inline uint32_t Locate(const Chain& chain, XY p, GlobalVar& g) {
  const Coord normal = {0, 0, 1}, point = {p.x, p.y, 0};
  uint32_t result = 77;
  KurvosfPntBoundForPlane(normal, chain.get(), point, &result, &g);
  return result;
}

}  // namespace kurvo_test
