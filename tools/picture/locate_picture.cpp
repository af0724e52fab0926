#include "picture/locate_picture.h"

#include <string_view>

#include "picture/curve_trace.h"
#include "picture/legend.h"
#include "picture/picture_layout.h"

namespace kurvo::tools {
namespace {

// Pixels.
constexpr double kCurveWidth = 2;
constexpr double kGridRadius = 2;

struct PlaceStyle {
  Place place;
  std::string_view colour;
};
constexpr PlaceStyle kStyles[] = {
    {Place::kOutside, "#94a3b8"}, {Place::kInside, "#1d5fd1"}, {Place::kOn, kCrossingColour}};

void WritePoints(const std::vector<LocatedPoint>& points, double radius, SvgText& out) {
  for (const PlaceStyle& style : kStyles) {
    out.OpenGroup("fill=\"" + std::string(style.colour) + "\"");
    for (const LocatedPoint& at : points) {
      if (at.place == style.place) out.Circle(at.point, radius);
    }
    out.CloseGroup();
  }
}

}  // namespace

std::string LocatePicture(Library& library, const Drawing& drawing, const LocateReport& report,
                          double size) {
  const double extent = Extent(library, {&drawing});
  SvgText out(extent);
  DrawnCurves curves;
  ForEachCurve(drawing, [&](const OwnedCurve& curve) {
    curves.Add(library, curve, kChordTolerance * extent);
  });
  Bounds shown = curves.box;
  for (const auto* points : {&report.points, &report.grid}) {
    for (const LocatedPoint& at : *points) shown.Add(at.point);
  }
  const double pixel = PixelSize(shown, size);
  std::vector<LegendEntry> entries;
  for (const PlaceStyle& style : kStyles) {
    entries.push_back(
        {LegendEntry::Mark::kPoint, style.colour, std::string(PlaceName(style.place))});
  }
  const PictureLayout layout(shown, pixel, kCurveWidth * pixel, entries);
  out.Open(layout.View(), size);
  out.Path(out.Rectangle(layout.View()), "fill=\"#fff\"");
  out.Path(curves.data, out.Stroke(kPointColour, kCurveWidth * pixel));
  WritePoints(report.grid, kGridRadius * pixel, out);
  WritePoints(report.points, kCrossingRadius * pixel, out);
  layout.WriteLegend(out);
  out.Close();
  return out.Take();
}

}  // namespace kurvo::tools
