// Outlines in pieces.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "geometry/drawing.h"
#include "geometry/library.h"

namespace kurvo::tools {

// A stretch of an outline: curves that run end to start.
struct Piece {
  std::vector<OwnedCurve> curves;  // at least one, none of them a point
  double length = 0;
};

struct SplitOutline {
  std::string label;
  std::vector<Piece> pieces;
};

// Every curve of the drawing cut at the parameters, which ascend and lie in [0, 1]: a piece for
// each part that is not a point. `done` is called for each curve, here and below.
std::vector<SplitOutline> SplitAt(Library& library, const Drawing& drawing,
                                  const std::vector<double>& parameters, const CurveDone& done);

// Every outline in `count` pieces of the same arc length; one without length gives none.
std::vector<SplitOutline> SplitIntoParts(Library& library, const Drawing& drawing,
                                         std::size_t count, const CurveDone& done);

}  // namespace kurvo::tools
