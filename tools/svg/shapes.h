// The shape elements: path, line, polyline, polygon, rect, circle, ellipse.
#pragma once

#include <pugixml.hpp>
#include <string_view>

#include "svg/attributes.h"
#include "svg/outline_builder.h"

namespace kurvo::tools {

bool IsShape(std::string_view element_name);

// Draws the outlines of a shape element, named `name`. An element without extent (no radius, no
// width, no data) draws nothing. Throws ElementError.
void DrawShape(std::string_view name, const pugi::xml_node& element, const Viewport& viewport,
               OutlineBuilder& pen);

}  // namespace kurvo::tools
