// The outlines of a drawing as curve records.
#pragma once

#include <cstddef>
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

}  // namespace kurvo::tools
