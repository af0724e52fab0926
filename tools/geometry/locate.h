// Where points lie in a drawing.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "geometry/chain.h"
#include "geometry/drawing.h"
#include "geometry/parallel.h"

namespace kurvo::tools {

// "on", "inside" or "outside".
std::string_view PlaceName(Where place);

// Where points lie in a region. Throws BadResult.
std::vector<Where> WhereIn(Context& context, const KurvoRegion& region,
                           const std::vector<Point>& points);

// The outlines of a drawing, made ready for questions. An outline whose ends do not meet is closed
// by a line, as it is when it is filled.
class Locator {
 public:
  Locator(Context& context, const Drawing& drawing);

  // Of one outline, in the order of the drawing: inside is where it goes around the point.
  std::vector<Where> InOutline(std::size_t outline, const std::vector<Point>& points) const;
  // Of the whole drawing: on an outline, inside a shape by its fill rule, or outside of all. Calls
  // done() for each of its curves.
  std::vector<Where> InDrawing(
      const std::vector<Point>& points, std::size_t threads = CoreCount(),
      const CurveDone& done = [] {}) const;

 private:
  Context& context_;
  std::vector<Region> shapes_;
  std::vector<Bounds> boxes_;  // of the shapes, with all that counts as on them
  std::vector<Cvseq> loops_;   // of the shapes, one for each outline
};

}  // namespace kurvo::tools
