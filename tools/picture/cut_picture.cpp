// The order in which a machine cuts, over what was drawn.
#include <fmt/format.h>

#include "geometry/curve_make.h"
#include "picture/frame.h"
#include "picture/pictures.h"
#include "svg/curve_path.h"

namespace kurvo::tools {
namespace {

using Mark = LegendEntry::Mark;

// Pixels.
constexpr double kSourceWidth = 1;
constexpr double kCutWidth = 1.75;
constexpr double kWayWidth = 1;
constexpr double kNumberSize = 13;

constexpr std::string_view kSourceColour = "#94a3b8";
constexpr std::string_view kCutColour = "#d95f02";
constexpr std::string_view kLeadInColour = "#0b8a5b";
constexpr std::string_view kWayColour = "#1d5fd1";

Curve CurveOf(const DxfSegment& s) {
  return s.sweep == 0 ? Curve::Line(s.from, s.to).value()
                      : ArcOf(s.centre, s.radius, s.sweep > 0, s.from, s.to);
}

// Back from the machine to the drawing: the map scales alike, and may mirror.
DxfSegment InDrawing(DxfSegment s, const Affine& map) {
  const double scale = map.a;
  for (Point* p : {&s.from, &s.to, &s.centre})
    *p = {(p->x - map.e) / map.a, (p->y - map.f) / map.d};
  if (map.d < 0) s.sweep = -s.sweep;
  s.radius /= scale;
  return s;
}

}  // namespace

std::string CutPicture(Context& context, const Drawing& drawing, const CutReport& report,
                       double size) {
  const Affine& map = report.plan.map;
  DrawnCurves source, cuts, lead_ins;
  source.Add(context, drawing);
  const auto drawn = [&](const DxfSegment& segment) { return InDrawing(segment, map); };
  std::vector<Point> starts, ends;
  for (const MachineCut& cut : report.plan.cuts) {
    for (const DxfSegment& segment : cut.lead_in) lead_ins.Add(context, CurveOf(drawn(segment)));
    for (const DxfSegment& segment : cut.segments) cuts.Add(context, CurveOf(drawn(segment)));
    starts.push_back(drawn((cut.lead_in.empty() ? cut.segments : cut.lead_in).front()).from);
    ends.push_back(drawn(cut.segments.back()).to);
  }
  Bounds shown = cuts.box;
  shown.Add(lead_ins.box);
  shown.Add(source.box);
  const double pixel = PixelSize(shown, size);
  Picture out({.extent = shown.LongerSide(),
               .shown = shown,
               .size = size,
               .stroke_width = kCutWidth * pixel,
               .legend = {{Mark::kCurve, kSourceColour, report.name},
                          {Mark::kCurve, kCutColour, fmt::format("cut ({})", starts.size())},
                          {Mark::kCurve, kLeadInColour, "lead-in"},
                          {Mark::kCurve, kWayColour, "way"}},
               .y_up = drawing.sheet.y_up});
  out.Path(source.data, out.PixelStroke(kSourceColour, kSourceWidth));
  std::string way;
  for (std::size_t i = 1; i < starts.size(); ++i) way += out.Polyline({ends[i - 1], starts[i]});
  out.Path(way, out.PixelStroke(kWayColour, kWayWidth) + " " +
                    out.Attribute("stroke-dasharray", 4 * pixel));
  out.Path(cuts.data, out.PixelStroke(kCutColour, kCutWidth));
  out.Path(lead_ins.data, out.PixelStroke(kLeadInColour, kCutWidth));
  for (std::size_t i = 0; i < starts.size(); ++i) {
    out.OpenPixelGroup(
        starts[i], pixel,
        "font-family=\"sans-serif\" fill=\"#111827\" " + out.Attribute("font-size", kNumberSize),
        drawing.sheet.y_up);
    out.Text({3, -3}, std::to_string(i + 1));
    out.CloseGroup();
  }
  return out.Finish();
}

}  // namespace kurvo::tools
