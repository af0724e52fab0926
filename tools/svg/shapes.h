// The shape elements, path, line, polyline, polygon, rect, circle and ellipse, and the pen that
// draws them.
#pragma once

#include <pugixml.hpp>
#include <string_view>
#include <vector>

#include "geometry/drawing.h"
#include "geometry/elliptical_arc.h"
#include "geometry/plane.h"
#include "svg/attributes.h"

namespace kurvo::tools {

// Builds the outlines of one shape, step by step, as a pen would draw them.
//
// Points go in as the element gives them and through `map` before they reach a record. A circular
// arc that `map` keeps circular becomes arcs of at most half a turn; any other arc of an ellipse
// becomes rational Bezier curves of at most a quarter turn, which are exact. Curves that are single
// points within the length tolerance are dropped, and outlines without curves. All steps throw
// ElementError when a point is out of range.
class OutlineBuilder {
 public:
  OutlineBuilder(Context& context, const Affine& map) : context_(context), map_(map) {}

  void MoveTo(Point p);
  void LineTo(Point p);
  void QuadraticTo(Point control, Point end);
  void CubicTo(Point control1, Point control2, Point end);
  // `end` is the end point of `arc`, to the last bit.
  void ArcTo(const EllipticalArc& arc, Point end);
  // A spline from its first point, which begins an outline, to its last.
  void Spline(const std::vector<Point>& points, const std::vector<double>& weights,
              const std::vector<double>& knots);
  // Draws a line to the start of the outline, unless the pen is there, and ends the outline.
  void Close();

  std::vector<Outline> Finish();

 private:
  void Append(Curve curve);
  void AppendCircular(const EllipticalArc& arc, Point end);
  void AppendElliptical(const EllipticalArc& arc, Point end);
  Point Map(Point p) const;
  Point MappedCurrent() const { return Map(current_); }
  void EndOutline();

  Context& context_;
  const Affine map_;
  Point start_;
  Point current_;
  Outline outline_;
  std::vector<Outline> outlines_;
};

bool IsShape(std::string_view element_name);

// Draws the outlines of a shape element, named `name`. An element without extent (no radius, no
// width, no data) draws nothing. Throws ElementError.
void DrawShape(std::string_view name, const pugi::xml_node& element, const Viewport& viewport,
               OutlineBuilder& pen);

}  // namespace kurvo::tools
