// Where the curves of drawings cross, touch and run together.
#pragma once

#include <cstddef>
#include <vector>

#include "geometry/drawing.h"

namespace kurvo::tools {

// A point that two curves share, by a parameter of each.
struct CommonPoint {
  double first;
  double second;
};

// A stretch along which both curves run, from the smaller parameter of the first one.
struct CommonStretch {
  CommonPoint from;
  CommonPoint to;
};

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
// an overlap that begins or ends there. `done` is called for each curve of both.
Crossings FindCrossings(Context& context, const CurveList& first, const CurveList& second,
                        const CurveDone& done);

// What different curves of one drawing have in common, in the same way. The joints of its outlines
// are left out unless `joints` is set.
Crossings FindCrossings(Context& context, const CurveList& curves, bool joints,
                        const CurveDone& done);

}  // namespace kurvo::tools
