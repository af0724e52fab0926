// Where points lie in a drawing.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "geometry/drawing.h"
#include "geometry/library.h"

namespace kurvo::tools {

// How often one outline goes around points, made ready for many questions; it must stay where it
// is.
class Winding {
 public:
  Winding(Library& library, const Outline& outline);

  // The turns around a point farther than the length tolerance from all curves, positive from the x
  // axis to the y axis. What the outline leaves open between its curves is closed by lines.
  int TurnsAround(Point p) const;

 private:
  struct Piece {
    const OwnedCurve* curve;
    Bounds box;
    Point start;
    Point end;
  };

  int CrossingsOf(const Piece& piece, Point p, int halvings_left) const;

  Library& library_;
  std::vector<Piece> pieces_;
};

enum class Place { kOn, kInside, kOutside };

// "on", "inside" or "outside".
std::string_view PlaceName(Place place);

// The outlines of a drawing, made ready for many questions; the drawing must stay where it is.
class Locator {
 public:
  Locator(Library& library, const Drawing& drawing);

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
