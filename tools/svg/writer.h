// Writes the elements of an SVG picture, and numbers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

// The fewest digits that read back as the same double; never "-0".
std::string ExactNumber(double value);

// Character data of XML, also in an attribute; control characters, which it cannot hold, become
// '?'.
std::string EscapedText(std::string_view text);

class SvgWriter {
 public:
  // `extent` is the size of the drawing: what marks it is written to a millionth of it. Curves have
  // path data of their own (curve_path.h).
  explicit SvgWriter(double extent);

  // Opens the picture, which is `size` pixels along its longer side.
  void Open(const Bounds& view, double size);
  void Close();
  // A group; `attributes` is written as it is.
  void OpenGroup(std::string_view attributes);
  // A group in pixels from `top_left`, `pixel` of the units around it each; upright also where y
  // points up around it.
  void OpenPixelGroup(Point top_left, double pixel, std::string_view attributes, bool y_up = false);
  void CloseGroup();
  // `data` holds path data made by the functions below.
  void Path(std::string_view data, std::string_view attributes = {});
  void Circle(Point centre, double radius);
  void Text(Point baseline, std::string_view text);

  std::string Polyline(const std::vector<Point>& points) const;
  std::string Square(Point centre, double half_side) const;
  std::string Cross(Point centre, double half_length) const;
  std::string Rectangle(const Bounds& box) const;
  std::string Number(double value) const;
  // name="value"
  std::string Attribute(std::string_view name, double value) const;
  // The attribute of a fill.
  static std::string Fill(std::string_view colour) {
    return "fill=\"" + std::string(colour) + "\"";
  }
  // The attributes of a round stroke without a fill.
  std::string Stroke(std::string_view colour, double width) const;

  std::string Take() { return std::move(text_); }

 private:
  std::string Pair(Point p) const;

  int decimals_;
  std::string text_;
};

}  // namespace kurvo::tools
