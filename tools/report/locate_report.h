// Where points lie, as text and as JSON.
#pragma once

#include <string>
#include <vector>

#include "geometry/locate.h"

namespace kurvo::tools {

struct LocatedPoint {
  Point point;
  Place place;                  // in the drawing
  std::vector<Place> outlines;  // by outline; empty for the points of a grid
};

struct LocateReport {
  std::string name;  // of the file
  std::vector<std::string> outlines;
  std::vector<LocatedPoint> points;
  std::vector<LocatedPoint> grid;
};

// One line for each point with the outlines that it is on or inside of, and one for the grid.
std::string LocateTable(const LocateReport& report);

// The same with all digits, and every point of the grid.
std::string LocateJson(const LocateReport& report);

}  // namespace kurvo::tools
