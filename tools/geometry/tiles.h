// Drawings over several sheets of paper at their true scale.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/drawing.h"

namespace kurvo::tools {

// Lengths in units of the drawing.
struct Paper {
  double width;
  double height;
  double margin;   // that is not printed on
  double overlap;  // of neighbours, within their margins
};

struct Page {
  std::size_t row;  // from the top, from 0
  std::size_t column;
  Bounds sheet;     // the part of the plane that it covers
  Bounds printed;   // without the margins
  Drawing drawing;  // what it shows there
  std::size_t outlines;
};

struct Pages {
  std::vector<Page> pages;  // row by row, without those that show nothing
  std::size_t rows = 0;
  std::size_t columns = 0;
};

// "2-3": row and column, from 1.
std::string PageName(const Page& page);

// The lines of the drawing on as few sheets as a grid takes, and on each sheet marks: a frame
// around what is printed, crosses that lie over those of the neighbours, and row and column.
// Throws std::runtime_error when they are too many, or too small to print on.
Pages Tiled(Context& context, const Drawing& drawing, const Paper& paper, const CurveDone& done);

// All sheets beside and below each other, each a layer. Their overlaps are there twice.
Drawing OnOneSheet(Context& context, const Drawing& source, const Pages& pages, const Paper& paper);

}  // namespace kurvo::tools
