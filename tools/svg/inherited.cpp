#include "svg/inherited.h"

#include <cmath>
#include <string>

#include "svg/transform.h"

namespace kurvo::tools {
bool Inherit(const SvgDocument& document, const pugi::xml_node& element, Inherited& inherited,
             Tally& ignored) {
  if (Property(element, "display") == "none") return false;
  const std::string visibility = Property(element, "visibility");
  if (!visibility.empty() && visibility != "inherit") inherited.visible = visibility == "visible";
  const std::string fill_rule = Property(element, "fill-rule");
  if (!fill_rule.empty() && fill_rule != "inherit") inherited.even_odd = fill_rule == "evenodd";
  inherited.paint.Take(document, element, inherited.viewport);

  inherited.map = inherited.map * OwnMap(element, inherited.viewport, ignored);
  const double determinant = inherited.map.Determinant();
  if (!std::isfinite(determinant)) throw ElementError("transform", 0, "out of range");
  return determinant != 0;  // what a transform flattens is not displayed
}

}  // namespace kurvo::tools
