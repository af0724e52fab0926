// What all pictures share: colours and marks, the view with its margin, the paper, the legend
// below, and curves as they are drawn.
#pragma once

#include <kurvo.h>

#include <string>
#include <string_view>
#include <vector>

#include "geometry/drawing.h"
#include "svg/writer.h"

namespace kurvo::tools {

struct CurveStyle {
  int type;
  std::string_view colour;
};

inline constexpr CurveStyle kCurveStyles[] = {{CV_LINE, "#334155"},    {CV_ARC, "#d95f02"},
                                              {CV_BEZIER, "#1d5fd1"},  {CV_RBEZIER, "#0b8a5b"},
                                              {CV_BSPLINE, "#7c3aed"}, {CV_RBSPLINE, "#b45309"}};
inline constexpr CurveStyle kOtherArcs = {CV_ARC, "#1d5fd1"};  // where colours alternate
inline constexpr std::string_view kControlColour = "#94a3b8";
inline constexpr std::string_view kBoxColour = "#c4b5a0";
inline constexpr std::string_view kCombColour = "#c026d3";
inline constexpr std::string_view kPointColour = "#111827";
inline constexpr std::string_view kFillColour = "#eef2f7";
inline constexpr std::string_view kCrossingColour = "#dc2626";
inline constexpr std::string_view kDrawingColours[] = {"#1d5fd1", "#0b8a5b"};  // first and second

// Sizes of marks, in pixels.
inline constexpr double kPointRadius = 3;
inline constexpr double kControlHalfSide = 2.5;
inline constexpr double kCrossingRadius = 5;
inline constexpr double kOverlapWidth = 9;
inline constexpr std::string_view kOverlapOpacity = "stroke-opacity=\"0.4\"";

struct LegendEntry {
  enum class Mark { kCurve, kControl, kPoint, kBox, kCrossing, kOverlap, kComb };

  Mark mark;
  std::string_view colour;
  std::string text;
};

// The size of a pixel in units of the drawing, when the longer side of `shown` takes `size` pixels.
double PixelSize(const Bounds& shown, double size);

struct PictureFrame {
  double extent;        // of the drawing
  Bounds shown;         // by the picture, without its margin
  double size;          // pixels that the longer side of `shown` takes
  double stroke_width;  // of the curves, in units of the drawing
  std::vector<LegendEntry> legend = {};
  bool paper = true;  // white behind all
  bool y_up = false;  // of the drawing
};

// A picture that is begun; what is drawn on it is in the coordinates of the drawing.
class Picture : public SvgWriter {
 public:
  explicit Picture(PictureFrame frame);

  double Pixel() const { return pixel_; }
  // The attributes of a stroke whose width is in pixels.
  std::string PixelStroke(std::string_view colour, double pixels) const {
    return Stroke(colour, pixels * pixel_);
  }
  // Writes the legend. Result: the whole picture.
  std::string Finish();

 private:
  // An entry of the legend and where its mark stands, in pixels from the corner.
  struct Placed {
    LegendEntry entry;
    Point left;
  };

  void PlaceLegend(std::vector<LegendEntry> entries, Bounds& view);
  void WriteLegend();
  void WriteMark(const LegendEntry& entry, Point left);

  double pixel_;
  bool y_up_;
  std::vector<Placed> legend_;
  Point legend_corner_;
};

// Curves as a picture shows them.
struct DrawnCurves {
  std::string data;  // of a path
  Bounds box;
  std::size_t count = 0;

  void Add(Context& context, const Curve& curve);
  void Add(Context& context, const Drawing& drawing);
};

}  // namespace kurvo::tools
