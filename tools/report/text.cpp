#include "report/text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace kurvo::tools {
namespace {

constexpr std::string_view kGap = "  ";  // between columns

// What a text takes on a terminal; beyond ASCII up to some limit: as much as padding to it leaves.
std::size_t Width(const std::string& text) {
  const auto is_ascii = [](char c) { return (c & 0x80) == 0; };
  if (std::all_of(text.begin(), text.end(), is_ascii)) return text.size();
  constexpr std::size_t kWidest = 4096;
  return kWidest + text.size() - fmt::formatted_size("{:{}}", text, kWidest);
}

}  // namespace

// What rounds to nothing beside the length tolerance of 1e-6 is 0.
std::string ShortNumber(double value) {
  return fmt::format("{:.6g}", std::fabs(value) < 5e-7 ? 0.0 : value);
}

std::string PointText(Point p) { return "(" + ShortNumber(p.x) + ", " + ShortNumber(p.y) + ")"; }

std::string BoundsText(const Bounds& box) {
  if (box.IsEmpty()) return "";
  return PointText(box.Min()) + " - " + PointText(box.Max());
}

std::string CountText(std::size_t count, const std::string& what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

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
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], Width(row[i]));
  }
  std::string text;
  for (const auto& row : rows_) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (i > 0) line += kGap;
      const std::string padding(widths[i] - Width(row[i]), ' ');
      line += alignment_[i] == Align::kRight ? padding + row[i] : row[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

}  // namespace kurvo::tools
