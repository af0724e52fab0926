// A drawing with its notches, and under the pages that it is printed on.
#include <fmt/format.h>

#include "picture/frame.h"
#include "picture/pictures.h"

namespace kurvo::tools {
namespace {

using Mark = LegendEntry::Mark;

// Pixels.
constexpr double kCurveWidth = 2;
constexpr double kNotchWidth = 2;
constexpr double kPageWidth = 1;

}  // namespace

std::string NotchPicture(Context& context, const Drawing& drawing,
                         const std::vector<Notch>& notches, const std::string& name, double size) {
  DrawnCurves curves, lines;
  curves.Add(context, drawing);
  for (const Notch& notch : notches) lines.Add(context, notch.line);
  Bounds shown = curves.box;
  shown.Add(lines.box);
  const std::string count =
      fmt::format("{} ({})", notches.size() == 1 ? "notch" : "notches", notches.size());
  Picture out(
      {.extent = Extent(context, {&drawing}),
       .shown = shown,
       .size = size,
       .stroke_width = kCurveWidth * PixelSize(shown, size),
       .legend = {{Mark::kCurve, kDrawingColours[0], name}, {Mark::kCurve, kCrossingColour, count}},
       .y_up = drawing.sheet.y_up});
  out.Path(curves.data, out.PixelStroke(kDrawingColours[0], kCurveWidth));
  out.Path(lines.data, out.PixelStroke(kCrossingColour, kNotchWidth));
  return out.Finish();
}

std::string PagePicture(Context& context, const PageReport& report, double size) {
  DrawnCurves curves;
  curves.Add(context, report.drawing);
  Bounds shown = curves.box;
  for (const Page& page : report.pages.pages) shown.Add(page.sheet);
  const std::size_t count = report.pages.pages.size();
  Picture out({.extent = Extent(context, {&report.drawing}),
               .shown = shown,
               .size = size,
               .stroke_width = kCurveWidth * PixelSize(shown, size),
               .legend = {{Mark::kCurve, kDrawingColours[0], report.name},
                          {Mark::kCurve, kCrossingColour,
                           fmt::format("printed ({} {})", count, count == 1 ? "page" : "pages")}},
               .y_up = report.drawing.sheet.y_up});
  std::string printed;
  for (const Page& page : report.pages.pages) printed += out.Rectangle(page.printed);
  out.Path(printed, out.PixelStroke(kCrossingColour, kPageWidth));
  out.Path(curves.data, out.PixelStroke(kDrawingColours[0], kCurveWidth));
  return out.Finish();
}

}  // namespace kurvo::tools
