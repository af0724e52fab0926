// What pictures show of curves.
#pragma once

#include <string>
#include <vector>

#include "geometry/library.h"
#include "geometry/outline.h"
#include "svg/svg_reader.h"

namespace kurvo::tools {

// Between a curve and the chords by which a picture is told where it runs; a part of the longer
// side of the drawing.
inline constexpr double kChordTolerance = 5e-5;

// Curves as a picture shows them.
struct DrawnCurves {
  std::string data;  // of a path
  Bounds box;        // around what is drawn, closer than that of control points
  int count = 0;

  // `tolerance`, a length, is that of the box.
  void Add(Library& library, const OwnedCurve& curve, double tolerance);
};

struct CurveTrace {
  int type;
  DrawnCurves drawn;
  Point start;
  Point end;
  std::vector<Point> controls;  // of a Bezier curve; the centre of an arc
};

struct OutlineTrace {
  std::vector<CurveTrace> curves;
  Bounds box;  // of the control points
  bool closed;
};

// `tolerance` is a length.
OutlineTrace TraceOutline(Library& library, const Outline& outline, double tolerance);

// The longer side of the box around all curves of the drawings; 1 without curves.
double Extent(Library& library, const std::vector<const Drawing*>& drawings);

}  // namespace kurvo::tools
