// Tables of text with aligned columns.
#pragma once

#include <string>
#include <vector>

namespace kurvo::tools {

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
