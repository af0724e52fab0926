// Measures as text and as JSON.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "geometry/measure.h"

namespace kurvo::tools {

struct MeasureReport {
  std::string name;  // of the file
  std::optional<Point> near;
  const std::vector<OutlineMeasures>& outlines;
};

// One line for each outline, followed by one for each of its curves, and in the end the nearest
// point of all. Curves are counted from 1.
std::string MeasureTable(const MeasureReport& report);

// The same with all digits.
std::string MeasureJson(const MeasureReport& report);

}  // namespace kurvo::tools
