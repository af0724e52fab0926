// Two drawings and what lies between them: crossings and links.
#include <array>

#include "picture/frame.h"
#include "picture/pictures.h"
#include "svg/curve_path.h"

namespace kurvo::tools {
namespace {

using Mark = LegendEntry::Mark;

// Pixels.
constexpr double kCurveWidth = 2;
constexpr double kRingWidth = 1.5;
constexpr double kLinkWidth = 1;
constexpr double kShortestWidth = 3;

// A picture of drawings, each of which has its colour.
class PairPicture {
 public:
  PairPicture(Context& context, const std::vector<const Drawing*>& drawings)
      : extent_(Extent(context, drawings)), y_up_(drawings.front()->sheet.y_up) {
    for (const Drawing* drawing : drawings) {
      curves_.emplace_back().Add(context, *drawing);
      shown_.Add(curves_.back().box);
    }
  }

  Picture Begin(double size, std::vector<LegendEntry> legend) const {
    return Picture({.extent = extent_,
                    .shown = shown_,
                    .size = size,
                    .stroke_width = kCurveWidth * PixelSize(shown_, size),
                    .legend = std::move(legend),
                    .y_up = y_up_});
  }
  void WriteCurves(Picture& out) const {
    for (std::size_t i = 0; i < curves_.size(); ++i)
      out.Path(curves_[i].data, out.PixelStroke(kDrawingColours[i], kCurveWidth));
  }

 private:
  const double extent_;
  const bool y_up_;
  std::vector<DrawnCurves> curves_;  // by drawing
  Bounds shown_;
};

std::vector<LegendEntry> Entries(const CrossingReport& report) {
  const auto counted = [](const std::string& what, std::size_t count) {
    return what + " (" + std::to_string(count) + ")";
  };
  std::vector<LegendEntry> entries = {{Mark::kCurve, kDrawingColours[0], report.first_name}};
  if (!report.second_name.empty()) {
    entries.push_back({Mark::kCurve, kDrawingColours[1], report.second_name});
  }
  const auto& [crossings, overlaps] = report.found;
  entries.push_back({Mark::kCrossing, kCrossingColour, counted("crossing", crossings.size())});
  if (!overlaps.empty()) {
    entries.push_back({Mark::kOverlap, kCrossingColour, counted("overlap", overlaps.size())});
  }
  return entries;
}

void WriteOverlaps(Context& context, const CrossingReport& report, Picture& out) {
  std::string stretches;
  for (const Overlap& overlap : report.found.overlaps) {
    // All of the curve, when it is not known where they part.
    const double from = overlap.has_ends ? overlap.stretch.from.first : 0;
    const double to = overlap.has_ends ? overlap.stretch.to.first : 1;
    const Curve& curve = *report.first.curves[overlap.first].curve;
    stretches += PathData(context, curve.Split(std::array{from, to}, context).value()[1]);
  }
  out.Path(stretches,
           out.PixelStroke(kCrossingColour, kOverlapWidth) + " " + std::string(kOverlapOpacity));
}

std::vector<LegendEntry> Entries(const LinkReport& report) {
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

void WriteLinks(const LinkReport& report, Picture& out) {
  std::string data;
  for (const Link& link : report.links) data += out.Polyline({link.from, link.to});
  out.Path(data, out.PixelStroke(kControlColour, kLinkWidth));
  const Link* shortest = Shortest(report.links);
  if (shortest == nullptr) return;
  out.Path(out.Polyline({shortest->from, shortest->to}),
           out.PixelStroke(kCrossingColour, kShortestWidth));
  out.OpenGroup(out.PixelStroke(kCrossingColour, kRingWidth));
  out.Circle(shortest->from, kCrossingRadius * out.Pixel());
  out.Circle(shortest->to, kCrossingRadius * out.Pixel());
  out.CloseGroup();
}

}  // namespace

std::string CrossingPicture(Context& context, const Drawing& first, const Drawing* second,
                            const CrossingReport& report, double size) {
  std::vector<const Drawing*> drawings = {&first};
  if (second != nullptr) drawings.push_back(second);
  const PairPicture pair(context, drawings);
  Picture out = pair.Begin(size, Entries(report));
  WriteOverlaps(context, report, out);
  pair.WriteCurves(out);
  out.OpenGroup(out.PixelStroke(kCrossingColour, kRingWidth));
  for (const Crossing& crossing : report.found.crossings)
    out.Circle(crossing.point, kCrossingRadius * out.Pixel());
  out.CloseGroup();
  return out.Finish();
}

std::string LinkPicture(Context& context, const Drawing& first, const Drawing& second,
                        const LinkReport& report, double size) {
  const PairPicture pair(context, {&first, &second});
  Picture out = pair.Begin(size, Entries(report));
  pair.WriteCurves(out);
  WriteLinks(report, out);
  return out.Finish();
}

}  // namespace kurvo::tools
