// The colours of a picture and the legend that explains them.
#pragma once

#include <kurvo.h>

#include <string>
#include <string_view>
#include <vector>

#include "geometry/affine.h"
#include "svg/svg_text.h"

namespace kurvo::tools {

struct CurveStyle {
  int type;
  std::string_view colour;
};

inline constexpr CurveStyle kCurveStyles[] = {
    {CV_LINE, "#334155"}, {CV_ARC, "#d95f02"}, {CV_BEZIER, "#1d5fd1"}, {CV_RBEZIER, "#0b8a5b"}};
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

// What the widest entry takes, in pixels.
double LeastLegendWidth(const std::vector<LegendEntry>& entries);

// Entries from left to right, in as many rows as the width takes. All in pixels: renderers round
// the letters of fonts whose size is small in units of the drawing.
class Legend {
 public:
  Legend(std::vector<LegendEntry> entries, double width);

  double Height() const;
  // `pixel` is the size of a pixel in units of the drawing.
  void Write(Point top_left, double pixel, SvgText& out) const;

 private:
  struct Placed {
    LegendEntry entry;
    Point left;  // of its mark
  };

  static void WriteMark(const LegendEntry& entry, Point left, SvgText& out);

  std::vector<Placed> placed_;
  int rows_ = 0;
};

}  // namespace kurvo::tools
