// Numbers, points and tables for people.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

// Six significant digits at most.
std::string ShortNumber(double value);

// "(1, 2)", and "(0, 0) - (1, 2)" for a box, which is nothing when it is empty.
std::string PointText(Point p);
std::string BoundsText(const Bounds& box);

// "1 crossing", "2 crossings".
std::string CountText(std::size_t count, const std::string& what);

// Rows of text in aligned columns.
class TextTable {
 public:
  enum class Align { kLeft, kRight };
  struct Column {
    std::string title;
    Align align = Align::kLeft;
  };

  explicit TextTable(const std::vector<Column>& columns);

  // Cells that are missing at the end are empty.
  void Add(std::vector<std::string> cells);
  // One line for the titles and one for each row.
  std::string Text() const;

 private:
  std::vector<Align> alignment_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace kurvo::tools
