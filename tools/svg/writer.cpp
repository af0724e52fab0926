#include "svg/writer.h"

#include <fmt/format.h>
#include <utf8.h>

#include <algorithm>
#include <cmath>

#include "svg/input.h"

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

// At most `decimals` digits after the point, trailing zeros dropped, never "-0".
std::string FixedNumber(double value, int decimals) {
  std::string text = fmt::format("{:.{}f}", value, decimals);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

}  // namespace

std::string EscapedText(std::string_view text) {
  std::string escaped;
  for (const char c : OneLine(utf8::replace_invalid(std::string(text)))) {
    if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else if (c == '>') {
      escaped += "&gt;";
    } else if (c == '"') {
      escaped += "&quot;";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::string ExactNumber(double value) { return fmt::to_string(value == 0 ? 0.0 : value); }

SvgWriter::SvgWriter(double extent) : decimals_(DecimalsFor(extent)) {}

std::string SvgWriter::Number(double value) const { return FixedNumber(value, decimals_); }

std::string SvgWriter::Attribute(std::string_view name, double value) const {
  return std::string(name) + "=\"" + Number(value) + "\"";
}

std::string SvgWriter::Stroke(std::string_view colour, double width) const {
  return "fill=\"none\" stroke=\"" + std::string(colour) + "\" stroke-linecap=\"round\" " +
         "stroke-linejoin=\"round\" " + Attribute("stroke-width", width);
}

std::string SvgWriter::Pair(Point p) const { return Number(p.x) + " " + Number(p.y); }

void SvgWriter::Open(const Bounds& view, double size) {
  const double scale = size / view.LongerSide();
  const auto pixels = [scale](double length) {
    return FixedNumber(std::max(1.0, std::round(length * scale)), 0);
  };
  text_ += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + pixels(view.Width()) +
           "\" height=\"" + pixels(view.Height()) + "\" viewBox=\"" +
           Pair({view.min_x, view.min_y}) + " " + Pair({view.Width(), view.Height()}) + "\">\n";
}

void SvgWriter::Close() { text_ += "</svg>\n"; }

void SvgWriter::OpenGroup(std::string_view attributes) {
  text_ += "<g " + std::string(attributes) + ">\n";
}

void SvgWriter::OpenPixelGroup(Point top_left, double pixel, std::string_view attributes,
                               bool y_up) {
  const std::string size = FixedNumber(pixel, kMaxDecimals);
  OpenGroup("transform=\"translate(" + Pair(top_left) + ") scale(" +
            (y_up ? size + " -" + size : size) + ")\" " + std::string(attributes));
}

void SvgWriter::CloseGroup() { text_ += "</g>\n"; }

void SvgWriter::Path(std::string_view data, std::string_view attributes) {
  if (data.empty()) return;
  text_ += "<path d=\"" + std::string(data) + "\"";
  if (!attributes.empty()) text_ += " " + std::string(attributes);
  text_ += "/>\n";
}

void SvgWriter::Circle(Point centre, double radius) {
  text_ += "<circle " + Attribute("cx", centre.x) + " " + Attribute("cy", centre.y) + " " +
           Attribute("r", radius) + "/>\n";
}

void SvgWriter::Text(Point baseline, std::string_view text) {
  text_ += "<text " + Attribute("x", baseline.x) + " " + Attribute("y", baseline.y) + ">" +
           EscapedText(text) + "</text>\n";
}

std::string SvgWriter::Polyline(const std::vector<Point>& points) const {
  std::string data;
  for (const Point p : points) data += (data.empty() ? "M" : "L") + Pair(p);
  return data;
}

std::string SvgWriter::Square(Point centre, double half_side) const {
  return Rectangle(
      {centre.x - half_side, centre.y - half_side, centre.x + half_side, centre.y + half_side});
}

std::string SvgWriter::Cross(Point centre, double half_length) const {
  return Polyline({centre - Point{half_length, 0}, centre + Point{half_length, 0}}) +
         Polyline({centre - Point{0, half_length}, centre + Point{0, half_length}});
}

std::string SvgWriter::Rectangle(const Bounds& box) const {
  return "M" + Pair({box.min_x, box.min_y}) + "H" + Number(box.max_x) + "V" + Number(box.max_y) +
         "H" + Number(box.min_x) + "Z";
}

}  // namespace kurvo::tools
