#include "svg/svg_text.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "svg/input_error.h"
#include "svg/number_text.h"
#include "svg/utf8.h"

namespace kurvo::tools {
namespace {

constexpr int kMinDecimals = 2;
constexpr int kMaxDecimals = 15;
constexpr int kDigits = 6;  // of the extent

int DecimalsFor(double extent) {
  if (!(extent > 0)) return kDigits;
  const double decimals = kDigits - std::floor(std::log10(extent));
  return static_cast<int>(std::clamp<double>(decimals, kMinDecimals, kMaxDecimals));
}

// Character data of XML; control characters, which it cannot hold, become '?'.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : OneLine(ValidUtf8(text))) {
    if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else if (c == '>') {
      escaped += "&gt;";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

}  // namespace

SvgText::SvgText(double extent) : decimals_(DecimalsFor(extent)) {}

std::string SvgText::Number(double value) const { return FixedNumber(value, decimals_); }

std::string SvgText::Attribute(std::string_view name, double value) const {
  return std::string(name) + "=\"" + Number(value) + "\"";
}

std::string SvgText::Stroke(std::string_view colour, double width) const {
  return "fill=\"none\" stroke=\"" + std::string(colour) + "\" stroke-linecap=\"round\" " +
         "stroke-linejoin=\"round\" " + Attribute("stroke-width", width);
}

std::string SvgText::Pair(Point p) const { return Number(p.x) + " " + Number(p.y); }

void SvgText::Open(const Bounds& view, double size) {
  const double scale = size / std::max(view.Width(), view.Height());
  const auto pixels = [scale](double length) {
    return FixedNumber(std::max(1.0, std::round(length * scale)), 0);
  };
  text_ += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + pixels(view.Width()) +
           "\" height=\"" + pixels(view.Height()) + "\" viewBox=\"" +
           Pair({view.min_x, view.min_y}) + " " + Pair({view.Width(), view.Height()}) + "\">\n";
}

void SvgText::Close() { text_ += "</svg>\n"; }

void SvgText::OpenGroup(std::string_view attributes) {
  text_ += "<g " + std::string(attributes) + ">\n";
}

void SvgText::OpenPixelGroup(Point top_left, double pixel, std::string_view attributes) {
  OpenGroup("transform=\"translate(" + Pair(top_left) + ") scale(" +
            FixedNumber(pixel, kMaxDecimals) + ")\" " + std::string(attributes));
}

void SvgText::CloseGroup() { text_ += "</g>\n"; }

void SvgText::Path(std::string_view data, std::string_view attributes) {
  if (data.empty()) return;
  text_ += "<path d=\"" + std::string(data) + "\"";
  if (!attributes.empty()) text_ += " " + std::string(attributes);
  text_ += "/>\n";
}

void SvgText::Circle(Point centre, double radius) {
  text_ += "<circle " + Attribute("cx", centre.x) + " " + Attribute("cy", centre.y) + " " +
           Attribute("r", radius) + "/>\n";
}

void SvgText::Text(Point baseline, std::string_view text) {
  text_ += "<text " + Attribute("x", baseline.x) + " " + Attribute("y", baseline.y) + ">" +
           Escaped(text) + "</text>\n";
}

std::string SvgText::Polyline(const std::vector<Point>& points) const {
  std::string data;
  for (const Point p : points) data += (data.empty() ? "M" : "L") + Pair(p);
  return data;
}

std::string SvgText::Square(Point centre, double half_side) const {
  return Rectangle(
      {centre.x - half_side, centre.y - half_side, centre.x + half_side, centre.y + half_side});
}

std::string SvgText::Cross(Point centre, double half_length) const {
  return Polyline({centre - Point{half_length, 0}, centre + Point{half_length, 0}}) +
         Polyline({centre - Point{0, half_length}, centre + Point{0, half_length}});
}

std::string SvgText::Rectangle(const Bounds& box) const {
  return "M" + Pair({box.min_x, box.min_y}) + "H" + Number(box.max_x) + "V" + Number(box.max_y) +
         "H" + Number(box.min_x) + "Z";
}

}  // namespace kurvo::tools
