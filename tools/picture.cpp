#include "picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "legend.h"
#include "sampling.h"
#include "svg_text.h"

namespace kurvo::tools {
namespace {

// Parts of the longer side of the drawing.
constexpr double kChordTolerance = 5e-5;  // between a curve and the chords that are drawn for it
constexpr double kMargin = 0.03;

// Pixels.
constexpr double kCurveWidth = 2.25;
constexpr double kThinWidth = 1;
constexpr double kCrossHalfLength = 5;

// What is shown of one curve.
struct CurveTrace {
  int type;
  std::vector<Point> samples;
  std::vector<Point> controls;  // of the Bezier kinds
};

struct OutlineTrace {
  std::vector<CurveTrace> curves;
  Bounds box;
  bool closed;
};

std::vector<Point> ControlPoints(const OwnedCurve& curve) {
  std::vector<Point> points;
  if (curve.Type() == CV_BEZIER) {
    const auto* bezier = static_cast<const KurvoBezier*>(curve.Get()->data);
    for (int i = 0; i <= bezier->degree; ++i) {
      points.push_back({bezier->points[i][0], bezier->points[i][1]});
    }
  } else if (curve.Type() == CV_RBEZIER) {
    const auto* bezier = static_cast<const KurvoRBezier*>(curve.Get()->data);
    for (int i = 0; i <= bezier->degree; ++i) {
      points.push_back({bezier->points[i][0], bezier->points[i][1]});
    }
  } else if (curve.Type() == CV_ARC) {
    const auto* arc = static_cast<const KurvoArc*>(curve.Get()->data);
    points.push_back({arc->centre[0], arc->centre[1]});
  }
  return points;
}

// `view` with its sides moved out until it is `width` wide.
Bounds Widened(Bounds view, double width) {
  const double lack = std::max(0.0, width - view.Width());
  view.min_x -= lack / 2;
  view.max_x += lack / 2;
  return view;
}

class PictureWriter {
 public:
  PictureWriter(Library& library, const Drawing& drawing, const PictureOptions& options)
      : library_(library), drawing_(drawing), options_(options), out_(Extent()) {
    const double tolerance = kChordTolerance * Extent();
    for (const Shape& shape : drawing.shapes) {
      traces_.emplace_back();
      for (const Outline& outline : shape.outlines) {
        traces_.back().push_back(Trace(outline, tolerance));
      }
    }
  }

  std::string Write() {
    Bounds view = Shown();
    const double longer = std::max(view.Width(), view.Height());
    pixel_ = longer / options_.size;
    view.Grow(std::max(kMargin * longer, 2 * CurveWidth()));
    std::vector<LegendEntry> entries = Entries();
    if (ShowsLegend()) view = Widened(view, LeastLegendWidth(entries) * pixel_);
    const Legend legend(std::move(entries), view.Width() / pixel_);
    const Point legend_corner = {view.min_x, view.max_y};
    if (ShowsLegend()) view.max_y += legend.Height() * pixel_;
    out_.Open(view, options_.size);
    if (options_.curves_only) {
      WriteShapes(options_.fill ? "fill=\"#000\"" : BlackStroke());
    } else {
      WriteAll(view);
    }
    if (ShowsLegend()) legend.Write(legend_corner, pixel_, out_);
    out_.Close();
    return out_.Take();
  }

 private:
  double Extent() const {
    Bounds box;
    for (const Shape& shape : drawing_.shapes) {
      for (const Outline& outline : shape.outlines) {
        for (const OwnedCurve& curve : outline.curves) box.Add(BoundsOf(library_, curve));
      }
    }
    return box.IsEmpty() ? 1 : std::max(box.Width(), box.Height());
  }

  OutlineTrace Trace(const Outline& outline, double tolerance) const {
    OutlineTrace trace = {{}, {}, outline.closed};
    for (const OwnedCurve& curve : outline.curves) {
      trace.curves.push_back(
          {curve.Type(), SampleCurve(library_, curve, tolerance), ControlPoints(curve)});
      trace.box.Add(BoundsOf(library_, curve));
    }
    return trace;
  }

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
      for (const Point p : curve.samples) bounds.Add(p);
      if (options_.curves_only || !options_.control) return;
      for (const Point p : curve.controls) bounds.Add(p);
    });
    if (!options_.curves_only && options_.boxes) {
      ForEachOutline([&](const OutlineTrace& outline) { bounds.Add(outline.box); });
    }
    return bounds.IsEmpty() ? Bounds{0, 0, 1, 1} : bounds;
  }

  double CurveWidth() const {
    return options_.stroke_width.value_or((options_.curves_only ? kThinWidth : kCurveWidth) *
                                          pixel_);
  }

  bool ShowsLegend() const { return options_.legend && !options_.curves_only; }

  std::string Stroke(std::string_view colour, double width) const {
    return "fill=\"none\" stroke=\"" + std::string(colour) + "\" stroke-linecap=\"round\" " +
           "stroke-linejoin=\"round\" " + out_.Attribute("stroke-width", width);
  }

  std::string BlackStroke() const { return Stroke("#000", CurveWidth()); }

  void WriteAll(const Bounds& view) {
    out_.Path(out_.Rectangle(view), "fill=\"#fff\"");
    if (options_.fill) WriteShapes("fill=\"" + std::string(kFillColour) + "\"");
    if (options_.boxes) WriteBoxes();
    if (options_.control) WriteControls();
    for (const CurveStyle& style : kCurveStyles) WriteCurves(style);
    if (options_.points) WritePoints();
  }

  // Each shape as one path, its outlines as they run.
  void WriteShapes(const std::string& attributes) {
    out_.OpenGroup(attributes);
    for (std::size_t i = 0; i < traces_.size(); ++i) {
      std::string data;
      for (const OutlineTrace& outline : traces_[i]) {
        std::vector<Point> points;
        for (const CurveTrace& curve : outline.curves) {
          points.insert(points.end(), curve.samples.begin() + (points.empty() ? 0 : 1),
                        curve.samples.end());
        }
        data += out_.Polyline(points) + (outline.closed ? "Z" : "");
      }
      out_.Path(data, drawing_.shapes[i].even_odd ? "fill-rule=\"evenodd\"" : "");
    }
    out_.CloseGroup();
  }

  void WriteBoxes() {
    std::string data;
    ForEachOutline([&](const OutlineTrace& outline) { data += out_.Rectangle(outline.box); });
    const std::string dash = out_.Number(4 * pixel_);
    out_.Path(data, Stroke(kBoxColour, kThinWidth * pixel_) + " stroke-dasharray=\"" + dash + "\"");
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
    out_.Path(lines, Stroke(kControlColour, kThinWidth * pixel_));
    out_.Path(marks, "fill=\"" + std::string(kControlColour) + "\"");
  }

  void WriteCurves(const CurveStyle& style) {
    std::string data;
    ForEachCurve([&](const CurveTrace& curve) {
      if (curve.type == style.type) data += out_.Polyline(curve.samples);
    });
    out_.Path(data, Stroke(style.colour, CurveWidth()));
  }

  void WritePoints() {
    out_.OpenGroup("fill=\"#fff\" stroke=\"" + std::string(kPointColour) + "\" " +
                   out_.Attribute("stroke-width", kThinWidth * pixel_));
    ForEachOutline([&](const OutlineTrace& outline) {
      for (const CurveTrace& curve : outline.curves) {
        out_.Circle(curve.samples.front(), kPointRadius * pixel_);
      }
      if (!outline.closed) {
        out_.Circle(outline.curves.back().samples.back(), kPointRadius * pixel_);
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
                         std::string(style.name) + " (" + std::to_string(count) + ")"});
    }
    using Mark = LegendEntry::Mark;
    if (options_.control) entries.push_back({Mark::kControl, kControlColour, "control polygon"});
    if (options_.points) entries.push_back({Mark::kPoint, kPointColour, "end point"});
    if (options_.boxes) entries.push_back({Mark::kBox, kBoxColour, "box"});
    return entries;
  }

  Library& library_;
  const Drawing& drawing_;
  const PictureOptions& options_;
  SvgText out_;
  std::vector<std::vector<OutlineTrace>> traces_;  // by shape
  double pixel_ = 1;
};

}  // namespace

std::string PictureOf(Library& library, const Drawing& drawing, const PictureOptions& options) {
  return PictureWriter(library, drawing, options).Write();
}

}  // namespace kurvo::tools
