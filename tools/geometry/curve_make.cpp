#include "geometry/curve_make.h"

#include <iterator>
#include <utility>

namespace kurvo::tools {

Curve ArcOf(Point centre, double radius, bool counter_clockwise, Point start, Point end) {
  KurvoArc arc = {};
  arc.radius = radius;
  Store(centre, arc.centre);
  arc.normal[2] = counter_clockwise ? 1 : -1;
  Store(start, arc.start);
  Store(end, arc.end);
  return Curve::Arc(arc).value();
}

Curve ConicOf(Point p0, Point p1, double weight1, Point p2) {
  return Curve::RationalBezier({{p0.x, p0.y, 0, 1}, {p1.x, p1.y, 0, weight1}, {p2.x, p2.y, 0, 1}})
      .value();
}

Curve FreeForm(const std::vector<Point>& points, const std::vector<double>& weights,
               const std::vector<double>& knots) {
  const int order = static_cast<int>(knots.size()) - static_cast<int>(points.size());
  if (weights.empty()) {
    const std::vector<kurvo::Point> all(points.begin(), points.end());
    return (knots.empty() ? Curve::Bezier(all) : Curve::BSpline(order, all, knots)).value();
  }
  std::vector<WeightedPoint> all;
  for (std::size_t i = 0; i < points.size(); ++i)
    all.push_back({points[i].x, points[i].y, 0, weights[i]});
  return (knots.empty() ? Curve::RationalBezier(all) : Curve::Nurbs(order, all, knots)).value();
}

std::optional<Curve> SplineThrough(Context& context, const std::vector<Point>& points, int order) {
  const std::vector<kurvo::Point> all(points.begin(), points.end());
  auto spline = Curve::Through(all, order, context);
  if (!spline && spline.error().code == KURVO_ERR_FIT_POINTS) return std::nullopt;
  return std::move(spline).value();
}

std::vector<Curve> Copies(Context& context, std::span<const Curve> curves) {
  std::vector<Curve> copies;
  copies.reserve(curves.size());
  for (const Curve& curve : curves) copies.push_back(curve.Copy(context).value());
  return copies;
}

std::vector<Curve> Taken(Chain chain) {
  return {std::make_move_iterator(chain.begin()), std::make_move_iterator(chain.end())};
}

}  // namespace kurvo::tools
