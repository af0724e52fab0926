// Where points lie in a drawing.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "library.h"
#include "svg_reader.h"

namespace kurvo::tools {

enum class Place { kOn, kInside, kOutside };

// "on", "inside" or "outside".
std::string_view PlaceName(Place place);

// The outlines of a drawing, made ready for many questions.
class Locator {
 public:
  Locator(Library& library, const Drawing& drawing);

  std::size_t OutlineCount() const { return outlines_.size(); }
  // Of one outline, in the order of the drawing. An open one has no inside.
  Place InOutline(std::size_t outline, Point p) const;
  // Of the whole drawing: on an outline, inside a shape by its fill rule, or outside of all.
  Place InDrawing(Point p) const;

 private:
  struct Chain {
    std::vector<Curve> curves;  // headers; the blocks belong to the drawing
    std::size_t shape;
    bool even_odd;
    int sense;  // 1 for counter-clockwise, -1; 0 for a chain that encloses nothing

    Cvseq Seq() const;
  };

  Library& library_;
  std::vector<Chain> outlines_;
};

}  // namespace kurvo::tools
