// Pieces of outlines as a table, as JSON and as a drawing.
#pragma once

#include <string>
#include <vector>

#include "geometry/split.h"

namespace kurvo::tools {

struct SplitReport {
  std::string name;  // of the file
  const std::vector<SplitOutline>& outlines;
};

std::string SplitTable(Library& library, const SplitReport& report);
std::string SplitJson(Library& library, const SplitReport& report);

// One path for each piece and nothing else, so that it can be read as a drawing of the pieces;
// neighbours have different colours. `size` is in pixels along the longer side, `extent` that of
// the drawing they come from.
std::string SplitPicture(Library& library, const std::vector<SplitOutline>& outlines, double extent,
                         double size);

}  // namespace kurvo::tools
