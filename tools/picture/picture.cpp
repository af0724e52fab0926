#include "picture/picture.h"

#include <utility>
#include <vector>

#include "geometry/comb.h"
#include "picture/curve_trace.h"
#include "picture/legend.h"
#include "picture/picture_layout.h"
#include "svg/curve_path.h"
#include "svg/svg_text.h"

namespace kurvo::tools {
namespace {

// Pixels.
constexpr double kCurveWidth = 2.25;
constexpr double kThinWidth = 1;
constexpr double kToothWidth = 0.5;
constexpr double kCrossHalfLength = 5;

class PictureWriter {
 public:
  PictureWriter(Library& library, const Drawing& drawing, const PictureOptions& options)
      : library_(library), drawing_(drawing), options_(options), out_(Extent(library, {&drawing})) {
    const double tolerance = kChordTolerance * Extent(library, {&drawing});
    for (const Shape& shape : drawing.shapes) {
      traces_.emplace_back();
      for (const Outline& outline : shape.outlines) {
        traces_.back().push_back(TraceOutline(library, outline, tolerance));
      }
    }
    if (options.comb && !options.curves_only)
      combs_ = CombsOf(library, drawing, Extent(library, {&drawing}));
  }

  std::string Write() {
    const Bounds shown = Shown();
    pixel_ = PixelSize(shown, options_.size);
    std::vector<LegendEntry> entries;
    if (ShowsLegend()) entries = Entries();
    const PictureLayout layout(shown, pixel_, CurveWidth(), std::move(entries));
    out_.Open(layout.View(), options_.size);
    if (options_.curves_only) {
      WriteShapes(options_.fill ? "fill=\"#000\"" : BlackStroke());
    } else {
      WriteAll(layout.View());
    }
    layout.WriteLegend(out_);
    out_.Close();
    return out_.Take();
  }

 private:
  template <typename Step>
  void ForEachOutline(const Step& step) const {
    for (const auto& shape : traces_) {
      for (const OutlineTrace& outline : shape) step(outline);
    }
  }

  template <typename Step>
  void ForEachCurve(const Step& step) const {
    ForEachOutline([&](const OutlineTrace& outline) {
      for (const CurveTrace& curve : outline.curves) step(curve);
    });
  }

  // What the picture shows, without its margin.
  Bounds Shown() const {
    Bounds bounds;
    ForEachCurve([&](const CurveTrace& curve) {
      bounds.Add(curve.drawn.box);
      if (options_.curves_only || !options_.control) return;
      for (const Point p : curve.controls) bounds.Add(p);
    });
    for (const Comb& comb : combs_) {
      for (const Point p : comb.tips) bounds.Add(p);
    }
    if (!options_.curves_only && options_.boxes) {
      ForEachOutline([&](const OutlineTrace& outline) { bounds.Add(outline.box); });
    }
    return bounds;
  }

  double CurveWidth() const {
    return options_.stroke_width.value_or((options_.curves_only ? kThinWidth : kCurveWidth) *
                                          pixel_);
  }

  bool ShowsLegend() const { return options_.legend && !options_.curves_only; }

  std::string BlackStroke() const { return out_.Stroke("#000", CurveWidth()); }

  void WriteAll(const Bounds& view) {
    out_.Path(out_.Rectangle(view), "fill=\"#fff\"");
    if (options_.fill) WriteShapes("fill=\"" + std::string(kFillColour) + "\"");
    if (options_.boxes) WriteBoxes();
    WriteCombs();
    if (options_.control) WriteControls();
    for (const CurveStyle& style : kCurveStyles) WriteCurves(style);
    if (options_.points) WritePoints();
  }

  // Each shape as one path, its outlines as they run.
  void WriteShapes(const std::string& attributes) {
    out_.OpenGroup(attributes);
    for (std::size_t i = 0; i < drawing_.shapes.size(); ++i) {
      std::string data;
      for (const Outline& outline : drawing_.shapes[i].outlines)
        data += PathData(library_, outline.curves) + (outline.closed ? "Z" : "");
      out_.Path(data, drawing_.shapes[i].even_odd ? "fill-rule=\"evenodd\"" : "");
    }
    out_.CloseGroup();
  }

  void WriteBoxes() {
    std::string data;
    ForEachOutline([&](const OutlineTrace& outline) { data += out_.Rectangle(outline.box); });
    const std::string dash = out_.Number(4 * pixel_);
    out_.Path(data,
              out_.Stroke(kBoxColour, kThinWidth * pixel_) + " stroke-dasharray=\"" + dash + "\"");
  }

  void WriteCombs() {
    std::string teeth;
    std::string tips;
    for (const Comb& comb : combs_) {
      for (std::size_t i = 0; i < comb.feet.size(); ++i)
        teeth += out_.Polyline({comb.feet[i], comb.tips[i]});
      tips += out_.Polyline(comb.tips);
    }
    out_.Path(teeth, out_.Stroke(kCombColour, kToothWidth * pixel_));
    out_.Path(tips, out_.Stroke(kCombColour, kThinWidth * pixel_));
  }

  void WriteControls() {
    std::string lines;
    std::string marks;
    ForEachCurve([&](const CurveTrace& curve) {
      if (curve.type == CV_ARC) {
        lines += out_.Cross(curve.controls.front(), kCrossHalfLength * pixel_);
        return;
      }
      lines += out_.Polyline(curve.controls);
      for (std::size_t i = 1; i + 1 < curve.controls.size(); ++i) {
        marks += out_.Square(curve.controls[i], kControlHalfSide * pixel_);
      }
    });
    out_.Path(lines, out_.Stroke(kControlColour, kThinWidth * pixel_));
    out_.Path(marks, "fill=\"" + std::string(kControlColour) + "\"");
  }

  void WriteCurves(const CurveStyle& style) {
    std::string data;
    ForEachCurve([&](const CurveTrace& curve) {
      if (curve.type == style.type) data += curve.drawn.data;
    });
    out_.Path(data, out_.Stroke(style.colour, CurveWidth()));
  }

  void WritePoints() {
    out_.OpenGroup("fill=\"#fff\" stroke=\"" + std::string(kPointColour) + "\" " +
                   out_.Attribute("stroke-width", kThinWidth * pixel_));
    ForEachOutline([&](const OutlineTrace& outline) {
      for (const CurveTrace& curve : outline.curves) {
        out_.Circle(curve.start, kPointRadius * pixel_);
      }
      if (!outline.closed) {
        out_.Circle(outline.curves.back().end, kPointRadius * pixel_);
      }
    });
    out_.CloseGroup();
  }

  std::vector<LegendEntry> Entries() const {
    std::vector<LegendEntry> entries;
    for (const CurveStyle& style : kCurveStyles) {
      std::size_t count = 0;
      ForEachCurve([&](const CurveTrace& curve) { count += curve.type == style.type ? 1 : 0; });
      if (count == 0) continue;
      entries.push_back({LegendEntry::Mark::kCurve, style.colour,
                         std::string(TypeName(style.type)) + " (" + std::to_string(count) + ")"});
    }
    using Mark = LegendEntry::Mark;
    if (options_.control) entries.push_back({Mark::kControl, kControlColour, "control polygon"});
    if (options_.points) entries.push_back({Mark::kPoint, kPointColour, "end point"});
    if (options_.boxes) entries.push_back({Mark::kBox, kBoxColour, "box"});
    if (options_.comb) entries.push_back({Mark::kComb, kCombColour, "curvature"});
    return entries;
  }

  Library& library_;
  const Drawing& drawing_;
  const PictureOptions& options_;
  SvgText out_;
  std::vector<std::vector<OutlineTrace>> traces_;  // by shape
  std::vector<Comb> combs_;
  double pixel_ = 1;
};

}  // namespace

std::string PictureOf(Library& library, const Drawing& drawing, const PictureOptions& options) {
  return PictureWriter(library, drawing, options).Write();
}

}  // namespace kurvo::tools
