#include "offset_picture.h"

#include <cstddef>

#include "curve_trace.h"
#include "legend.h"
#include "picture_layout.h"
#include "sampling.h"
#include "svg_text.h"

namespace kurvo::tools {
namespace {

// Pixels.
constexpr double kSourceWidth = 2.25;
constexpr double kOffsetWidth = 1.25;

using Polyline = std::vector<Point>;

void AddPoints(const std::vector<Polyline>& traces, Bounds& bounds) {
  for (const Polyline& trace : traces) {
    for (const Point p : trace) bounds.Add(p);
  }
}

std::string OffsetText(std::size_t pieces) {
  return "offset (" + std::to_string(pieces) + (pieces == 1 ? " piece)" : " pieces)");
}

}  // namespace

std::string OffsetPicture(Library& library, const Drawing& drawing,
                          const std::vector<OutlineOffset>& offsets, const std::string& name,
                          double size) {
  const double extent = Extent(library, {&drawing});
  const auto trace = [&](const OwnedCurve& curve) {
    return SampleCurve(library, curve, kChordTolerance * extent);
  };
  std::vector<Polyline> sources;
  ForEachCurve(drawing, [&](const OwnedCurve& curve) { sources.push_back(trace(curve)); });
  std::vector<Polyline> moved;
  for (const OutlineOffset& offset : offsets) {
    for (const OwnedCurve& piece : offset.pieces) moved.push_back(trace(piece));
  }
  Bounds shown;
  AddPoints(sources, shown);
  AddPoints(moved, shown);

  using Mark = LegendEntry::Mark;
  const auto [source_colour, offset_colour] = kDrawingColours;
  const double pixel = PixelSize(shown, size);
  const PictureLayout layout(shown, pixel, kSourceWidth * pixel,
                             {{Mark::kCurve, source_colour, name},
                              {Mark::kCurve, offset_colour, OffsetText(moved.size())}});
  SvgText out(extent);
  out.Open(layout.View(), size);
  out.Path(out.Rectangle(layout.View()), "fill=\"#fff\"");
  out.Path(out.Polylines(sources), out.Stroke(source_colour, kSourceWidth * pixel));
  out.Path(out.Polylines(moved), out.Stroke(offset_colour, kOffsetWidth * pixel));
  layout.WriteLegend(out);
  out.Close();
  return out.Take();
}

}  // namespace kurvo::tools
