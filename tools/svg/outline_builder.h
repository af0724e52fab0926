// Builds the outlines of one shape, step by step, as a pen would draw them.
#pragma once

#include <vector>

#include "geometry/affine.h"
#include "geometry/elliptical_arc.h"
#include "geometry/library.h"
#include "geometry/outline.h"

namespace kurvo::tools {

// Points go in as the element gives them and through `map` before they reach a record. A circular
// arc that `map` keeps circular becomes arcs of at most half a turn; any other arc of an ellipse
// becomes rational Bezier curves of at most a quarter turn, which are exact. Curves that are single
// points within the length tolerance are dropped, and outlines without curves. All steps throw
// ElementError when a point is out of range.
class OutlineBuilder {
 public:
  OutlineBuilder(Library& library, const Affine& map) : library_(library), map_(map) {}

  void MoveTo(Point p);
  void LineTo(Point p);
  void QuadraticTo(Point control, Point end);
  void CubicTo(Point control1, Point control2, Point end);
  // `end` is the end point of `arc`, to the last bit.
  void ArcTo(const EllipticalArc& arc, Point end);
  // Draws a line to the start of the outline, unless the pen is there, and ends the outline.
  void Close();

  std::vector<Outline> Finish();

 private:
  void Append(OwnedCurve curve);
  void AppendCircular(const EllipticalArc& arc, Point end);
  void AppendElliptical(const EllipticalArc& arc, Point end);
  Point Map(Point p) const;
  Point MappedCurrent() const { return Map(current_); }
  void EndOutline();

  Library& library_;
  const Affine map_;
  Point start_;
  Point current_;
  Outline outline_;
  std::vector<Outline> outlines_;
};

}  // namespace kurvo::tools
