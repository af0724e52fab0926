#include "picture/fit_picture.h"

#include <algorithm>

#include "geometry/sampling.h"
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

std::vector<Point> ControlPoints(const OwnedCurve& spline) {
  const KurvoBSpline& block = spline.Block<KurvoBSpline>();
  std::vector<Point> points;
  for (int i = 0; i < block.count; ++i) points.push_back({block.points[i][0], block.points[i][1]});
  return points;
}

// Span by span, so that no bend hides between two samples.
Bounds DrawnBox(Library& library, const OwnedCurve& spline, double tolerance) {
  Bounds box;
  for (const OwnedCurve& span : OwnedCurve::Pieces(library, spline)) {
    for (const Point p : SampleCurve(library, span, tolerance)) box.Add(p);
  }
  return box;
}

std::vector<LegendEntry> Entries(std::size_t points, const FitPictureOptions& options) {
  using Mark = LegendEntry::Mark;
  std::vector<LegendEntry> entries = {
      {Mark::kCurve, kDrawingColours[0], "B-spline"},
      {Mark::kPoint, kPointColour, "point (" + std::to_string(points) + ")"}};
  if (options.control) entries.push_back({Mark::kControl, kControlColour, "control polygon"});
  return entries;
}

}  // namespace

std::string FitPicture(Library& library, const std::vector<Point>& points, const OwnedCurve& spline,
                       const FitPictureOptions& options) {
  Bounds shown;
  for (const Point p : points) shown.Add(p);
  const double rough = std::max(shown.Width(), shown.Height());
  shown.Add(DrawnBox(library, spline, kChordTolerance * rough));
  const std::vector<Point> control = ControlPoints(spline);
  if (options.control) {
    for (const Point p : control) shown.Add(p);
  }
  SvgText out(rough);
  const double pixel = PixelSize(shown, options.size);
  const PictureLayout layout(shown, pixel, kCurveWidth * pixel, Entries(points.size(), options));
  out.Open(layout.View(), options.size);
  out.Path(out.Rectangle(layout.View()), "fill=\"#fff\"");
  if (options.control) {
    out.Path(out.Polyline(control), out.Stroke(kControlColour, kThinWidth * pixel));
    std::string marks;
    for (const Point p : control) marks += out.Square(p, kControlHalfSide * pixel);
    out.Path(marks, "fill=\"" + std::string(kControlColour) + "\"");
  }
  out.Path(PathData(library, spline), out.Stroke(kDrawingColours[0], kCurveWidth * pixel));
  out.OpenGroup("fill=\"#fff\" stroke=\"" + std::string(kPointColour) + "\" " +
                out.Attribute("stroke-width", kThinWidth * pixel));
  for (const Point p : points) out.Circle(p, kPointRadius * pixel);
  out.CloseGroup();
  layout.WriteLegend(out);
  out.Close();
  return out.Take();
}

}  // namespace kurvo::tools
