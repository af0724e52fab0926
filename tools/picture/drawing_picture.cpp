// The curves of a drawing by type, with what they are made of.
#include <fmt/format.h>

#include "geometry/chain.h"
#include "geometry/comb.h"
#include "geometry/curve_ask.h"
#include "picture/frame.h"
#include "picture/pictures.h"
#include "svg/curve_path.h"

namespace kurvo::tools {
namespace {

// Pixels.
constexpr double kCurveWidth = 2.25;
constexpr double kThinWidth = 1;
constexpr double kToothWidth = 0.5;
constexpr double kCrossHalfLength = 5;

// What is drawn of a curve and of an outline.
struct CurveTrace {
  int type;
  DrawnCurves drawn;
  Point start;
  Point end;
  std::vector<Point> controls;  // of a Bezier curve; the centre of an arc
  bool other = false;           // of two colours the other
};

struct OutlineTrace {
  std::vector<CurveTrace> curves;
  Bounds box;
  bool closed;
};

std::vector<Point> ControlPoints(const Curve& curve) {
  if (const KurvoArc* arc = curve.AsArc()) return {Load(arc->centre)};
  return ControlPointsOf(curve);
}

OutlineTrace TraceOutline(Context& context, const Outline& outline, bool alternate) {
  OutlineTrace trace = {{}, {}, outline.closed};
  for (const Curve& curve : outline.curves) {
    const bool other = alternate && curve.Type() == CV_ARC && !trace.curves.empty() &&
                       trace.curves.back().type == CV_ARC && !trace.curves.back().other;
    trace.curves.push_back({curve.Type(),
                            {},
                            StartOf(context, curve),
                            EndOf(context, curve),
                            ControlPoints(curve),
                            other});
    trace.curves.back().drawn.Add(context, curve);
    trace.box.Add(BoundsOf(context, curve));
  }
  return trace;
}

class DrawingPictureWriter {
 public:
  DrawingPictureWriter(Context& context, const Drawing& drawing, const PictureOptions& options)
      : context_(context),
        drawing_(drawing),
        options_(options),
        extent_(Extent(context, {&drawing})) {
    ForEachOutline(drawing, [&](const Outline& outline, const std::string&) {
      traces_.push_back(TraceOutline(context, outline, options.alternate));
    });
    if (options.comb && !options.curves_only) combs_ = CombsOf(context, drawing, extent_);
  }

  std::string Write(double size) {
    const Bounds shown = Shown();
    const double usual_width = options_.curves_only ? kThinWidth : kCurveWidth;
    width_ = options_.stroke_width.value_or(usual_width * PixelSize(shown, size));
    const bool has_legend = options_.legend && !options_.curves_only;
    Picture out({.extent = extent_,
                 .shown = shown,
                 .size = size,
                 .stroke_width = width_,
                 .legend = has_legend ? Entries() : std::vector<LegendEntry>(),
                 .paper = !options_.curves_only,
                 .y_up = drawing_.sheet.y_up});
    if (options_.curves_only) {
      WriteShapes(options_.fill ? "fill=\"#000\"" : out.Stroke("#000", width_), out);
    } else {
      WriteAll(out);
    }
    return out.Finish();
  }

 private:
  template <typename Step>
  void ForEachTrace(const Step& step) const {
    for (const OutlineTrace& outline : traces_) {
      for (const CurveTrace& curve : outline.curves) step(curve);
    }
  }

  // What the picture shows, without its margin.
  Bounds Shown() const {
    Bounds bounds;
    ForEachTrace([&](const CurveTrace& curve) {
      bounds.Add(curve.drawn.box);
      if (options_.curves_only || !options_.control) return;
      for (const Point p : curve.controls) bounds.Add(p);
    });
    for (const Comb& comb : combs_) {
      for (const Point p : comb.tips) bounds.Add(p);
    }
    if (!options_.curves_only && options_.boxes) {
      for (const OutlineTrace& outline : traces_) bounds.Add(outline.box);
    }
    return bounds;
  }

  void WriteAll(Picture& out) const {
    if (options_.fill) WriteShapes(out.Fill(kFillColour), out);
    if (options_.boxes) WriteBoxes(out);
    WriteCombs(out);
    if (options_.control) WriteControls(out);
    for (const CurveStyle& style : kCurveStyles) WriteCurves(style, false, out);
    if (options_.alternate) WriteCurves(kOtherArcs, true, out);
    if (options_.points) WritePoints(out);
  }

  // Each shape as one path, its outlines as they run.
  void WriteShapes(const std::string& attributes, Picture& out) const {
    out.OpenGroup(attributes);
    for (const Shape& shape : drawing_.shapes) {
      std::string data;
      for (const Outline& outline : shape.outlines)
        data += PathData(context_, outline.curves) + (outline.closed ? "Z" : "");
      out.Path(data, shape.even_odd ? "fill-rule=\"evenodd\"" : "");
    }
    out.CloseGroup();
  }

  void WriteBoxes(Picture& out) const {
    std::string data;
    for (const OutlineTrace& outline : traces_) data += out.Rectangle(outline.box);
    const std::string dash = out.Number(4 * out.Pixel());
    out.Path(data, out.PixelStroke(kBoxColour, kThinWidth) + " stroke-dasharray=\"" + dash + "\"");
  }

  void WriteCombs(Picture& out) const {
    std::string teeth;
    std::string tips;
    for (const Comb& comb : combs_) {
      for (std::size_t i = 0; i < comb.feet.size(); ++i)
        teeth += out.Polyline({comb.feet[i], comb.tips[i]});
      tips += out.Polyline(comb.tips);
    }
    out.Path(teeth, out.PixelStroke(kCombColour, kToothWidth));
    out.Path(tips, out.PixelStroke(kCombColour, kThinWidth));
  }

  void WriteControls(Picture& out) const {
    std::string lines;
    std::string marks;
    ForEachTrace([&](const CurveTrace& curve) {
      if (curve.type == CV_ARC) {
        lines += out.Cross(curve.controls.front(), kCrossHalfLength * out.Pixel());
        return;
      }
      lines += out.Polyline(curve.controls);
      for (std::size_t i = 1; i + 1 < curve.controls.size(); ++i) {
        marks += out.Square(curve.controls[i], kControlHalfSide * out.Pixel());
      }
    });
    out.Path(lines, out.PixelStroke(kControlColour, kThinWidth));
    out.Path(marks, out.Fill(kControlColour));
  }

  void WriteCurves(const CurveStyle& style, bool other, Picture& out) const {
    std::string data;
    ForEachTrace([&](const CurveTrace& curve) {
      if (curve.type == style.type && curve.other == other) data += curve.drawn.data;
    });
    out.Path(data, out.Stroke(style.colour, width_));
  }

  void WritePoints(Picture& out) const {
    const double radius = kPointRadius * out.Pixel();
    out.OpenGroup("fill=\"#fff\" stroke=\"" + std::string(kPointColour) + "\" " +
                  out.Attribute("stroke-width", kThinWidth * out.Pixel()));
    for (const OutlineTrace& outline : traces_) {
      for (const CurveTrace& curve : outline.curves) out.Circle(curve.start, radius);
      if (!outline.closed) out.Circle(outline.curves.back().end, radius);
    }
    out.CloseGroup();
  }

  std::vector<LegendEntry> Entries() const {
    using Mark = LegendEntry::Mark;
    std::vector<LegendEntry> entries;
    for (const CurveStyle& style : kCurveStyles) {
      std::size_t count = 0;
      ForEachTrace([&](const CurveTrace& curve) { count += curve.type == style.type ? 1 : 0; });
      if (count == 0) continue;
      entries.push_back(
          {Mark::kCurve, style.colour, fmt::format("{} ({})", TypeName(style.type), count)});
    }
    if (options_.control) entries.push_back({Mark::kControl, kControlColour, "control polygon"});
    if (options_.points) entries.push_back({Mark::kPoint, kPointColour, "end point"});
    if (options_.boxes) entries.push_back({Mark::kBox, kBoxColour, "box"});
    if (options_.comb) entries.push_back({Mark::kComb, kCombColour, "curvature"});
    return entries;
  }

  Context& context_;
  const Drawing& drawing_;
  const PictureOptions& options_;
  const double extent_;
  std::vector<OutlineTrace> traces_;
  std::vector<Comb> combs_;
  double width_ = 1;  // of the curves, in units of the drawing
};

}  // namespace

std::string DrawingPicture(Context& context, const Drawing& drawing, const PictureOptions& options,
                           double size) {
  return DrawingPictureWriter(context, drawing, options).Write(size);
}

}  // namespace kurvo::tools
