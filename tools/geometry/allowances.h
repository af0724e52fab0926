// Seam allowances: elements that grow by more along some of their edges than along others.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "geometry/drawing.h"
#include "geometry/regions.h"

namespace kurvo::tools {

struct Allowance {
  std::string element;  // as ShapesNamed takes it
  // The first and the last of each run of edges, which are the curves of the element from 0 on in
  // the order of its outlines; none: all of them.
  std::vector<std::pair<std::size_t, std::size_t>> edges;
  double width;  // not negative
};

// For each shape the width along each of its edges, `usual` where no allowance says one; nothing
// for shapes that none names. Of several the last holds. Throws std::runtime_error when an element
// or an edge is not there.
std::vector<std::vector<double>> WidthsOf(const Drawing& drawing,
                                          const std::vector<Allowance>& allowances, double usual);

// The shapes that have widths, each by itself: what it covers and the stretches along its edges,
// as wide as they are. Where two widths meet in a corner, the stretches are joined: mitred or
// rounded between the lines along which they end, where these meet ahead, and else by a line.
// Edges of one width are joined as the pen does it. Open outlines are left out.
Regions WithAllowances(const Drawing& drawing, const std::vector<std::vector<double>>& widths,
                       const Closing& closing, const PenOptions& pen, const CurveDone& done);

}  // namespace kurvo::tools
