// Points from a text file.
#pragma once

#include <string>
#include <vector>

#include "geometry/library.h"

namespace kurvo::tools {

// The points of a file with one on each line, "x,y" or "x y"; empty lines and lines that begin with
// # say nothing. There are at least two, and no neighbours are the same. Throws InputError, which
// names file and line.
std::vector<Point> ReadPoints(Library& library, const std::string& path);

}  // namespace kurvo::tools
