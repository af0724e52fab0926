#include "svg/shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <utility>

#include "geometry/curve_ask.h"
#include "geometry/curve_make.h"
#include "svg/input.h"
#include "svg/path_data.h"

namespace kurvo::tools {
namespace {

// radians: an arc that turns less becomes a line. The sagitta, chord * sweep / 8, is then below
// what rounding costs at the distance of the centre, chord / sweep * 2^-53.
constexpr double kFlatSweep = 3e-8;

// Relative: a sweep may exceed a half or a quarter turn by this before it takes one more piece.
constexpr double kSweepSlack = 1e-9;

int PieceCount(double sweep, double largest) {
  return static_cast<int>(std::ceil(std::fabs(sweep) / largest - kSweepSlack));
}

constexpr double kQuarterTurn = std::numbers::pi / 2;

// A step of path data whose arc has no extent is a line, or nothing (SVG 1.1, appendix F.6.2).
void DrawArc(Point from, const PathStep& step, OutlineBuilder& pen) {
  const bool is_line = step.arc.rx == 0 || step.arc.ry == 0;
  const bool is_nothing = from.x == step.end.x && from.y == step.end.y;
  if (is_line || is_nothing) return pen.LineTo(step.end);
  pen.ArcTo(CentreForm(from, step.arc), step.end);
}

void DrawStep(Point from, const PathStep& step, OutlineBuilder& pen) {
  switch (step.kind) {
    case PathStep::Kind::kMove:
      return pen.MoveTo(step.end);
    case PathStep::Kind::kLine:
      return pen.LineTo(step.end);
    case PathStep::Kind::kQuadratic:
      return pen.QuadraticTo(step.control1, step.end);
    case PathStep::Kind::kCubic:
      return pen.CubicTo(step.control1, step.control2, step.end);
    case PathStep::Kind::kArc:
      return DrawArc(from, step, pen);
    case PathStep::Kind::kClose:
      return pen.Close();
  }
}

void DrawPath(const pugi::xml_node& element, const Viewport&, OutlineBuilder& pen) {
  Point current;
  for (const PathStep& step : ParsePathData("d", element.attribute("d").value())) {
    DrawStep(current, step, pen);
    current = step.end;
  }
}

void DrawLine(const pugi::xml_node& element, const Viewport& viewport, OutlineBuilder& pen) {
  pen.MoveTo({LengthOr(0, element, "x1", Axis::kX, viewport),
              LengthOr(0, element, "y1", Axis::kY, viewport)});
  pen.LineTo({LengthOr(0, element, "x2", Axis::kX, viewport),
              LengthOr(0, element, "y2", Axis::kY, viewport)});
}

void DrawPolyline(const pugi::xml_node& element, const Viewport&, OutlineBuilder& pen) {
  const std::vector<double> numbers = NumberList(element, "points");
  if (numbers.size() % 2 != 0) {
    throw ElementError("points", std::string_view(element.attribute("points").value()).size(),
                       "expected a y coordinate, found the end");
  }
  for (std::size_t i = 0; i < numbers.size(); i += 2) {
    const Point p = {numbers[i], numbers[i + 1]};
    if (i == 0) {
      pen.MoveTo(p);
    } else {
      pen.LineTo(p);
    }
  }
}

void DrawPolygon(const pugi::xml_node& element, const Viewport& viewport, OutlineBuilder& pen) {
  DrawPolyline(element, viewport, pen);
  pen.Close();
}

// A full turn from the end of the half diameter u.
void DrawEllipse(Point centre, double rx, double ry, OutlineBuilder& pen) {
  if (rx == 0 || ry == 0) return;
  const Point start = centre + Point{rx, 0};
  pen.MoveTo(start);
  pen.ArcTo({centre, {rx, 0}, {0, ry}, 0, 2 * std::numbers::pi}, start);
  pen.Close();
}

Point Centre(const pugi::xml_node& element, const Viewport& viewport) {
  return {LengthOr(0, element, "cx", Axis::kX, viewport),
          LengthOr(0, element, "cy", Axis::kY, viewport)};
}

void DrawCircleElement(const pugi::xml_node& element, const Viewport& viewport,
                       OutlineBuilder& pen) {
  const double r = Size(element, "r", Axis::kDiagonal, viewport).value_or(0);
  DrawEllipse(Centre(element, viewport), r, r, pen);
}

void DrawEllipseElement(const pugi::xml_node& element, const Viewport& viewport,
                        OutlineBuilder& pen) {
  const std::optional<double> rx = Size(element, "rx", Axis::kX, viewport);
  const std::optional<double> ry = Size(element, "ry", Axis::kY, viewport);
  DrawEllipse(Centre(element, viewport), rx.value_or(ry.value_or(0)), ry.value_or(rx.value_or(0)),
              pen);
}

struct Rectangle {
  double x, y, width, height;
  double rx, ry;  // of the corners
};

// Clockwise on the screen, from the left end of the upper edge.
void DrawRoundedRectangle(const Rectangle& r, OutlineBuilder& pen) {
  const double right = r.x + r.width;
  const double bottom = r.y + r.height;
  const auto corner = [&](Point centre, double start_angle, Point end) {
    pen.ArcTo({centre, {r.rx, 0}, {0, r.ry}, start_angle, kQuarterTurn}, end);
  };
  pen.MoveTo({r.x + r.rx, r.y});
  pen.LineTo({right - r.rx, r.y});
  corner({right - r.rx, r.y + r.ry}, -kQuarterTurn, {right, r.y + r.ry});
  pen.LineTo({right, bottom - r.ry});
  corner({right - r.rx, bottom - r.ry}, 0, {right - r.rx, bottom});
  pen.LineTo({r.x + r.rx, bottom});
  corner({r.x + r.rx, bottom - r.ry}, kQuarterTurn, {r.x, bottom - r.ry});
  pen.LineTo({r.x, r.y + r.ry});
  corner({r.x + r.rx, r.y + r.ry}, 2 * kQuarterTurn, {r.x + r.rx, r.y});
  pen.Close();
}

void DrawRectangle(const Rectangle& r, OutlineBuilder& pen) {
  pen.MoveTo({r.x, r.y});
  pen.LineTo({r.x + r.width, r.y});
  pen.LineTo({r.x + r.width, r.y + r.height});
  pen.LineTo({r.x, r.y + r.height});
  pen.Close();
}

void DrawRectElement(const pugi::xml_node& element, const Viewport& viewport, OutlineBuilder& pen) {
  Rectangle r = {};
  r.x = LengthOr(0, element, "x", Axis::kX, viewport);
  r.y = LengthOr(0, element, "y", Axis::kY, viewport);
  r.width = Size(element, "width", Axis::kX, viewport).value_or(0);
  r.height = Size(element, "height", Axis::kY, viewport).value_or(0);
  const std::optional<double> rx = Size(element, "rx", Axis::kX, viewport);
  const std::optional<double> ry = Size(element, "ry", Axis::kY, viewport);
  r.rx = std::min(rx.value_or(ry.value_or(0)), r.width / 2);
  r.ry = std::min(ry.value_or(rx.value_or(0)), r.height / 2);
  if (r.width == 0 || r.height == 0) return;
  if (r.rx == 0 || r.ry == 0) {
    DrawRectangle(r, pen);
  } else {
    DrawRoundedRectangle(r, pen);
  }
}

struct ShapeElement {
  std::string_view name;
  void (*draw)(const pugi::xml_node&, const Viewport&, OutlineBuilder&);
};

constexpr ShapeElement kShapes[] = {
    {"path", DrawPath},
    {"line", DrawLine},
    {"polyline", DrawPolyline},
    {"polygon", DrawPolygon},
    {"rect", DrawRectElement},
    {"circle", DrawCircleElement},
    {"ellipse", DrawEllipseElement},
};

}  // namespace

Point OutlineBuilder::Map(Point p) const {
  const Point q = map_.Apply(p);
  const auto in_range = [](double value) { return std::fabs(value) <= kLargestNumber; };
  if (!in_range(q.x) || !in_range(q.y)) throw ElementError("coordinates out of range");
  return q;
}

void OutlineBuilder::Append(Curve curve) { outline_.curves.push_back(std::move(curve)); }

void OutlineBuilder::EndOutline() {
  if (!outline_.curves.empty()) outlines_.push_back(std::move(outline_));
  outline_ = {};
}

void OutlineBuilder::MoveTo(Point p) {
  EndOutline();
  start_ = current_ = p;
}

void OutlineBuilder::LineTo(Point p) {
  Curve line = Curve::Line(MappedCurrent(), Map(p)).value();
  if (!IsPoint(context_, line)) Append(std::move(line));
  current_ = p;
}

void OutlineBuilder::QuadraticTo(Point control, Point end) {
  Curve curve = Curve::Bezier({MappedCurrent(), Map(control), Map(end)}).value();
  if (!IsPoint(context_, curve)) Append(std::move(curve));
  current_ = end;
}

void OutlineBuilder::CubicTo(Point control1, Point control2, Point end) {
  Curve curve = Curve::Bezier({MappedCurrent(), Map(control1), Map(control2), Map(end)}).value();
  if (!IsPoint(context_, curve)) Append(std::move(curve));
  current_ = end;
}

void OutlineBuilder::Spline(const std::vector<Point>& points, const std::vector<double>& weights,
                            const std::vector<double>& knots) {
  std::vector<Point> mapped;
  for (const Point p : points) mapped.push_back(Map(p));
  EndOutline();
  Curve curve = FreeForm(mapped, weights, knots);
  if (!IsPoint(context_, curve)) Append(std::move(curve));
  EndOutline();
}

void OutlineBuilder::ArcTo(const EllipticalArc& arc, Point end) {
  if (!(std::fabs(arc.sweep) > kFlatSweep)) return LineTo(end);
  const EllipticalArc mapped = Transformed(arc, map_);
  Map(arc.centre);
  if (IsCircular(mapped)) {
    AppendCircular(mapped, Map(end));
  } else {
    AppendElliptical(mapped, Map(end));
  }
  current_ = end;
}

void OutlineBuilder::AppendCircular(const EllipticalArc& arc, Point end) {
  const double radius = Size(arc.u);
  if (!IsPositive(radius * std::fabs(arc.sweep), context_)) return;
  const bool counter_clockwise = IsCounterClockwise(arc);
  const int count = PieceCount(arc.sweep, std::numbers::pi);
  Point from = MappedCurrent();
  for (int i = 1; i <= count; ++i) {
    const Point to = i == count ? end : arc.At(arc.start_angle + arc.sweep * i / count);
    Append(ArcOf(arc.centre, radius, counter_clockwise, from, to));
    from = to;
  }
}

void OutlineBuilder::AppendElliptical(const EllipticalArc& arc, Point end) {
  const int count = PieceCount(arc.sweep, std::numbers::pi / 2);
  Point from = MappedCurrent();
  double from_angle = arc.start_angle;
  for (int i = 1; i <= count; ++i) {
    const double to_angle = arc.start_angle + arc.sweep * i / count;
    const Point to = i == count ? end : arc.At(to_angle);
    const MiddleControl middle = RationalMiddle(arc, from_angle, to_angle);
    Curve curve = ConicOf(from, middle.point, middle.weight, to);
    if (!IsPoint(context_, curve)) Append(std::move(curve));
    from = to;
    from_angle = to_angle;
  }
}

void OutlineBuilder::Close() {
  LineTo(start_);
  outline_.closed = true;
  EndOutline();
}

std::vector<Outline> OutlineBuilder::Finish() {
  EndOutline();
  return std::move(outlines_);
}

bool IsShape(std::string_view element_name) {
  return std::any_of(std::begin(kShapes), std::end(kShapes),
                     [&](const ShapeElement& shape) { return shape.name == element_name; });
}

void DrawShape(std::string_view name, const pugi::xml_node& element, const Viewport& viewport,
               OutlineBuilder& pen) {
  for (const ShapeElement& shape : kShapes) {
    if (shape.name == name) shape.draw(element, viewport, pen);
  }
}

}  // namespace kurvo::tools
