#include "svg/outline_builder.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "svg/input_error.h"
#include "svg/text_scanner.h"

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

}  // namespace

Point OutlineBuilder::Map(Point p) const {
  const Point q = map_.Apply(p);
  const auto in_range = [](double value) { return std::fabs(value) <= kLargestNumber; };
  if (!in_range(q.x) || !in_range(q.y)) throw ElementError("coordinates out of range");
  return q;
}

void OutlineBuilder::Append(OwnedCurve curve) { outline_.curves.push_back(std::move(curve)); }

void OutlineBuilder::EndOutline() {
  if (!outline_.curves.empty()) outlines_.push_back(std::move(outline_));
  outline_ = {};
}

void OutlineBuilder::MoveTo(Point p) {
  EndOutline();
  start_ = current_ = p;
}

void OutlineBuilder::LineTo(Point p) {
  OwnedCurve line = OwnedCurve::Line(MappedCurrent(), Map(p));
  if (!IsPoint(library_, line)) Append(std::move(line));
  current_ = p;
}

void OutlineBuilder::QuadraticTo(Point control, Point end) {
  OwnedCurve curve = OwnedCurve::Quadratic(MappedCurrent(), Map(control), Map(end));
  if (!IsPoint(library_, curve)) Append(std::move(curve));
  current_ = end;
}

void OutlineBuilder::CubicTo(Point control1, Point control2, Point end) {
  OwnedCurve curve = OwnedCurve::Cubic(MappedCurrent(), Map(control1), Map(control2), Map(end));
  if (!IsPoint(library_, curve)) Append(std::move(curve));
  current_ = end;
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
  const double radius = std::hypot(arc.u.x, arc.u.y);
  if (KurvoclPositive(radius * std::fabs(arc.sweep), library_.State()) == 0) return;
  const bool counter_clockwise = IsCounterClockwise(arc);
  const int count = PieceCount(arc.sweep, std::numbers::pi);
  Point from = MappedCurrent();
  for (int i = 1; i <= count; ++i) {
    const Point to = i == count ? end : arc.At(arc.start_angle + arc.sweep * i / count);
    Append(OwnedCurve::Arc(arc.centre, radius, counter_clockwise, from, to));
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
    OwnedCurve curve = OwnedCurve::RationalQuadratic(from, middle.point, middle.weight, to);
    if (!IsPoint(library_, curve)) Append(std::move(curve));
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

}  // namespace kurvo::tools
