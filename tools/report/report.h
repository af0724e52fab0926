// The table of outlines that the client prints.
#pragma once

#include <string>

#include "geometry/library.h"
#include "svg/svg_reader.h"

namespace kurvo::tools {

// One line for each outline: name, curves by type, largest degree, start, end, box; then the
// totals.
std::string OutlineTable(Library& library, const Drawing& drawing);

}  // namespace kurvo::tools
