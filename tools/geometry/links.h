// The shortest links between the outlines of two drawings.
#pragma once

#include <cstddef>
#include <vector>

#include "geometry/drawing.h"
#include "geometry/parallel.h"

namespace kurvo::tools {

// Between a curve of the first drawing and one of the second.
struct Link {
  std::size_t first;  // into the lists of curves
  std::size_t second;
  Closest at;  // on the two curves
  Point from;
  Point to;
};

// For each outline of the first drawing the shortest link to any outline of the second, in drawing
// order; none when one of the drawings is empty. Of several shortest the one with the first curves.
// `done` is called for each curve of the first drawing, from several threads.
std::vector<Link> FindLinks(const CurveList& first, const CurveList& second, const CurveDone& done,
                            std::size_t threads = CoreCount());

// A line for each of them.
std::vector<Curve> LinesOf(const std::vector<Link>& links);

// The first of the shortest; null without links.
const Link* Shortest(const std::vector<Link>& links);

}  // namespace kurvo::tools
