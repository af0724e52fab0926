// Closed chains for the tests of regions, and how often they wind around a point.
#pragma once

#include <cmath>
#include <vector>

#include "support/generator.h"

namespace kurvo_test {

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
