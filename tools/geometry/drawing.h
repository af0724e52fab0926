// A drawing: shapes, their outlines and their curves, and all curves in one list.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "geometry/library.h"

namespace kurvo::tools {

// Curves that run end to start. Consecutive end points are the same within the length tolerance.
struct Outline {
  std::vector<OwnedCurve> curves;
  bool closed = false;
};

// What one element of the drawing shows.
struct Shape {
  std::string label;  // "path#id", or "path[3]" for the third path of the file
  bool even_odd = false;
  std::vector<Outline> outlines;
};

// The name of one outline of the shape: its label, and ".2" for the second of several.
std::string OutlineLabel(const Shape& shape, std::size_t outline);

struct Drawing {
  std::vector<Shape> shapes;  // in drawing order
  // Elements that show something but have no outline, such as text: how often each was left out.
  std::map<std::string, int> skipped;
};

// Calls step(outline, label) for all outlines in drawing order.
template <class Step>
void ForEachOutline(const Drawing& drawing, const Step& step) {
  for (const Shape& shape : drawing.shapes) {
    for (std::size_t i = 0; i < shape.outlines.size(); ++i)
      step(shape.outlines[i], OutlineLabel(shape, i));
  }
}

// Calls step(curve) for all curves in drawing order.
template <class Step>
void ForEachCurve(const Drawing& drawing, const Step& step) {
  for (const Shape& shape : drawing.shapes) {
    for (const Outline& outline : shape.outlines) {
      for (const OwnedCurve& curve : outline.curves) step(curve);
    }
  }
}

// Called for a curve of a drawing when a long run is done with it.
using CurveDone = std::function<void()>;

std::size_t CurveCount(const Drawing& drawing);

// The drawing by chords, or by lines and arcs, that stay within `deviation` (a length) of its
// outlines.
Drawing Flattened(Library& library, const Drawing& drawing, double deviation);
Drawing FittedByArcs(Library& library, const Drawing& drawing, double deviation);

// The box around all curves.
Bounds BoundsOf(Library& library, const Drawing& drawing);

// The longer side of the box around all curves of the drawings; 1 without curves.
double Extent(Library& library, const std::vector<const Drawing*>& drawings);

struct ListedCurve {
  const OwnedCurve* curve;  // of the drawing, which must outlive the list
  std::size_t outline;      // into CurveList::outlines
  std::size_t index;        // in its outline, from 0
  Bounds box;
  // Numbers of the places where it begins and ends. Where one curve of an outline meets the next,
  // also where the last one meets the first, both have the same number; no other two do.
  std::size_t start_joint;
  std::size_t end_joint;
};

struct CurveList {
  std::vector<std::string> outlines;  // their names
  std::vector<ListedCurve> curves;    // in drawing order
};

CurveList ListCurves(Library& library, const Drawing& drawing);

}  // namespace kurvo::tools
