#include "offset_picture.h"

#include <cstddef>
#include <utility>

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

void AddTraces(Library& library, const std::vector<OwnedCurve>& curves, double tolerance,
               std::vector<Polyline>& traces) {
  for (const OwnedCurve& curve : curves) traces.push_back(SampleCurve(library, curve, tolerance));
}

void AddPoints(const std::vector<Polyline>& traces, Bounds& bounds) {
  for (const Polyline& trace : traces) {
    for (const Point p : trace) bounds.Add(p);
  }
}

std::string Data(const SvgText& out, const std::vector<Polyline>& traces) {
  std::string data;
  for (const Polyline& trace : traces) data += out.Polyline(trace);
  return data;
}

std::string OffsetText(std::size_t pieces) {
  return "offset (" + std::to_string(pieces) + (pieces == 1 ? " piece)" : " pieces)");
}

}  // namespace

std::string OffsetPicture(Library& library, const Drawing& drawing,
                          const std::vector<OutlineOffset>& offsets, const std::string& name,
                          double size) {
  const double extent = Extent(library, {&drawing});
  std::vector<Polyline> sources;
  for (const Shape& shape : drawing.shapes) {
    for (const Outline& outline : shape.outlines) {
      AddTraces(library, outline.curves, kChordTolerance * extent, sources);
    }
  }
  std::vector<Polyline> moved;
  for (const OutlineOffset& offset : offsets) {
    AddTraces(library, offset.pieces, kChordTolerance * extent, moved);
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
  out.Path(Data(out, sources), out.Stroke(source_colour, kSourceWidth * pixel));
  out.Path(Data(out, moved), out.Stroke(offset_colour, kOffsetWidth * pixel));
  layout.WriteLegend(out);
  out.Close();
  return out.Take();
}

}  // namespace kurvo::tools
