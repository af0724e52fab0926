// The picture of a drawing's curves, as SVG.
#pragma once

#include <optional>
#include <string>

#include "geometry/library.h"
#include "svg/svg_reader.h"

namespace kurvo::tools {

struct PictureOptions {
  bool control = true;  // control polygons, and the centres of arcs
  bool points = true;   // end points
  bool boxes = true;    // of each outline
  bool legend = true;
  bool comb = false;         // curvature combs
  bool curves_only = false;  // one thin black stroke and nothing else
  bool fill = false;         // the shapes filled by their fill rule; with curves_only, not stroked
  double size = 1000;        // pixels along the longer side
  std::optional<double> stroke_width;  // of the curves, in units of the drawing
};

// The curves as they are, in the coordinates of the drawing; the viewBox fits what is shown.
std::string PictureOf(Library& library, const Drawing& drawing, const PictureOptions& options);

}  // namespace kurvo::tools
