// Closed chains for the tests of regions, and how often they wind around a point.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "relate/chain.h"

namespace kurvo_test {

struct XY {
  double x, y;
};

inline Owned LineBetween(XY a, XY b) {
  Owned cv;
  auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(cv.get(), CV_LINE));
  KurvoclSetCoord(line->start, a.x, a.y, 0);
  KurvoclSetCoord(line->end, b.x, b.y, 0);
  return cv;
}

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

// A curve of a random kind from a to b.
inline Owned RandomBetween(Random& random, XY a, XY b, bool composites = true) {
  const auto within = [&](int count, bool weights) {
    Numbers points = {a.x, a.y};
    if (weights) points.push_back(random.Uniform(.5, 2));
    const Numbers inner = RandomPoints(random, count - 2, weights);
    points.insert(points.end(), inner.begin(), inner.end());
    points.insert(points.end(), {b.x, b.y});
    if (weights) points.push_back(random.Uniform(.5, 2));
    return points;
  };
  const auto kind = static_cast<int>(random.Uniform(0, composites ? 7 : 6));
  const bool rational = kind % 2 == 1;
  switch (kind) {
    case 0:
      return LineBetween(a, b);
    case 1:
      return ArcBetween(a, b, random.Uniform(.1, 6) * (random.Uniform(-1, 1) < 0 ? -1 : 1));
    case 2:
    case 3:
      return MakeFreeForm(rational ? CV_RBEZIER : CV_BEZIER,
                          within(static_cast<int>(random.Uniform(2, 9)), rational));
    case 4:
    case 5: {
      const int order = static_cast<int>(random.Uniform(2, 6));
      const int spans = static_cast<int>(random.Uniform(1, 8));
      const double start = composites ? 2 : 0, end = composites ? 5 : 1;  // pieces run over [0, 1]
      Numbers knots(static_cast<std::size_t>(order), start);
      for (int i = 1; i < spans; ++i) knots.push_back(start + i * (end - start) / spans);
      knots.insert(knots.end(), static_cast<std::size_t>(order), end);
      return MakeFreeForm(rational ? CV_RBSPLINE : CV_BSPLINE, within(order + spans - 1, rational),
                          knots);
    }
    default: {
      const XY middle = {random.Uniform(-kSize, kSize), random.Uniform(-kSize, kSize)};
      std::vector<Owned> pieces;
      pieces.push_back(RandomBetween(random, a, middle, false));
      pieces.push_back(RandomBetween(random, middle, b, false));
      return MakeComposite({.5, .5}, std::move(pieces));
    }
  }
}

// Many points along a chain, its vertices among them.
inline std::vector<XY> Polyline(const Cvseq& seq, int samples) {
  std::vector<XY> points;
  for (int i = 0; i < seq.count; ++i)
    for (int j = 0; j <= samples; ++j) {
      const Point p = PointAt(seq.curves[i], static_cast<double>(j) / samples);
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

inline uint32_t Locate(const Cvseq* seq, XY p, GlobalVar& g) {
  const Coord normal = {0, 0, 1}, point = {p.x, p.y, 0};
  uint32_t result = 77;
  KurvosfPntBoundForPlane(normal, seq, point, &result, &g);
  return result;
}

}  // namespace kurvo_test
