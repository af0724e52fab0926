#include "geometry/grid.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

#include "geometry/chain.h"

namespace kurvo::tools {
namespace {

constexpr int kHighestDegree = 3;  // of curves that stay

class GridRounder {
 public:
  GridRounder(Context& context, const GridOptions& options, Point origin, GridReport& report)
      : context_(context), options_(options), origin_(origin), report_(report) {}

  void Round(Outline& outline) {
    std::vector<OwnedCurve> simple;
    for (OwnedCurve& curve : outline.curves) Simplify(std::move(curve), simple);
    std::vector<std::vector<Point>> rounded;
    for (const OwnedCurve& curve : simple) {
      std::vector<Point> points = PointsOf(curve);
      for (Point& p : points) p = Rounded(p);
      rounded.push_back(std::move(points));
    }
    // Ends that were the same within the tolerance may lie on both sides of a half.
    const std::size_t count = rounded.size();
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t next = (i + 1) % count;
      const bool meets =
          AreSame(context_, EndOf(context_, simple[i]), StartOf(context_, simple[next]));
      if (meets) rounded[next].front() = rounded[i].back();
    }
    outline.curves.clear();
    for (const std::vector<Point>& points : rounded) Add(points, outline.curves);
  }

 private:
  // As curves of degree 1 to 3.
  void Simplify(OwnedCurve curve, std::vector<OwnedCurve>& simple) {
    const bool is_bezier = curve.Type() == CV_BEZIER &&
                           curve.Block<KurvoBezier>().degree <= kHighestDegree &&
                           curve.Block<KurvoBezier>().degree > 0;
    if (curve.Type() == CV_LINE || is_bezier) return simple.push_back(std::move(curve));
    const bool has_spans =
        curve.Type() == CV_SEGCV ||
        (curve.Type() == CV_BSPLINE && DegreeOf(context_, curve) <= kHighestDegree);
    if (has_spans) {
      for (OwnedCurve& span : OwnedCurve::Pieces(context_, curve))
        Simplify(std::move(span), simple);
      return;
    }
    const double size = BoundsOf(context_, curve).LongerSide();
    const double deviation = options_.deviation > 0 ? options_.deviation : options_.share * size;
    std::vector<OwnedCurve> cubics = Fitted(context_, curve, KURVO_FIT_CUBICS, deviation);
    std::move(cubics.begin(), cubics.end(), std::back_inserter(simple));
  }

  static std::vector<Point> PointsOf(const OwnedCurve& curve) {
    if (curve.Type() == CV_LINE) {
      const auto& line = curve.Block<KurvoLine>();
      return {{line.start[0], line.start[1]}, {line.end[0], line.end[1]}};
    }
    const auto& bezier = curve.Block<KurvoBezier>();
    std::vector<Point> points;
    for (int i = 0; i <= bezier.degree; ++i)
      points.push_back({bezier.points[i][0], bezier.points[i][1]});
    return points;
  }

  Point Rounded(Point p) {
    const auto round = [this](double value) {
      return options_.size * std::round(value / options_.size);
    };
    const Point q = origin_ + Point{round(p.x - origin_.x), round(p.y - origin_.y)};
    report_.moved = std::max(report_.moved, Size(q - p));
    return q;
  }

  static void Add(const std::vector<Point>& p, std::vector<OwnedCurve>& curves) {
    const auto is_first = [&](Point q) { return q.x == p[0].x && q.y == p[0].y; };
    if (std::all_of(p.begin(), p.end(), is_first)) return;
    if (p.size() == 2) curves.push_back(OwnedCurve::Line(p[0], p[1]));
    if (p.size() == 3) curves.push_back(OwnedCurve::Quadratic(p[0], p[1], p[2]));
    if (p.size() == 4) curves.push_back(OwnedCurve::Cubic(p[0], p[1], p[2], p[3]));
  }

  Context& context_;
  const GridOptions& options_;
  const Point origin_;
  GridReport& report_;
};

}  // namespace

GridReport RoundToGrid(Context& context, const GridOptions& options, Drawing& drawing) {
  GridReport report = {.size = options.size};
  for (Shape& shape : drawing.shapes) {
    GridRounder rounder(context, options, shape.origin, report);
    for (Outline& outline : shape.outlines) rounder.Round(outline);
    report.vanished += std::erase_if(shape.outlines,
                                     [](const Outline& outline) { return outline.curves.empty(); });
  }
  return report;
}

}  // namespace kurvo::tools
