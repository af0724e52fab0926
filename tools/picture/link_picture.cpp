#include "picture/link_picture.h"

#include <vector>

#include "picture/curve_trace.h"
#include "picture/legend.h"
#include "picture/picture_layout.h"
#include "svg/svg_text.h"

namespace kurvo::tools {
namespace {

// Pixels.
constexpr double kCurveWidth = 2;
constexpr double kLinkWidth = 1;
constexpr double kRingWidth = 1.5;
constexpr double kShortestWidth = 3;

DrawnCurves Drawn(Library& library, const CurveList& list, double tolerance) {
  DrawnCurves curves;
  for (const ListedCurve& curve : list.curves) curves.Add(library, *curve.curve, tolerance);
  return curves;
}

std::vector<LegendEntry> Entries(const LinkReport& report) {
  using Mark = LegendEntry::Mark;
  std::vector<LegendEntry> entries = {{Mark::kCurve, kDrawingColours[0], report.first_name},
                                      {Mark::kCurve, kDrawingColours[1], report.second_name}};
  if (!report.links.empty()) {
    entries.push_back({Mark::kCurve, kCrossingColour, "shortest link"});
  }
  if (report.links.size() > 1) {
    entries.push_back({Mark::kCurve, kControlColour, "link of each outline"});
  }
  return entries;
}

void WriteLinks(const LinkReport& report, double pixel, SvgText& out) {
  std::string data;
  for (const Link& link : report.links) data += out.Polyline({link.from, link.to});
  out.Path(data, out.Stroke(kControlColour, kLinkWidth * pixel));
  const Link* shortest = Shortest(report.links);
  if (shortest == nullptr) return;
  out.Path(out.Polyline({shortest->from, shortest->to}),
           out.Stroke(kCrossingColour, kShortestWidth * pixel));
  out.OpenGroup(out.Stroke(kCrossingColour, kRingWidth * pixel));
  out.Circle(shortest->from, kCrossingRadius * pixel);
  out.Circle(shortest->to, kCrossingRadius * pixel);
  out.CloseGroup();
}

}  // namespace

std::string LinkPicture(Library& library, const Drawing& first, const Drawing& second,
                        const LinkReport& report, double size) {
  const double extent = Extent(library, {&first, &second});
  const DrawnCurves curves[] = {Drawn(library, report.first, kChordTolerance * extent),
                                Drawn(library, report.second, kChordTolerance * extent)};
  Bounds shown = curves[0].box;
  shown.Add(curves[1].box);
  SvgText out(extent);
  const double pixel = PixelSize(shown, size);
  const PictureLayout layout(shown, pixel, kCurveWidth * pixel, Entries(report));
  out.Open(layout.View(), size);
  out.Path(out.Rectangle(layout.View()), "fill=\"#fff\"");
  for (std::size_t i = 0; i < 2; ++i) {
    out.Path(curves[i].data, out.Stroke(kDrawingColours[i], kCurveWidth * pixel));
  }
  WriteLinks(report, pixel, out);
  layout.WriteLegend(out);
  out.Close();
  return out.Take();
}

}  // namespace kurvo::tools
