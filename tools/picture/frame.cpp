#include "picture/frame.h"

#include <algorithm>
#include <utility>

#include "geometry/chain.h"
#include "svg/curve_path.h"

namespace kurvo::tools {
namespace {

constexpr double kMargin = 0.03;  // of the longer side of the drawing

constexpr Bounds kNothing = {0, 0, 1, 1};  // the view of an empty drawing

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

// `view` with its sides moved out until it is `width` wide.
Bounds Widened(Bounds view, double width) {
  const double lack = std::max(0.0, width - view.Width());
  view.min_x -= lack / 2;
  view.max_x += lack / 2;
  return view;
}

}  // namespace

double PixelSize(const Bounds& shown, double size) {
  return (shown.IsEmpty() ? kNothing : shown).LongerSide() / size;
}

Picture::Picture(PictureFrame frame)
    : SvgWriter(frame.extent), pixel_(PixelSize(frame.shown, frame.size)), y_up_(frame.y_up) {
  Bounds view = frame.shown.IsEmpty() ? kNothing : frame.shown;
  if (y_up_) view = view.TurnedOver();
  view.Grow(std::max(kMargin * view.LongerSide(), 2 * frame.stroke_width));
  if (!frame.legend.empty()) PlaceLegend(std::move(frame.legend), view);
  Open(view, frame.size);
  if (frame.paper) Path(Rectangle(view), "fill=\"#fff\"");
  if (y_up_) OpenGroup("transform=\"scale(1 -1)\"");
}

// From left to right, in as many rows as the width takes, below a view that is wide enough.
void Picture::PlaceLegend(std::vector<LegendEntry> entries, Bounds& view) {
  double widest = 0;
  for (const LegendEntry& entry : entries) widest = std::max(widest, EntryWidth(entry));
  view = Widened(view, (widest + 2 * kIndent) * pixel_);
  legend_corner_ = {view.min_x, view.max_y};
  const double width = view.Width() / pixel_;
  double x = kIndent;
  int rows = 0;
  for (LegendEntry& entry : entries) {
    const double entry_width = EntryWidth(entry);
    if (rows == 0 || x + entry_width > width) {
      x = kIndent;
      ++rows;
    }
    legend_.push_back({std::move(entry), {x, (rows - 0.5) * kRowHeight}});
    x += entry_width + kEntrySpace;
  }
  view.max_y += (rows * kRowHeight + kBottomSpace) * pixel_;
}

std::string Picture::Finish() {
  if (y_up_) CloseGroup();
  if (!legend_.empty()) WriteLegend();
  Close();
  return Take();
}

// In pixels: renderers round the letters of fonts whose size is small in units of the drawing.
void Picture::WriteLegend() {
  OpenPixelGroup(
      legend_corner_, pixel_,
      "font-family=\"sans-serif\" fill=\"#334155\" " + Attribute("font-size", kFontSize));
  for (const auto& [entry, left] : legend_) {
    WriteMark(entry, left);
    Text(left + Point{kMarkWidth + kMarkSpace, kTextDrop}, entry.text);
  }
  CloseGroup();
}

void Picture::WriteMark(const LegendEntry& entry, Point left) {
  using Mark = LegendEntry::Mark;
  const Point middle = left + Point{kMarkWidth / 2, 0};
  const Point right = left + Point{kMarkWidth, 0};
  const std::string colour = "\"" + std::string(entry.colour) + "\"";
  const std::string stroke = "fill=\"none\" stroke=" + colour;
  switch (entry.mark) {
    case Mark::kCurve:
      return Path(Polyline({left, right}), stroke + " stroke-width=\"3\"");
    case Mark::kControl:
      Path(Polyline({left, right}), stroke);
      return Path(Square(middle, kControlHalfSide), "fill=" + colour);
    case Mark::kPoint:
      OpenGroup("fill=\"#fff\" stroke=" + colour);
      Circle(middle, kPointRadius);
      return CloseGroup();
    case Mark::kBox:
      return Path(Rectangle({left.x, left.y - kBoxHalfHeight, right.x, left.y + kBoxHalfHeight}),
                  stroke + " stroke-dasharray=\"4\"");
    case Mark::kCrossing:
      OpenGroup(stroke + " stroke-width=\"1.5\"");
      Circle(middle, kCrossingRadius);
      return CloseGroup();
    case Mark::kOverlap:
      return Path(Polyline({left, right}), stroke + " " + std::string(kOverlapOpacity) + " " +
                                               Attribute("stroke-width", kOverlapWidth));
    case Mark::kComb: {
      const Point up = {0, -kBoxHalfHeight};
      std::string teeth = Polyline({left + up, right + up});
      for (int i = 0; i <= kLegendTeeth; ++i) {
        const Point tip = left + up + Point{kMarkWidth * i / kLegendTeeth, 0};
        teeth += Polyline({tip, tip - 2.0 * up});
      }
      return Path(teeth, stroke);
    }
  }
}

void DrawnCurves::Add(Context& context, const Curve& curve) {
  data += PathData(context, curve);
  box.Add(BoundsOf(context, curve));
  ++count;
}

void DrawnCurves::Add(Context& context, const Drawing& drawing) {
  ForEachCurve(drawing, [&](const Curve& curve) { Add(context, curve); });
}

}  // namespace kurvo::tools
