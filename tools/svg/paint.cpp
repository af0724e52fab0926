#include "svg/paint.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr int kMostLinks = 16;  // from one gradient to that whose stops it takes

bool IsSaid(const std::string& value) { return !value.empty() && value != "inherit"; }

// A number or a percentage; 1 where it is neither.
double OpacityOf(const std::string& text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const std::string_view rest(end, static_cast<std::size_t>(text.data() + text.size() - end));
  if (error != std::errc() || !(rest.empty() || rest == "%")) return 1;
  return std::clamp(rest.empty() ? value : value / 100, 0.0, 1.0);
}

void TakeOpacity(const pugi::xml_node& element, const std::string& name, double& opacity) {
  const std::string value = Property(element, name);
  if (IsSaid(value)) opacity = OpacityOf(value);
}

// The id in url(#id), also in quotation marks; nothing for another file.
std::optional<std::string_view> IdIn(std::string_view url) {
  const auto from = url.find('#'), to = url.find_first_of("'\")", from);
  if (url.find_first_not_of("'\"", 4) != from || to == std::string_view::npos) return {};
  return url.substr(from + 1, to - from - 1);
}

// The first stop of a gradient, or of that which it refers to.
pugi::xml_node FirstStop(const SvgDocument& document, std::string_view id) {
  pugi::xml_node gradient = document.ById(id);
  for (int link = 0; gradient && link < kMostLinks; ++link) {
    for (const pugi::xml_node& child : gradient.children())
      if (document.LocalName(child) == "stop") return child;
    pugi::xml_attribute href = gradient.attribute("href");
    if (!href) href = gradient.attribute("xlink:href");
    const std::string_view reference = href.value();
    if (reference.substr(0, 1) != "#") break;
    gradient = document.ById(reference.substr(1));
  }
  return {};
}

}  // namespace

InheritedPaint::Colour InheritedPaint::Read(const SvgDocument& document,
                                            const std::string& value) const {
  if (value == "currentColor") return {current_};
  if (value.substr(0, 4) != "url(") return {value};
  if (const auto id = IdIn(value)) {
    if (const pugi::xml_node stop = FirstStop(document, *id)) {
      const std::string colour = Property(stop, "stop-color");
      const bool is_current = colour == "currentColor";
      return {is_current       ? current_
              : IsSaid(colour) ? colour
                               : "#000",
              OpacityOf(Property(stop, "stop-opacity"))};
    }
  }
  const std::string_view after = Trimmed(std::string_view(value).substr(value.find(')') + 1));
  return {after.empty() || after == "currentColor" ? current_ : std::string(after)};
}

void InheritedPaint::TakeColour(const SvgDocument& document, const pugi::xml_node& element,
                                const std::string& name, Colour& colour) const {
  const std::string value = Property(element, name);
  if (IsSaid(value)) {
    const double own_opacity = colour.own_opacity;
    colour = Read(document, value);
    colour.own_opacity = own_opacity;
  }
  TakeOpacity(element, name + "-opacity", colour.own_opacity);
}

void InheritedPaint::Take(const SvgDocument& document, const pugi::xml_node& element,
                          const Viewport& viewport) {
  const std::string current = Property(element, "color");
  if (IsSaid(current) && current != "currentColor") current_ = current;
  TakeColour(document, element, "fill", fill_);
  TakeColour(document, element, "stroke", stroke_);
  const std::string opacity = Property(element, "opacity");
  if (IsSaid(opacity)) opacity_ *= OpacityOf(opacity);
  const std::string width = Property(element, "stroke-width");
  if (!IsSaid(width)) return;
  try {
    stroke_width_ = ParseLength("stroke-width", width, Axis::kDiagonal, viewport);
  } catch (const ElementError&) {
    // Paint is no reason to refuse an outline.
  }
}

Paint InheritedPaint::Own() const {
  return {fill_.text, stroke_.text, stroke_width_, opacity_ * fill_.opacity * fill_.own_opacity,
          opacity_ * stroke_.opacity * stroke_.own_opacity};
}

}  // namespace kurvo::tools
