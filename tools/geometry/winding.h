// How often closed outlines go around points.
#pragma once

#include <vector>

#include "geometry/outline.h"

namespace kurvo::tools {

// One outline, made ready for many questions; it must stay where it is.
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

}  // namespace kurvo::tools
