// Where points lie in a drawing.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "geometry/library.h"
#include "geometry/winding.h"
#include "svg/svg_reader.h"

namespace kurvo::tools {

enum class Place { kOn, kInside, kOutside };

// "on", "inside" or "outside".
std::string_view PlaceName(Place place);

// The outlines of a drawing, made ready for many questions; the drawing must stay where it is.
class Locator {
 public:
  Locator(Library& library, const Drawing& drawing);

  std::size_t OutlineCount() const { return outlines_.size(); }
  // Of one outline, in the order of the drawing: inside is where it goes around the point. One
  // whose ends do not meet is closed by a line, as it is when it is filled.
  Place InOutline(std::size_t outline, Point p) const;
  // Of the whole drawing: on an outline, inside a shape by its fill rule, or outside of all.
  Place InDrawing(Point p) const;

 private:
  struct Chain {
    std::vector<Curve> curves;  // headers; the blocks belong to the drawing, but for the last line
    OwnedCurve closing_line;    // of an outline whose ends do not meet
    std::size_t shape;
    bool even_odd;
    Winding winding;

    Cvseq Seq() const;
  };

  Library& library_;
  std::vector<Chain> outlines_;
};

}  // namespace kurvo::tools
