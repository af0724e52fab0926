#include "picture/offset_picture.h"

#include "picture/curve_trace.h"
#include "picture/legend.h"
#include "picture/picture_layout.h"
#include "svg/svg_text.h"

namespace kurvo::tools {
namespace {

// Pixels.
constexpr double kSourceWidth = 2.25;
constexpr double kOffsetWidth = 1.25;

std::string OffsetText(int pieces) {
  return "offset (" + std::to_string(pieces) + (pieces == 1 ? " piece)" : " pieces)");
}

}  // namespace

std::string OffsetPicture(Library& library, const Drawing& drawing,
                          const std::vector<OutlineOffset>& offsets, const std::string& name,
                          double size) {
  const double extent = Extent(library, {&drawing});
  DrawnCurves sources, moved;
  ForEachCurve(drawing, [&](const OwnedCurve& curve) {
    sources.Add(library, curve, kChordTolerance * extent);
  });
  for (const OutlineOffset& offset : offsets) {
    for (const OwnedCurve& piece : offset.pieces)
      moved.Add(library, piece, kChordTolerance * extent);
  }
  Bounds shown = sources.box;
  shown.Add(moved.box);

  using Mark = LegendEntry::Mark;
  const auto [source_colour, offset_colour] = kDrawingColours;
  const double pixel = PixelSize(shown, size);
  const PictureLayout layout(shown, pixel, kSourceWidth * pixel,
                             {{Mark::kCurve, source_colour, name},
                              {Mark::kCurve, offset_colour, OffsetText(moved.count)}});
  SvgText out(extent);
  out.Open(layout.View(), size);
  out.Path(out.Rectangle(layout.View()), "fill=\"#fff\"");
  out.Path(sources.data, out.Stroke(source_colour, kSourceWidth * pixel));
  out.Path(moved.data, out.Stroke(offset_colour, kOffsetWidth * pixel));
  layout.WriteLegend(out);
  out.Close();
  return out.Take();
}

}  // namespace kurvo::tools
