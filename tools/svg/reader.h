// Reads the outlines of an SVG drawing.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "geometry/drawing.h"
#include "geometry/library.h"

namespace kurvo::tools {

// The shapes of the file that are displayed, whatever they are painted with, in the coordinates of
// the outermost viewBox; y points as in the file. Throws InputError.
Drawing ReadSvg(Library& library, const std::string& path);

}  // namespace kurvo::tools
