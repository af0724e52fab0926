#include "picture/legend.h"

#include <algorithm>
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
constexpr double kBoxHalfHeight = 6;
constexpr int kLegendTeeth = 4;
constexpr double kTextDrop = 5;  // of the base line below the middle of the row

double EntryWidth(const LegendEntry& entry) {
  return kMarkWidth + kMarkSpace + kLetterWidth * static_cast<double>(entry.text.size());
}

}  // namespace

double LeastLegendWidth(const std::vector<LegendEntry>& entries) {
  double widest = 0;
  for (const LegendEntry& entry : entries) widest = std::max(widest, EntryWidth(entry));
  return widest + 2 * kIndent;
}

Legend::Legend(std::vector<LegendEntry> entries, double width) {
  double x = kIndent;
  for (LegendEntry& entry : entries) {
    const double entry_width = EntryWidth(entry);
    if (rows_ == 0 || x + entry_width > width) {
      x = kIndent;
      ++rows_;
    }
    placed_.push_back({std::move(entry), {x, (rows_ - 0.5) * kRowHeight}});
    x += entry_width + kEntrySpace;
  }
}

double Legend::Height() const { return rows_ * kRowHeight + kBottomSpace; }

void Legend::Write(Point top_left, double pixel, SvgText& out) const {
  out.OpenPixelGroup(
      top_left, pixel,
      "font-family=\"sans-serif\" fill=\"#334155\" " + out.Attribute("font-size", kFontSize));
  for (const Placed& placed : placed_) {
    WriteMark(placed.entry, placed.left, out);
    out.Text(placed.left + Point{kMarkWidth + kMarkSpace, kTextDrop}, placed.entry.text);
  }
  out.CloseGroup();
}

void Legend::WriteMark(const LegendEntry& entry, Point left, SvgText& out) {
  const Point middle = left + Point{kMarkWidth / 2, 0};
  const Point right = left + Point{kMarkWidth, 0};
  const std::string colour = "\"" + std::string(entry.colour) + "\"";
  const std::string stroke = "fill=\"none\" stroke=" + colour;
  switch (entry.mark) {
    case LegendEntry::Mark::kCurve:
      return out.Path(out.Polyline({left, right}), stroke + " stroke-width=\"3\"");
    case LegendEntry::Mark::kControl:
      out.Path(out.Polyline({left, right}), stroke);
      return out.Path(out.Square(middle, kControlHalfSide), "fill=" + colour);
    case LegendEntry::Mark::kPoint:
      out.OpenGroup("fill=\"#fff\" stroke=" + colour);
      out.Circle(middle, kPointRadius);
      return out.CloseGroup();
    case LegendEntry::Mark::kBox:
      return out.Path(
          out.Rectangle({left.x, left.y - kBoxHalfHeight, right.x, left.y + kBoxHalfHeight}),
          stroke + " stroke-dasharray=\"4\"");
    case LegendEntry::Mark::kCrossing:
      out.OpenGroup(stroke + " stroke-width=\"1.5\"");
      out.Circle(middle, kCrossingRadius);
      return out.CloseGroup();
    case LegendEntry::Mark::kOverlap:
      return out.Path(out.Polyline({left, right}),
                      stroke + " " + std::string(kOverlapOpacity) + " " +
                          out.Attribute("stroke-width", kOverlapWidth));
    case LegendEntry::Mark::kComb: {
      const Point up = {0, -kBoxHalfHeight};
      std::string teeth = out.Polyline({left + up, right + up});
      for (int i = 0; i <= kLegendTeeth; ++i) {
        const Point tip = left + up + Point{kMarkWidth * i / kLegendTeeth, 0};
        teeth += out.Polyline({tip, tip - 2.0 * up});
      }
      return out.Path(teeth, stroke);
    }
  }
}

}  // namespace kurvo::tools
