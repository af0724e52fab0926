// Reads the outlines of an SVG drawing.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "geometry/library.h"
#include "geometry/outline.h"

namespace kurvo::tools {

struct Drawing {
  std::vector<Shape> shapes;  // in drawing order
  // Elements that show something but have no outline, such as text: how often each was left out.
  std::map<std::string, int> skipped;
};

// Calls step(curve) for all curves in drawing order.
template <class Step>
void ForEachCurve(const Drawing& drawing, const Step& step) {
  for (const Shape& shape : drawing.shapes) {
    for (const Outline& outline : shape.outlines) {
      for (const OwnedCurve& curve : outline.curves) step(curve);
    }
  }
}

std::size_t CurveCount(const Drawing& drawing);

// The box around all curves.
Bounds BoundsOf(Library& library, const Drawing& drawing);

// The shapes of the file that are displayed, whatever they are painted with, in the coordinates of
// the outermost viewBox; y points as in the file. Throws InputError.
Drawing ReadSvg(Library& library, const std::string& path);

}  // namespace kurvo::tools
