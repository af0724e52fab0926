// A drawing: shapes, their outlines and their curves, and all curves in one list.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

// Curves that run end to start. Consecutive end points are the same within the length tolerance.
struct Outline {
  std::vector<Curve> curves;
  bool closed = false;
};

// Colours as SVG writes them, "none" for what is not painted; a width in units of the drawing;
// opacities from 0 to 1.
struct Paint {
  std::string fill = "#000";
  std::string stroke = "none";
  double stroke_width = 1;
  double fill_opacity = 1;
  double stroke_opacity = 1;
};

// What one element of the drawing shows.
struct Shape {
  std::string label;  // "path#id", or "path[3]" for the third path of the file
  bool even_odd = false;
  std::vector<Outline> outlines;
  std::string id = {};    // of the element; empty when it has none
  std::size_t group = 0;  // that it stands in, into Drawing::groups
  Paint paint = {};
  Point origin = {};  // of coordinates of its own, such as those of a glyph in a line of text
};

// The name of one outline of the shape: its label, and ".2" for the second of several.
std::string OutlineLabel(const Shape& shape, std::size_t outline);

// An element around others. The first is the drawing itself and its own parent; parents come before
// what they contain.
struct Group {
  std::size_t parent = 0;
  std::string id = {};
  std::string layer = {};  // its name for people
  bool is_layer = false;
};

inline constexpr double kMillimetresPerInch = 25.4;
inline constexpr double kPixelsPerInch = 96;  // CSS values, section 5.2

// What the file says of its sheet.
struct Sheet {
  Bounds view;  // the part of the plane that it shows; empty when it does not say
  // Millimetres; 0 when it does not say.
  double width = 0;
  double height = 0;
  std::string fit;        // what becomes of other proportions: its preserveAspectRatio
  bool physical = false;  // whether the size is given in a unit of length, not in pixels
  double mm_per_unit = kMillimetresPerInch / kPixelsPerInch;  // assumed, unless physical
  bool y_up = false;        // whether y points up, as in fonts; down otherwise, as in SVG
  double units_per_em = 0;  // of a font; 0: it is none

  // The same sheet in units `factor` times as small.
  Sheet Scaled(double factor) const;
};

struct Drawing {
  std::vector<Shape> shapes;  // in drawing order
  std::vector<Group> groups = {{}};
  Sheet sheet = {};
  std::vector<std::string> faults;  // of elements that were left out, a line each
  std::vector<std::string> notes;   // lines about the file: what of it was not read, for one
};

// Calls step(outline, label), or step(outline, label, shape) with the number of the shape, for all
// outlines in drawing order.
template <class Step>
void ForEachOutline(const Drawing& drawing, const Step& step) {
  for (std::size_t number = 0; number < drawing.shapes.size(); ++number) {
    const Shape& shape = drawing.shapes[number];
    for (std::size_t i = 0; i < shape.outlines.size(); ++i) {
      if constexpr (std::is_invocable_v<Step, const Outline&, std::string>) {
        step(shape.outlines[i], OutlineLabel(shape, i));
      } else {
        step(shape.outlines[i], OutlineLabel(shape, i), number);
      }
    }
  }
}

// Calls step(curve) for all curves in drawing order.
template <class Step>
void ForEachCurve(const Drawing& drawing, const Step& step) {
  for (const Shape& shape : drawing.shapes) {
    for (const Outline& outline : shape.outlines) {
      for (const Curve& curve : outline.curves) step(curve);
    }
  }
}

// The drawing with other curves along its outlines: remake(outline). Outlines that keep none, which
// are points, are left out.
template <class Remake>
Drawing Remade(const Drawing& drawing, const Remake& remake) {
  Drawing remade;
  remade.faults = drawing.faults;
  remade.notes = drawing.notes;
  remade.groups = drawing.groups;
  remade.sheet = drawing.sheet;
  for (const Shape& shape : drawing.shapes) {
    Shape& copy = remade.shapes.emplace_back(
        Shape{shape.label, shape.even_odd, {}, shape.id, shape.group, shape.paint, shape.origin});
    for (const Outline& outline : shape.outlines) {
      std::vector<Curve> curves = remake(outline);
      if (!curves.empty()) copy.outlines.push_back({std::move(curves), outline.closed});
    }
  }
  return remade;
}

// Called for a curve of a drawing when a long run is done with it.
using CurveDone = std::function<void()>;

std::size_t CurveCount(const Drawing& drawing);

// The drawing by chords, or by lines and arcs, that stay within `deviation` (a length) of its
// outlines.
Drawing Flattened(
    Context& context, const Drawing& drawing, double deviation, const CurveDone& done = [] {});
Drawing FittedByArcs(
    Context& context, const Drawing& drawing, double deviation, const CurveDone& done = [] {});

// Turns the drawing over, so that y points the other way.
void TurnOver(Context& context, Drawing& drawing);

// The box around all curves.
Bounds BoundsOf(Context& context, const Drawing& drawing);

// The longer side of the box around all curves of the drawings; 1 without curves.
double Extent(Context& context, const std::vector<const Drawing*>& drawings);

struct ListedCurve {
  const Curve* curve;   // of the drawing, which must outlive the list
  std::size_t outline;  // into CurveList::outlines
  std::size_t index;    // in its outline, from 0
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

CurveList ListCurves(Context& context, const Drawing& drawing);

}  // namespace kurvo::tools
