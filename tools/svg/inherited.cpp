#include "svg/inherited.h"

#include <cmath>
#include <string_view>

#include "svg/transform.h"

namespace kurvo::tools {
namespace {

void InheritPaint(const pugi::xml_node& element, Inherited& inherited) {
  const auto take = [&](std::string_view name, std::string& colour) {
    const std::string value = Property(element, name);
    if (value.empty() || value == "inherit") return;
    // Gradients and patterns stay behind, and so does what colour is current.
    const bool is_plain = value.find("url(") == std::string::npos && value != "currentColor";
    colour = is_plain ? value : "#000";
  };
  take("fill", inherited.paint.fill);
  take("stroke", inherited.paint.stroke);
  const std::string width = Property(element, "stroke-width");
  if (width.empty() || width == "inherit") return;
  try {
    inherited.paint.stroke_width =
        ParseLength("stroke-width", width, Axis::kDiagonal, inherited.viewport);
  } catch (const ElementError&) {
    // Paint is no reason to refuse an outline.
  }
}

}  // namespace

bool Inherit(const pugi::xml_node& element, Inherited& inherited, Tally& ignored) {
  if (Property(element, "display") == "none") return false;
  const std::string visibility = Property(element, "visibility");
  if (!visibility.empty() && visibility != "inherit") inherited.visible = visibility == "visible";
  const std::string fill_rule = Property(element, "fill-rule");
  if (!fill_rule.empty() && fill_rule != "inherit") inherited.even_odd = fill_rule == "evenodd";
  InheritPaint(element, inherited);

  inherited.map = inherited.map * OwnMap(element, inherited.viewport, ignored);
  const double determinant = inherited.map.Determinant();
  if (!std::isfinite(determinant)) throw ElementError("transform", 0, "out of range");
  return determinant != 0;  // what a transform flattens is not displayed
}

}  // namespace kurvo::tools
