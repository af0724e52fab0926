#include "picture/crossing_picture.h"

#include <utility>
#include <vector>

#include "geometry/sampling.h"
#include "picture/curve_trace.h"
#include "picture/legend.h"
#include "picture/picture_layout.h"
#include "svg/svg_text.h"

namespace kurvo::tools {
namespace {

// Pixels.
constexpr double kCurveWidth = 2;
constexpr double kRingWidth = 1.5;

class CrossingPictureWriter {
 public:
  CrossingPictureWriter(Library& library, std::vector<const Drawing*> drawings,
                        const CrossingReport& report)
      : library_(library),
        drawings_(std::move(drawings)),
        report_(report),
        extent_(Extent(library, drawings_)),
        out_(extent_) {}

  std::string Write(double size) {
    Bounds shown;
    for (const Drawing* drawing : drawings_) {
      DrawnCurves& curves = curves_.emplace_back();
      ForEachCurve(*drawing, [&](const OwnedCurve& curve) {
        curves.Add(library_, curve, kChordTolerance * extent_);
      });
      shown.Add(curves.box);
    }
    pixel_ = PixelSize(shown, size);
    const PictureLayout layout(shown, pixel_, kCurveWidth * pixel_, Entries());
    out_.Open(layout.View(), size);
    out_.Path(out_.Rectangle(layout.View()), "fill=\"#fff\"");
    WriteOverlaps();
    for (std::size_t i = 0; i < curves_.size(); ++i) {
      out_.Path(curves_[i].data, out_.Stroke(kDrawingColours[i], kCurveWidth * pixel_));
    }
    WriteCrossings();
    layout.WriteLegend(out_);
    out_.Close();
    return out_.Take();
  }

 private:
  void WriteOverlaps() {
    std::string stretches;
    for (const Overlap& overlap : report_.found.overlaps) {
      // All of the curve, when it is not known where they part.
      const double from = overlap.has_ends ? overlap.stretch.from.first : 0;
      const double to = overlap.has_ends ? overlap.stretch.to.first : 1;
      const OwnedCurve& curve = *report_.first.curves[overlap.first].curve;
      stretches += out_.Polyline(SampleCurve(library_, curve, kChordTolerance * extent_, from, to));
    }
    out_.Path(stretches, out_.Stroke(kCrossingColour, kOverlapWidth * pixel_) + " " +
                             std::string(kOverlapOpacity));
  }

  void WriteCrossings() {
    out_.OpenGroup(out_.Stroke(kCrossingColour, kRingWidth * pixel_));
    for (const Crossing& crossing : report_.found.crossings) {
      out_.Circle(crossing.point, kCrossingRadius * pixel_);
    }
    out_.CloseGroup();
  }

  std::vector<LegendEntry> Entries() const {
    using Mark = LegendEntry::Mark;
    const auto counted = [](const std::string& what, std::size_t count) {
      return what + " (" + std::to_string(count) + ")";
    };
    std::vector<LegendEntry> entries = {{Mark::kCurve, kDrawingColours[0], report_.first_name}};
    if (drawings_.size() > 1) {
      entries.push_back({Mark::kCurve, kDrawingColours[1], report_.second_name});
    }
    const auto& [crossings, overlaps] = report_.found;
    entries.push_back({Mark::kCrossing, kCrossingColour, counted("crossing", crossings.size())});
    if (!overlaps.empty()) {
      entries.push_back({Mark::kOverlap, kCrossingColour, counted("overlap", overlaps.size())});
    }
    return entries;
  }

  Library& library_;
  const std::vector<const Drawing*> drawings_;
  const CrossingReport& report_;
  const double extent_;
  SvgText out_;
  std::vector<DrawnCurves> curves_;  // by drawing
  double pixel_ = 1;
};

}  // namespace

std::string CrossingPicture(Library& library, const Drawing& first, const Drawing* second,
                            const CrossingReport& report, double size) {
  std::vector<const Drawing*> drawings = {&first};
  if (second != nullptr) drawings.push_back(second);
  return CrossingPictureWriter(library, std::move(drawings), report).Write(size);
}

}  // namespace kurvo::tools
