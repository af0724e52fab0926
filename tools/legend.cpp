#include "legend.h"

#include <utility>

namespace kurvo::tools {
namespace {

// Pixels.
constexpr double kFontSize = 14;
constexpr double kLetterWidth = 0.55 * kFontSize;  // on average, to lay out what cannot be measured
constexpr double kRowHeight = 24;
constexpr double kBottomSpace = 8;
constexpr double kIndent = 24;
constexpr double kMarkWidth = 28;
constexpr double kMarkSpace = 7;
constexpr double kEntrySpace = 22;
constexpr double kTextDrop = 5;  // of the base line below the middle of the row

double EntryWidth(const LegendEntry& entry) {
  return kMarkWidth + kMarkSpace + kLetterWidth * static_cast<double>(entry.text.size());
}

}  // namespace

Legend::Legend(std::vector<LegendEntry> entries, double width, double pixel) : pixel_(pixel) {
  double x = kIndent;
  for (LegendEntry& entry : entries) {
    const double entry_width = EntryWidth(entry);
    const bool starts_row = rows_ == 0 || (x + entry_width) * pixel > width;
    if (starts_row) {
      x = kIndent;
      ++rows_;
    }
    placed_.push_back({std::move(entry), x, rows_ - 1});
    x += entry_width + kEntrySpace;
  }
}

double Legend::Height() const { return (rows_ * kRowHeight + kBottomSpace) * pixel_; }

void Legend::Write(Point top_left, SvgText& out) const {
  out.OpenGroup("font-family=\"sans-serif\" fill=\"#334155\" " +
                out.Attribute("font-size", kFontSize * pixel_));
  for (const Placed& placed : placed_) {
    const Point left = top_left + pixel_ * Point{placed.x, (placed.row + 0.5) * kRowHeight};
    WriteMark(placed.entry, left, out);
    out.Text(left + pixel_ * Point{kMarkWidth + kMarkSpace, kTextDrop}, placed.entry.text);
  }
  out.CloseGroup();
}

void Legend::WriteMark(const LegendEntry& entry, Point left, SvgText& out) const {
  const Point middle = left + pixel_ * Point{kMarkWidth / 2, 0};
  const Point right = left + pixel_ * Point{kMarkWidth, 0};
  const auto stroke = [&](double width) {
    return "fill=\"none\" stroke=\"" + std::string(entry.colour) + "\" " +
           out.Attribute("stroke-width", width * pixel_);
  };
  switch (entry.mark) {
    case LegendEntry::Mark::kCurve:
      return out.Path(out.Polyline({left, right}), stroke(3));
    case LegendEntry::Mark::kControl:
      out.Path(out.Polyline({left, right}), stroke(1));
      return out.Path(out.Square(middle, 2.5 * pixel_),
                      "fill=\"" + std::string(entry.colour) + "\"");
    case LegendEntry::Mark::kPoint:
      out.OpenGroup("fill=\"#fff\" stroke=\"" + std::string(entry.colour) + "\" " +
                    out.Attribute("stroke-width", pixel_));
      out.Circle(middle, 3 * pixel_);
      return out.CloseGroup();
    case LegendEntry::Mark::kBox:
      return out.Path(out.Rectangle({left.x, left.y - 6 * pixel_, right.x, left.y + 6 * pixel_}),
                      stroke(1) + " stroke-dasharray=\"" + out.Number(4 * pixel_) + "\"");
  }
}

}  // namespace kurvo::tools
