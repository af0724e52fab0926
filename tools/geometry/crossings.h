// Where the curves of drawings cross, touch and run together.
#pragma once

#include <cstddef>
#include <vector>

#include "cli/progress.h"
#include "geometry/curve_list.h"
#include "geometry/curve_pair.h"

namespace kurvo::tools {

// A point that two curves share: a crossing or a contact.
struct Crossing {
  std::size_t first;  // curves, into the lists
  std::size_t second;
  CommonPoint at;
  Point point;  // of the first curve
};

// A stretch that two curves share.
struct Overlap {
  std::size_t first;
  std::size_t second;
  // Whether its ends are known: they are not where curves run together and neither of them ends.
  bool has_ends;
  CommonStretch stretch;
  Point from;  // of the first curve
  Point to;
};

// Both in the order of the first and then the second curves.
struct Crossings {
  std::vector<Crossing> crossings;
  std::vector<Overlap> overlaps;
};

// What curves of two drawings have in common. A point where an outline goes from one curve to the
// next counts once for the outline, with the first of its curves that has it, and not at all beside
// an overlap that begins or ends there. `progress` takes a step for each curve of both.
Crossings FindCrossings(Library& library, const CurveList& first, const CurveList& second,
                        Progress& progress);

// What different curves of one drawing have in common, in the same way. The joints of its outlines
// are left out unless `joints` is set.
Crossings FindCrossings(Library& library, const CurveList& curves, bool joints, Progress& progress);

}  // namespace kurvo::tools
