// Regions over the drawings that they are made of.
#include <fmt/format.h>

#include "picture/frame.h"
#include "picture/pictures.h"
#include "svg/curve_path.h"

namespace kurvo::tools {
namespace {

using Mark = LegendEntry::Mark;

// Pixels.
constexpr double kSourceWidth = 1.25;
constexpr double kLoopWidth = 2.25;

constexpr std::string_view kLoopColour = "#d95f02";
constexpr std::string_view kInside = "fill=\"#fde7d3\"";

}  // namespace

std::string RegionPicture(Context& context, const RegionReport& report, double size) {
  DrawnCurves sources[2];
  const std::vector<Shape>& shapes = report.drawing.shapes;
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    for (const Outline& outline : shapes[i].outlines) {
      for (const Curve& curve : outline.curves)
        sources[i < report.second ? 0 : 1].Add(context, curve);
    }
  }
  Bounds shown;
  std::vector<LegendEntry> legend;
  for (std::size_t i = 0; i < report.names.size(); ++i) {
    shown.Add(sources[i].box);
    legend.push_back({Mark::kCurve, kDrawingColours[i], report.names[i]});
  }
  std::string inside, loops;  // path data; rings lie in each other
  for (const RegionLoop& loop : report.regions.loops) {
    const bool is_open = loop.kind == RegionLoop::Kind::kOpen;
    const std::string data = PathData(context, loop.curves) + (is_open ? "" : "Z");
    if (!is_open) inside += data;
    loops += data;
    shown.Add(loop.box);
  }
  const std::size_t count = report.regions.loops.size();
  legend.push_back(
      {Mark::kCurve, kLoopColour,
       fmt::format("{} ({} {})", report.operation, count, count == 1 ? "loop" : "loops")});
  Picture out({.extent = Extent(context, {&report.drawing}),
               .shown = shown,
               .size = size,
               .stroke_width = kLoopWidth * PixelSize(shown, size),
               .legend = legend,
               .y_up = report.drawing.sheet.y_up});
  out.Path(inside, kInside);
  out.Path(loops, out.PixelStroke(kLoopColour, kLoopWidth));
  for (std::size_t i = 0; i < std::size(sources); ++i)
    out.Path(sources[i].data, out.PixelStroke(kDrawingColours[i], kSourceWidth));
  return out.Finish();
}

}  // namespace kurvo::tools
