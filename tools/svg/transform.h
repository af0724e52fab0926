// The transforms of elements: lists of an attribute, and properties of a style.
#pragma once

#include <pugixml.hpp>
#include <string_view>

#include "geometry/plane.h"
#include "svg/attributes.h"
#include "svg/input.h"

namespace kurvo::tools {

// The map of a transform attribute such as "translate(10 5) rotate(30)": the last one is applied
// first. An empty list is the identity. Throws ElementError.
Affine ParseTransformList(std::string_view attribute, std::string_view text);

// The map from the coordinates in an element to those around it: the transform of its style, or
// else of its attribute, about its transform-origin (CSS transforms, level 1). A declaration that
// says nothing in CSS, such as an angle without a unit, says nothing here and goes to `ignored`.
// Throws ElementError, also for what CSS knows and this program does not.
Affine OwnMap(const pugi::xml_node& element, const Viewport& viewport, Tally& ignored);

}  // namespace kurvo::tools
