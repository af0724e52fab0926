// One drawing and what is made of it: points in it, its offsets, its pieces; a spline and its
// points.
#include <fmt/format.h>

#include <iterator>
#include <string_view>

#include "geometry/chain.h"
#include "geometry/curve_ask.h"
#include "picture/frame.h"
#include "picture/pictures.h"
#include "svg/curve_path.h"

namespace kurvo::tools {
namespace {

using Mark = LegendEntry::Mark;

// Pixels.
constexpr double kCurveWidth = 2.25;
constexpr double kThinWidth = 1;
constexpr double kOffsetWidth = 1.25;
constexpr double kPieceWidth = 3;
constexpr double kLocatedWidth = 2;
constexpr double kGridRadius = 2;

struct PlaceStyle {
  Where place;
  std::string_view colour;
};
constexpr PlaceStyle kPlaceStyles[] = {
    {Where::kOutside, "#94a3b8"}, {Where::kInside, "#1d5fd1"}, {Where::kOn, kCrossingColour}};

void WritePoints(const std::vector<LocatedPoint>& points, double radius, Picture& out) {
  for (const PlaceStyle& style : kPlaceStyles) {
    out.OpenGroup(out.Fill(style.colour));
    for (const LocatedPoint& at : points) {
      if (at.place == style.place) out.Circle(at.point, radius * out.Pixel());
    }
    out.CloseGroup();
  }
}

constexpr std::string_view kPieceColours[] = {"#1d5fd1", "#d95f02", "#0b8a5b"};

// The last piece may meet the first.
std::string_view PieceColour(std::size_t piece, std::size_t count) {
  constexpr std::size_t kColours = std::size(kPieceColours);
  const bool like_the_first = piece > 0 && piece + 1 == count && piece % kColours == 0;
  return kPieceColours[like_the_first ? 1 : piece % kColours];
}

void WriteControl(const std::vector<Point>& control, Picture& out) {
  out.Path(out.Polyline(control), out.PixelStroke(kControlColour, kThinWidth));
  std::string marks;
  for (const Point p : control) marks += out.Square(p, kControlHalfSide * out.Pixel());
  out.Path(marks, out.Fill(kControlColour));
}

}  // namespace

std::string LocatePicture(Context& context, const Drawing& drawing, const LocateReport& report,
                          double size) {
  const double extent = Extent(context, {&drawing});
  DrawnCurves curves;
  curves.Add(context, drawing);
  Bounds shown = curves.box;
  for (const auto* points : {&report.points, &report.grid}) {
    for (const LocatedPoint& at : *points) shown.Add(at.point);
  }
  std::vector<LegendEntry> legend;
  for (const PlaceStyle& style : kPlaceStyles) {
    legend.push_back({Mark::kPoint, style.colour, std::string(PlaceName(style.place))});
  }
  Picture out({.extent = extent,
               .shown = shown,
               .size = size,
               .stroke_width = kLocatedWidth * PixelSize(shown, size),
               .legend = legend,
               .y_up = drawing.sheet.y_up});
  out.Path(curves.data, out.PixelStroke(kPointColour, kLocatedWidth));
  WritePoints(report.grid, kGridRadius, out);
  WritePoints(report.points, kCrossingRadius, out);
  return out.Finish();
}

std::string OffsetPicture(Context& context, const Drawing& drawing,
                          const std::vector<OutlineOffset>& offsets, const std::string& name,
                          double size) {
  const double extent = Extent(context, {&drawing});
  DrawnCurves sources, moved;
  sources.Add(context, drawing);
  for (const OutlineOffset& offset : offsets) {
    for (const Curve& piece : offset.pieces) moved.Add(context, piece);
  }
  Bounds shown = sources.box;
  shown.Add(moved.box);
  const auto [source_colour, offset_colour] = kDrawingColours;
  const std::string pieces =
      fmt::format("offset ({} {})", moved.count, moved.count == 1 ? "piece" : "pieces");
  Picture out(
      {.extent = extent,
       .shown = shown,
       .size = size,
       .stroke_width = kCurveWidth * PixelSize(shown, size),
       .legend = {{Mark::kCurve, source_colour, name}, {Mark::kCurve, offset_colour, pieces}},
       .y_up = drawing.sheet.y_up});
  out.Path(sources.data, out.PixelStroke(source_colour, kCurveWidth));
  out.Path(moved.data, out.PixelStroke(offset_colour, kOffsetWidth));
  return out.Finish();
}

std::string SplitPicture(Context& context, const Drawing& drawing,
                         std::span<const SplitOutline> outlines, double size) {
  Bounds shown;
  for (const SplitOutline& outline : outlines) {
    for (const Piece& piece : outline.pieces) {
      for (const Curve& curve : piece.curves) shown.Add(BoundsOf(context, curve));
    }
  }
  const double width = kPieceWidth * PixelSize(shown, size);
  Picture out({.extent = Extent(context, {&drawing}),
               .shown = shown,
               .size = size,
               .stroke_width = width,
               .paper = false,
               .y_up = drawing.sheet.y_up});
  out.OpenGroup("fill=\"none\" " + out.Attribute("stroke-width", width));
  for (const SplitOutline& outline : outlines) {
    for (std::size_t i = 0; i < outline.pieces.size(); ++i) {
      const std::string_view colour = PieceColour(i, outline.pieces.size());
      const Piece& piece = outline.pieces[i];
      out.Path(PathData(context, piece.curves) + (piece.closed ? "Z" : ""),
               "stroke=\"" + std::string(colour) + "\"");
    }
  }
  out.CloseGroup();
  return out.Finish();
}

std::string FitPicture(Context& context, const std::vector<Point>& points, const Curve& spline,
                       bool control, double size) {
  Bounds shown;
  for (const Point p : points) shown.Add(p);
  const double extent = shown.LongerSide();
  shown.Add(BoundsOf(context, spline));
  std::vector<LegendEntry> legend = {
      {Mark::kCurve, kDrawingColours[0], "B-spline"},
      {Mark::kPoint, kPointColour, fmt::format("point ({})", points.size())}};
  std::vector<Point> controls;
  if (control) {
    controls = ControlPointsOf(spline);
    for (const Point p : controls) shown.Add(p);
    legend.push_back({Mark::kControl, kControlColour, "control polygon"});
  }
  Picture out({.extent = extent,
               .shown = shown,
               .size = size,
               .stroke_width = kCurveWidth * PixelSize(shown, size),
               .legend = legend});
  if (control) WriteControl(controls, out);
  out.Path(PathData(context, spline), out.PixelStroke(kDrawingColours[0], kCurveWidth));
  out.OpenGroup("fill=\"#fff\" stroke=\"" + std::string(kPointColour) + "\" " +
                out.Attribute("stroke-width", kThinWidth * out.Pixel()));
  for (const Point p : points) out.Circle(p, kPointRadius * out.Pixel());
  out.CloseGroup();
  return out.Finish();
}

}  // namespace kurvo::tools
