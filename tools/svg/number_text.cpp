#include "svg/number_text.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace kurvo::tools {

std::string ShortNumber(double value) {
  char text[32];
  // What rounds to nothing beside the length tolerance of 1e-6 is 0.
  std::snprintf(text, sizeof text, "%.6g", std::fabs(value) < 5e-7 ? 0.0 : value);
  return text;
}

std::string ExactNumber(double value) {
  char digits[32];  // the longest double has 24 characters
  const auto end = std::to_chars(digits, digits + sizeof digits, value == 0 ? 0.0 : value).ptr;
  return {digits, end};
}

std::string FixedNumber(double value, int decimals) {
  char buffer[352];  // the largest double has 309 digits before the point
  const int length = std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
  std::string text(buffer, static_cast<std::size_t>(length));
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string PointText(Point p) { return "(" + ShortNumber(p.x) + ", " + ShortNumber(p.y) + ")"; }

std::string BoundsText(const Bounds& box) {
  if (box.IsEmpty()) return "";
  return PointText(box.Min()) + " - " + PointText(box.Max());
}

}  // namespace kurvo::tools
