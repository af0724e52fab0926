// What pictures show of curves.
#pragma once

#include <vector>

#include "library.h"
#include "outline.h"
#include "svg_reader.h"

namespace kurvo::tools {

// Between a curve and the chords that are drawn for it; a part of the longer side of the drawing.
inline constexpr double kChordTolerance = 5e-5;

struct CurveTrace {
  int type;
  std::vector<Point> samples;
  std::vector<Point> controls;  // of a Bezier curve; the centre of an arc
};

struct OutlineTrace {
  std::vector<CurveTrace> curves;
  Bounds box;
  bool closed;
};

// `tolerance` is a length.
OutlineTrace TraceOutline(Library& library, const Outline& outline, double tolerance);

// The longer side of the box around all curves of the drawings; 1 without curves.
double Extent(Library& library, const std::vector<const Drawing*>& drawings);

}  // namespace kurvo::tools
