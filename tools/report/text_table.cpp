#include "report/text_table.h"

#include <algorithm>
#include <utility>

namespace kurvo::tools {
namespace {

constexpr const char* kGap = "  ";  // between columns

// Letters of a text in UTF-8: all bytes but those that continue a letter.
std::size_t LetterCount(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

}  // namespace

TextTable::TextTable(const std::vector<Column>& columns) {
  std::vector<std::string> titles;
  for (const Column& column : columns) {
    titles.push_back(column.title);
    alignment_.push_back(column.align);
  }
  Add(std::move(titles));
}

void TextTable::Add(std::vector<std::string> cells) {
  cells.resize(alignment_.size());
  rows_.push_back(std::move(cells));
}

std::string TextTable::Text() const {
  std::vector<std::size_t> widths(alignment_.size());
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < row.size(); ++i)
      widths[i] = std::max(widths[i], LetterCount(row[i]));
  }
  std::string text;
  for (const auto& row : rows_) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string padding(widths[i] - LetterCount(row[i]), ' ');
      if (i > 0) line += kGap;
      line += alignment_[i] == Align::kRight ? padding + row[i] : row[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

}  // namespace kurvo::tools
