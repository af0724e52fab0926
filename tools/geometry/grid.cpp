#include "geometry/grid.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

#include "geometry/chain.h"
#include "geometry/curve_ask.h"

namespace kurvo::tools {
namespace {

constexpr int kHighestDegree = 3;  // of curves that stay

class GridRounder {
 public:
  GridRounder(Context& context, const GridOptions& options, Point origin, GridReport& report)
      : context_(context), options_(options), origin_(origin), report_(report) {}

  void Round(Outline& outline) {
    std::vector<Curve> simple;
    for (Curve& curve : outline.curves) Simplify(std::move(curve), simple);
    std::vector<std::vector<Point>> rounded;
    for (const Curve& curve : simple) {
      std::vector<Point> points = PointsOf(curve);
      for (Point& p : points) p = Rounded(p);
      rounded.push_back(std::move(points));
    }
    // Ends that were the same within the tolerance may lie on both sides of a half.
    const std::size_t count = rounded.size();
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t next = (i + 1) % count;
      const bool meets = Follows(context_, simple[i], simple[next]);
      if (meets) rounded[next].front() = rounded[i].back();
    }
    outline.curves.clear();
    for (const std::vector<Point>& points : rounded) Add(points, outline.curves);
  }

 private:
  // As curves of degree 1 to 3.
  void Simplify(Curve curve, std::vector<Curve>& simple) {
    const bool is_bezier = curve.Type() == CV_BEZIER &&
                           curve.As<KurvoBezier>()->degree <= kHighestDegree &&
                           curve.As<KurvoBezier>()->degree > 0;
    if (curve.Type() == CV_LINE || is_bezier) return simple.push_back(std::move(curve));
    const bool has_spans =
        curve.Type() == CV_SEGCV ||
        (curve.Type() == CV_BSPLINE && curve.Degree(context_).value() <= kHighestDegree);
    if (has_spans) {
      Curve spans = curve.Converted(CV_SEGCV, context_).value();
      for (Curve& span : spans) Simplify(std::move(span), simple);
      return;
    }
    const double size = BoundsOf(context_, curve).LongerSide();
    const double deviation = options_.deviation > 0 ? options_.deviation : options_.share * size;
    std::vector<Curve> cubics = Fitted(context_, curve, Form::kCubics, deviation);
    std::move(cubics.begin(), cubics.end(), std::back_inserter(simple));
  }

  static std::vector<Point> PointsOf(const Curve& curve) {
    if (const KurvoLine* line = curve.AsLine()) return {Load(line->start), Load(line->end)};
    return ControlPointsOf(curve);
  }

  Point Rounded(Point p) {
    const auto round = [this](double value) {
      return options_.size * std::round(value / options_.size);
    };
    const Point q = origin_ + Point{round(p.x - origin_.x), round(p.y - origin_.y)};
    report_.moved = std::max(report_.moved, Size(q - p));
    return q;
  }

  static void Add(const std::vector<Point>& p, std::vector<Curve>& curves) {
    const auto is_first = [&](Point q) { return q.x == p[0].x && q.y == p[0].y; };
    if (std::all_of(p.begin(), p.end(), is_first)) return;
    if (p.size() == 2) curves.push_back(Curve::Line(p[0], p[1]).value());
    if (p.size() == 3) curves.push_back(Curve::Bezier({p[0], p[1], p[2]}).value());
    if (p.size() == 4) curves.push_back(Curve::Bezier({p[0], p[1], p[2], p[3]}).value());
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
