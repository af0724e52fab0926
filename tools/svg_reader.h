// Reads the outlines of an SVG drawing.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "library.h"
#include "outline.h"

namespace kurvo::tools {

struct Drawing {
  std::vector<Shape> shapes;  // in drawing order
  // Elements that show something but have no outline, such as text: how often each was left out.
  std::map<std::string, int> skipped;
};

// The shapes of the file that are displayed, whatever they are painted with, in the coordinates of
// the outermost viewBox; y points as in the file. Throws InputError.
Drawing ReadSvg(Library& library, const std::string& path);

}  // namespace kurvo::tools
